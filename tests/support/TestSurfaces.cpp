#include "TestSurfaces.h"

#include <cmath>
#include <initializer_list>

#ifndef SURFPATH_MESH_DIR
#error "testsupport must be built with surfpath_use_meshes()"
#endif

namespace {

using Triangle = Surface::Triangle;

Surface finished(Surface surface) {
    surface.buildAllTables();
    return surface;
}

// Four corners in counter-clockwise order seen from outside become two triangles.
void addSide(Surface& s, int a, int b, int c, int d) {
    s.triangles.append(Triangle(a, b, c));
    s.triangles.append(Triangle(a, c, d));
}

}  // namespace

Surface makeQuad() {
    Surface s;
    s.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(1, 1, 0), McVec3f(0, 1, 0)};
    addSide(s, 0, 1, 2, 3);
    return finished(s);
}

Surface makeFan(int n) {
    Surface s;
    s.points.append(McVec3f(0, 0, 0));
    for (int i = 0; i < n; ++i) {
        const double angle = 2 * M_PI * i / n;
        s.points.append(McVec3f(float(std::cos(angle)), float(std::sin(angle)), 0));
    }
    for (int i = 0; i < n; ++i) s.triangles.append(Triangle(0, i + 1, (i + 1) % n + 1));
    return finished(s);
}

Surface makeStrip(int n) {
    Surface s;
    for (int k = 0; k < n + 2; ++k) s.points.append(McVec3f(float(k / 2), float(k % 2), 0));
    for (int j = 0; j < n; ++j) s.triangles.append(j % 2 ? Triangle(j, j + 1, j + 2) : Triangle(j, j + 2, j + 1));
    return finished(s);
}

Surface makeGrid(int n) {
    Surface s;
    for (int j = 0; j <= n; ++j)
        for (int i = 0; i <= n; ++i) s.points.append(McVec3f(float(i), float(j), 0));
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i) addSide(s, j * (n + 1) + i, j * (n + 1) + i + 1, (j + 1) * (n + 1) + i + 1, (j + 1) * (n + 1) + i);
    return finished(s);
}

Surface makeCylinder(int around, int along) {
    Surface s;
    for (int k = 0; k <= along; ++k)
        for (int i = 0; i < around; ++i) {
            const double angle = 2 * M_PI * i / around;
            s.points.append(McVec3f(float(std::cos(angle)), float(std::sin(angle)), float(k)));
        }
    for (int k = 0; k < along; ++k)
        for (int i = 0; i < around; ++i) {
            const int next = (i + 1) % around;
            addSide(s, k * around + i, k * around + next, (k + 1) * around + next, (k + 1) * around + i);
        }
    return finished(s);
}

Surface makeCube() {
    Surface s;
    for (int i = 0; i < 8; ++i) s.points.append(McVec3f(float(i & 1), float((i >> 1) & 1), float((i >> 2) & 1)));
    addSide(s, 0, 2, 3, 1);  // z = 0
    addSide(s, 4, 5, 7, 6);  // z = 1
    addSide(s, 0, 1, 5, 4);  // y = 0
    addSide(s, 2, 6, 7, 3);  // y = 1
    addSide(s, 0, 4, 6, 2);  // x = 0
    addSide(s, 1, 3, 7, 5);  // x = 1
    return finished(s);
}

Surface makeTetrahedron() {
    Surface s;
    s.points = {McVec3f(0, 0, 0), McVec3f(1, 0, 0), McVec3f(0, 1, 0), McVec3f(0, 0, 1)};
    for (auto const& t : {Triangle(0, 2, 1), Triangle(0, 1, 3), Triangle(0, 3, 2), Triangle(1, 2, 3)})
        s.triangles.append(t);
    return finished(s);
}

std::string meshFile(char const* name) { return std::string(SURFPATH_MESH_DIR) + "/" + name; }
