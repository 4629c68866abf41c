#pragma once
// HxPortSeparator: a gap between groups of ports, drawn as a line or left blank. It has no
// value; it only takes part in the order, visibility and labelling of ports.

#include "HxPort.h"

class HxPortSeparator : public HxPort {
  public:
    // `withLine`: draw a line across the gap (false: blank space only).
    HxPortSeparator(HxObject* owner, char const* name, bool withLine);

    bool hasLine() const { return mWithLine; }

  private:
    bool mWithLine;
};
