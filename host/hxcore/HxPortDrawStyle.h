#pragma once
// HxPortDrawStyle: how a display module draws a surface, a radio box with one button per
// style. The values are fixed; renderers switch on them.

#include "HxPortRadioBox.h"

class HxPortDrawStyle : public HxPortRadioBox {
  public:
    enum Style { SHADED = 0, LINES = 1, POINTS = 2, OUTLINED = 3, NUM_STYLES };

    // Starts as SHADED, labelled "Draw style", with the buttons "shaded", "lines", "points"
    // and "outlined" (shaded with the edges drawn on top).
    HxPortDrawStyle(HxObject* owner, char const* name);

    Style getStyle() const { return static_cast<Style>(getValue()); }
};
