#pragma once
// PathTriangulatorFactory: the surface triangulators that editors offer, by name, in the
// order in which they are registered. Two come built in:
//   "Constrained Delaunay"  inserts the path nodes and segments only (switches "pzQ");
//   "Quality Delaunay"      also refines the new triangles with a few extra points each
//                           (switches "pqzS10Q").
// Libraries may register further modes of the same triangulator under names of their own.

#include "McDArray.h"
#include "McString.h"

class PathTriangulator;

class PathTriangulatorFactory {
  public:
    static McDArray<McString> getNames();
    // A new triangulator that the caller owns; null for a name that is not registered.
    static PathTriangulator* createPathTriangulator(char const* name);

    // Registers `name` for a triangulator with the given switches, replacing an entry of that
    // name in its place; false (nothing registered) for switches the triangulator refuses.
    static bool registerTriangulator(char const* name, char const* switches);
    // False when no triangulator has that name.
    static bool unregisterTriangulator(char const* name);
};
