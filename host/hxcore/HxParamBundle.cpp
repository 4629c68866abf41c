#include "HxParamBundle.h"

#include <cerrno>
#include <cstdlib>

HxParamBundle::HxParamBundle(char const* name) : mName(name ? name : "") {}

HxParamBundle::HxParamBundle(HxParamBundle const& other) : mName(other.mName), mValues(other.mValues) {
    for (auto const& bundle : other.mBundles) mBundles.push_back(std::make_unique<HxParamBundle>(*bundle));
}

HxParamBundle& HxParamBundle::operator=(HxParamBundle const& other) {
    if (this != &other) *this = HxParamBundle(other);
    return *this;
}

HxParamBundle::~HxParamBundle() = default;

void HxParamBundle::clear() {
    mValues.clear();
    mBundles.clear();
}

void HxParamBundle::set(char const* name, char const* value) {
    const int i = findValue(name);
    if (i >= 0)
        mValues[i].second = value;
    else
        mValues.emplace_back(name, value);
}

void HxParamBundle::set(char const* name, double value) {
    // 17 significant digits read back to the same double.
    set(name, McString::format("%.17g", value).c_str());
}

char const* HxParamBundle::find(char const* name) const {
    const int i = findValue(name);
    return i >= 0 ? mValues[i].second.c_str() : nullptr;
}

bool HxParamBundle::findNum(char const* name, double& value) const {
    char const* text = find(name);
    if (!text || !*text) return false;
    char* end = nullptr;
    errno = 0;
    const double number = std::strtod(text, &end);
    if (*end != '\0' || errno == ERANGE) return false;
    value = number;
    return true;
}

bool HxParamBundle::remove(char const* name) {
    const int i = findValue(name);
    if (i < 0) return false;
    mValues.erase(mValues.begin() + i);
    return true;
}

HxParamBundle* HxParamBundle::getBundle(char const* name, bool create) {
    const int i = findBundle(name);
    if (i >= 0) return mBundles[i].get();
    if (!create) return nullptr;
    mBundles.push_back(std::make_unique<HxParamBundle>(name));
    return mBundles.back().get();
}

HxParamBundle const* HxParamBundle::getBundle(char const* name) const {
    const int i = findBundle(name);
    return i >= 0 ? mBundles[i].get() : nullptr;
}

bool HxParamBundle::removeBundle(char const* name) {
    const int i = findBundle(name);
    if (i < 0) return false;
    mBundles.erase(mBundles.begin() + i);
    return true;
}

bool HxParamBundle::operator==(HxParamBundle const& other) const {
    if (mName != other.mName || mValues != other.mValues || mBundles.size() != other.mBundles.size()) return false;
    for (size_t i = 0; i < mBundles.size(); ++i)
        if (*mBundles[i] != *other.mBundles[i]) return false;
    return true;
}

int HxParamBundle::findValue(char const* name) const {
    for (size_t i = 0; i < mValues.size(); ++i)
        if (mValues[i].first == name) return static_cast<int>(i);
    return -1;
}

int HxParamBundle::findBundle(char const* name) const {
    for (size_t i = 0; i < mBundles.size(); ++i)
        if (mBundles[i]->mName == name) return static_cast<int>(i);
    return -1;
}
