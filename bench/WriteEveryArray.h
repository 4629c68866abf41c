#pragma once
// Non-const access to every array of a path set. A copy that shares its arrays with another
// set copies them all here: this turns a snapshot into the full copy that snapshots were
// before arrays were shared.

#include "SurfacePathSet.h"

#include <benchmark/benchmark.h>

inline void writeEveryArray(SurfacePathSet& set) {
    benchmark::DoNotOptimize(set.nodes.dataPtr());
    for (SurfacePathSet::SurfacePath& path : set.paths) benchmark::DoNotOptimize(path.nodeIndices.dataPtr());
}
