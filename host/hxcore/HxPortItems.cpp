#include "HxPortItems.h"

#include <algorithm>

HxPortItems::HxPortItems(int count) { setNum(count); }

char const* HxPortItems::getLabel(int i) const { return contains(i) ? mLabels[i].c_str() : ""; }

void HxPortItems::setNum(int count) { mLabels.resize(std::max(count, 0)); }

void HxPortItems::setLabel(int i, char const* text) {
    if (contains(i)) mLabels[i] = text ? text : "";
}
