#pragma once
// HxParamBundle: the named parameters of a data object (for example where it came from or
// how it was made), with nested bundles for grouped settings.
//
// Values are text; numbers are stored in a form that reads back to the same double. Values and
// nested bundles keep the order in which they were first set. A bundle owns its nested
// bundles; copies are deep.

#include "McString.h"

#include <memory>
#include <utility>
#include <vector>

class HxParamBundle {
  public:
    explicit HxParamBundle(char const* name = "");
    HxParamBundle(HxParamBundle const& other);
    HxParamBundle& operator=(HxParamBundle const& other);
    HxParamBundle(HxParamBundle&&) noexcept = default;
    HxParamBundle& operator=(HxParamBundle&&) noexcept = default;
    ~HxParamBundle();

    char const* getName() const { return mName.c_str(); }
    bool isEmpty() const { return mValues.empty() && mBundles.empty(); }
    void clear();

    // === Values
    // Sets a value, replacing an earlier one of the same name in place.
    void set(char const* name, char const* value);
    void set(char const* name, double value);
    // The value's text, or null if there is none.
    char const* find(char const* name) const;
    // False if the value is missing or is not a number.
    bool findNum(char const* name, double& value) const;
    bool remove(char const* name);
    int getNumValues() const { return static_cast<int>(mValues.size()); }
    char const* getValueName(int i) const { return mValues[i].first.c_str(); }
    char const* getValue(int i) const { return mValues[i].second.c_str(); }

    // === Nested bundles
    // The nested bundle of that name; made empty on request when missing, else null.
    HxParamBundle* getBundle(char const* name, bool create = false);
    HxParamBundle const* getBundle(char const* name) const;
    int getNumBundles() const { return static_cast<int>(mBundles.size()); }
    HxParamBundle* getBundle(int i) { return mBundles[i].get(); }
    HxParamBundle const* getBundle(int i) const { return mBundles[i].get(); }
    bool removeBundle(char const* name);

    // Same name, values and nested bundles, in the same order.
    bool operator==(HxParamBundle const& other) const;
    bool operator!=(HxParamBundle const& other) const { return !(*this == other); }

  private:
    int findValue(char const* name) const;
    int findBundle(char const* name) const;

    McString mName;
    std::vector<std::pair<McString, McString>> mValues;
    std::vector<std::unique_ptr<HxParamBundle>> mBundles;
};
