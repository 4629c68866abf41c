#include "SurfaceShortestPath.h"

#include "Surface.h"
#include "SurfaceEdgeNode.h"
#include "SurfaceVertexNode.h"

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Surface_mesh.h>
#include <CGAL/Surface_mesh_shortest_path.h>
#include <CGAL/exceptions.h>

#include <array>
#include <unordered_map>
#include <vector>

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Mesh = CGAL::Surface_mesh<Kernel::Point_3>;
using Traits = CGAL::Surface_mesh_shortest_path_traits<Kernel, Mesh>;
using ShortestPath = CGAL::Surface_mesh_shortest_path<Traits>;
using Barycentric = Traits::Barycentric_coordinates;

// The chosen triangles as a CGAL mesh, remembering which surface point and triangle each mesh
// vertex and face stands for.
struct BandMesh {
    Mesh mesh;
    std::vector<int> surfacePoint;                   // by mesh vertex
    std::unordered_map<int, Mesh::Vertex_index> vertexOf;  // by surface point
    std::unordered_map<int, Mesh::Face_index> faceOf;      // by surface triangle

    BandMesh(Surface const& surface, McDArray<int> const& triangles) {
        for (int t : triangles) {
            std::array<Mesh::Vertex_index, 3> corners;
            for (int i = 0; i < 3; ++i) corners[size_t(i)] = vertex(surface, surface.triangles[t].points[i]);
            // add_face refuses a triangle that would make the mesh non-manifold or flip its
            // orientation; the band then simply has a hole there.
            const Mesh::Face_index face = mesh.add_face(corners[0], corners[1], corners[2]);
            if (face != Mesh::null_face()) faceOf.emplace(t, face);
        }
    }

    Mesh::Vertex_index vertex(Surface const& surface, int point) {
        auto found = vertexOf.find(point);
        if (found != vertexOf.end()) return found->second;
        McVec3f const& p = surface.points[point];
        const Mesh::Vertex_index v = mesh.add_vertex(Kernel::Point_3(p.x, p.y, p.z));
        surfacePoint.push_back(point);
        vertexOf.emplace(point, v);
        return v;
    }

    // The node as a CGAL face location on one of its triangles in the band.
    bool locate(SurfaceNode const* node, Mesh::Face_index& face, Barycentric& location) const {
        McDArray<int> triangles;
        node->getTriangles(triangles);
        Surface const& surface = *node->getSurface();
        for (int t : triangles) {
            auto found = faceOf.find(t);
            float bary[3];
            if (found == faceOf.end() || !node->getBarycentric(t, bary)) continue;
            face = found->second;
            // CGAL orders the coordinates from the face's halfedge on.
            Mesh::Halfedge_index h = mesh.halfedge(face);
            double coordinates[3];
            for (int k = 0; k < 3; ++k, h = mesh.next(h)) {
                const int point = surfacePoint[size_t(mesh.source(h))];
                for (int i = 0; i < 3; ++i)
                    if (surface.triangles[t].points[i] == point) coordinates[k] = bary[i];
            }
            location = {{coordinates[0], coordinates[1], coordinates[2]}};
            return true;
        }
        return false;
    }
};

// Turns CGAL's walk from the query back to the source into surface nodes.
struct NodeCollector {
    BandMesh const& band;
    Surface* surface;
    McDArray<McHandle<SurfaceNode>>& nodes;

    void operator()(Mesh::Halfedge_index h, double t) {
        // CGAL's t weighs the halfedge's target.
        const int a = band.surfacePoint[size_t(band.mesh.source(h))];
        const int b = band.surfacePoint[size_t(band.mesh.target(h))];
        const int edge = surface->findEdge(a, b);
        if (edge < 0) return;
        const float alongEdge = float(surface->edges[edge].points[0] == a ? t : 1 - t);
        nodes.append(new SurfaceEdgeNode(surface, edge, alongEdge));
    }
    void operator()(Mesh::Vertex_index v) {
        nodes.append(new SurfaceVertexNode(surface, band.surfacePoint[size_t(v)]));
    }
    void operator()(Mesh::Face_index, Barycentric const&) {}  // the two ends: the caller's nodes
};

// Two nodes at one place, or a crossing of the edge an end node lies on (the path leaving the
// slightly moved source, see intoFace).
bool samePlace(SurfaceNode const* a, SurfaceNode const* b) {
    if (a->getKind() == SurfaceNode::EDGE && b->getKind() == SurfaceNode::EDGE && a->getElement() == b->getElement())
        return true;
    return (a->getPosition() - b->getPosition()).length2() <= 1e-14f * (1 + a->getPosition().length2());
}

// CGAL measures and walks paths from a source on an edge inconsistently (the distance and
// the steps disagree by up to a percent), so a source on an edge is moved a millionth of the
// way into the face; a vertex source is handled exactly and stays.
Barycentric intoFace(Barycentric const& location) {
    const int zeros = (location[0] == 0) + (location[1] == 0) + (location[2] == 0);
    if (zeros != 1) return location;
    const double shift = 1e-6;
    Barycentric moved;
    for (int i = 0; i < 3; ++i) moved[size_t(i)] = (1 - shift) * location[size_t(i)] + shift / 3;
    return moved;
}

// Drops steps that repeat their predecessor or an end (CGAL may report a crossing at a
// vertex's end of an edge and then the vertex itself).
void dropRepeats(SurfaceNode const* from, SurfaceNode const* to, McDArray<McHandle<SurfaceNode>>& nodes) {
    McDArray<McHandle<SurfaceNode>> kept;
    SurfaceNode const* previous = from;
    for (SurfaceNode* node : nodes) {
        if (samePlace(node, previous) || samePlace(node, to)) continue;
        kept.append(node);
        previous = node;
    }
    nodes = kept;
}

}  // namespace

bool SurfaceShortestPath::compute(McDArray<int> const& triangles, SurfaceNode const* from, SurfaceNode const* to,
                                  Result& result, McString& error) {
    result.between.clear();
    result.length = 0;
    Surface* surface = from->getSurface();
    BandMesh band(*surface, triangles);
    Mesh::Face_index fromFace, toFace;
    Barycentric fromLocation, toLocation;
    if (!band.locate(from, fromFace, fromLocation) || !band.locate(to, toFace, toLocation)) {
        error = "a node lies outside the triangles searched";
        return false;
    }
    try {
        ShortestPath shortestPath(band.mesh);
        shortestPath.add_source_point(toFace, intoFace(toLocation));
        NodeCollector collector{band, surface, result.between};
        const auto found = shortestPath.shortest_path_sequence_to_source_points(fromFace, fromLocation, collector);
        if (found.first < 0) {
            error = "no path on the surface joins the two nodes";
            return false;
        }
        result.length = found.first;
    } catch (CGAL::Failure_exception const& e) {
        result.between.clear();
        error = McString("the exact shortest path failed on this mesh: ") + e.message().c_str();
        return false;
    }
    dropRepeats(from, to, result.between);
    return true;
}

bool SurfaceShortestPath::compute(SurfaceNode const* from, SurfaceNode const* to, Result& result, McString& error) {
    McDArray<int> all(from->getSurface()->getNumTriangles());
    for (int t = 0; t < int(all.size()); ++t) all[t] = t;
    return compute(all, from, to, result, error);
}
