#pragma once
// PathEditClickInfo: what a click in the viewer hit, filled by
// SurfacePathEditorViewerBase::initClickInfo and read by the editors. The caller owns the
// point and initialises the record (element and kind at -1); the base never resets it.

#include "McVec3f.h"

struct PathEditClickInfo {
    explicit PathEditClickInfo(McVec3f& p) : point(p) {}

    // World position of the pick, or of the control point for a control-point hit.
    McVec3f& point;
    // Surface triangle under the click; for a path hit the element the segment's two nodes share.
    int element = -1;
    int controlPoint = -1;
    int path = -1;
    // Position of the hit segment (or control point) within the path's node list.
    int segment = -1;
    // -1 nothing, 0 surface, 1 path line, 2 control point.
    int kind = -1;
    // 1 or 2 for the release of mouse button 1 or 2; otherwise as the caller set it.
    int button = -1;
};
