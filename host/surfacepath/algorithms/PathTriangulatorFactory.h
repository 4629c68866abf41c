#pragma once
// PathTriangulatorFactory: the surface triangulators that editors offer, by name, in the
// order in which they are registered:
//   "Constrained Delaunay"  inserts the path nodes and segments only (switches "pzQ");
//   "Quality Delaunay"      also refines the new triangles with a few extra points each
//                           (switches "pqzS10Q").

#include "McDArray.h"
#include "McString.h"

class PathTriangulator;

class PathTriangulatorFactory {
  public:
    static McDArray<McString> getNames();
    // A new triangulator that the caller owns; null for a name that is not registered.
    static PathTriangulator* createPathTriangulator(char const* name);
};
