#include "McTypeInfo.h"

#include <map>
#include <string>

namespace {
// Function-local so that records built by other libraries' static initialisers find it.
std::map<std::string, McTypeInfo const*>& registry() {
    static std::map<std::string, McTypeInfo const*> types;
    return types;
}
}  // namespace

McTypeInfo::McTypeInfo(char const* name, CreateFunction create, McTypeInfo const* parent)
    : mName(name), mCreate(create), mParent(parent) {
    registry()[name] = this;
}

McTypeInfo::~McTypeInfo() {
    auto it = registry().find(mName);
    if (it != registry().end() && it->second == this) registry().erase(it);
}

bool McTypeInfo::isOfType(McTypeInfo const* type) const {
    for (McTypeInfo const* t = this; t; t = t->mParent)
        if (t == type) return true;
    return false;
}

McTypeInfo const* McTypeInfo::fromName(char const* name) {
    if (!name) return nullptr;
    auto it = registry().find(name);
    return it == registry().end() ? nullptr : it->second;
}

int McTypeInfo::numTypes() { return static_cast<int>(registry().size()); }
