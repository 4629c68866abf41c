#include "PathTriangulatorFactory.h"

#include "PathTriangulator.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Registration {
    std::string name;
    std::string switches;
};

std::vector<Registration>& registry() {
    static std::vector<Registration> triangulators{
        {"Constrained Delaunay", "pzQ"},
        {"Quality Delaunay", "pqzS10Q"},
    };
    return triangulators;
}

std::vector<Registration>::iterator find(char const* name) {
    return std::find_if(registry().begin(), registry().end(),
                        [name](Registration const& r) { return name && r.name == name; });
}

}  // namespace

McDArray<McString> PathTriangulatorFactory::getNames() {
    McDArray<McString> names;
    for (Registration const& r : registry()) names.append(McString(r.name.c_str()));
    return names;
}

PathTriangulator* PathTriangulatorFactory::createPathTriangulator(char const* name) {
    auto found = find(name);
    return found == registry().end() ? nullptr : new PathTriangulator(found->switches.c_str());
}

bool PathTriangulatorFactory::registerTriangulator(char const* name, char const* switches) {
    PathTriangulator probe;
    if (!name || !switches || !probe.setSwitches(switches)) return false;
    auto found = find(name);
    if (found != registry().end())
        found->switches = switches;
    else
        registry().push_back({name, switches});
    return true;
}

bool PathTriangulatorFactory::unregisterTriangulator(char const* name) {
    auto found = find(name);
    if (found == registry().end()) return false;
    registry().erase(found);
    return true;
}
