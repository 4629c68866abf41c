#include "NodeTableSearch.h"

#include "SurfacePathSet.h"

int NodeTableSearch::indexOf(SurfacePathSet const& pathSet, SurfaceNode const* node, int start) {
    if (!node) return -1;
    const int count = static_cast<int>(pathSet.nodes.size());
    for (int i = start < 0 ? 0 : start; i < count; ++i)
        if (pathSet.nodes[i].ptr() == node) return i;
    return -1;
}
