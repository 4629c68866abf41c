#include "MeshSubdivision.h"

#include "Surface.h"

#include <array>

void MeshSubdivision::subdivide(Surface& surface, int levels) {
    for (int level = 0; level < levels; ++level) {
        surface.createAllEdges(0);
        Surface finer;
        finer.points = surface.points;
        // Point of the middle of edge e: numPoints + e.
        const int firstMidpoint = surface.getNumPoints();
        for (Surface::Edge const& edge : surface.edges)
            finer.points.append((surface.points[edge.points[0]] + surface.points[edge.points[1]]) * 0.5f);
        for (Surface::Triangle const& t : surface.triangles) {
            const int a = t.points[0], b = t.points[1], c = t.points[2];
            const int ab = firstMidpoint + t.edges[0], bc = firstMidpoint + t.edges[1], ca = firstMidpoint + t.edges[2];
            for (auto const& corners : {std::array<int, 3>{a, ab, ca}, std::array<int, 3>{b, bc, ab},
                                        std::array<int, 3>{c, ca, bc}, std::array<int, 3>{ab, bc, ca}}) {
                Surface::Triangle triangle;
                for (int i = 0; i < 3; ++i) triangle.points[i] = corners[size_t(i)];
                triangle.patch = t.patch;
                finer.triangles.append(triangle);
            }
        }
        surface.copyData(finer);
    }
    surface.createAllEdges(0);
}
