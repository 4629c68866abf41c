#pragma once
// Surfaces for tests: tiny ones built in code, so that a test states its geometry in a line,
// and the real meshes unpacked into the build tree.
//
// Every built surface lies at known coordinates, is consistently oriented and has all its
// derived tables built (edges, neighbours, normals, triangles per point).

#include "Surface.h"

#include <string>

// The unit square in the plane z = 0: points (0,0) (1,0) (1,1) (0,1), triangles 0-1-2 and 0-2-3;
// normals +z.
Surface makeQuad();
// n >= 3 triangles around point 0 at the origin; points 1..n on the unit circle in z = 0, in
// counter-clockwise order; triangle i is 0, i+1, (i+1) % n + 1. Point 0 is interior; normals +z.
Surface makeFan(int n);
// n >= 1 triangles in a row along x in z = 0: point 2k is (k, 0, 0), point 2k+1 is (k, 1, 0);
// triangle j uses points j, j+1, j+2. Normals +z.
Surface makeStrip(int n);
// The square [0,n]^2 in z = 0 as n x n unit cells of two triangles; point i + (n+1) j is at
// (i, j, 0). Normals +z.
Surface makeGrid(int n);
// An open prism of `around` sides approximating the unit cylinder about the z axis, from
// z = 0 to z = along in unit rings: point i + around k is at (cos a, sin a, k) with
// a = 2 pi i / around. Normals outward.
Surface makeCylinder(int around, int along);
// The closed unit cube [0,1]^3: point x + 2y + 4z is at (x, y, z); two triangles per side,
// normals outward.
Surface makeCube();
// The closed tetrahedron with corners at the origin and the three unit points; normals outward.
Surface makeTetrahedron();

// Full path of a mesh of the test data, e.g. meshFile("elephant.off").
std::string meshFile(char const* name);
