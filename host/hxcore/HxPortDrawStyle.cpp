#include "HxPortDrawStyle.h"

HxPortDrawStyle::HxPortDrawStyle(HxObject* owner, char const* name) : HxPortRadioBox(owner, name, NUM_STYLES) {
    setLabel("Draw style");
    static char const* const names[NUM_STYLES] = {"shaded", "lines", "points", "outlined"};
    for (int i = 0; i < NUM_STYLES; ++i) setLabel(i, names[i]);
}
