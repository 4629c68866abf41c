#include "PathTriangulator.h"

#include "HxMessage.h"
#include "Surface.h"
#include "SurfacePathPatchifier.h"
#include "SurfacePathSet.h"

#include <CGAL/Constrained_Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace {

// === CGAL types: one constrained Delaunay triangulation per split triangle.
// Vertices carry the index of the surface point they become (-1 for points the mesher adds).
struct PointIndex {
    int index = -1;
};
using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using VertexBase = CGAL::Triangulation_vertex_base_with_info_2<PointIndex, Kernel>;
using FaceBase = CGAL::Constrained_triangulation_face_base_2<Kernel>;
using Tds = CGAL::Triangulation_data_structure_2<VertexBase, FaceBase>;
// Constraints may pass through vertices but never cross: crossing paths need a common node.
using Cdt = CGAL::Constrained_Delaunay_triangulation_2<Kernel, Tds,
                                                      CGAL::No_constraint_intersection_requiring_constructions_tag>;
using Point2 = Cdt::Point;

// Side points and triangle corners live on a lattice of this many steps per unit, so that a
// point on a side lies exactly on it in the plane coordinates below (every coordinate is an
// integer up to 2^52 over 2^52, exact in double).
constexpr int64_t kSteps = int64_t(1) << 26;
constexpr double kStep = 1.0 / double(kSteps);
// Barycentric distance below which a node counts as lying on a vertex or edge anyway, so that
// no triangle is made thinner than the lattice can tell apart.
constexpr float kMinimumSnap = 1e-6f;
// Quality refinement splits triangles whose smallest angle has a squared sine below this:
// about 20.7 degrees.
constexpr double kQualityBound = 0.125;
// Refinement points keep at least this barycentric distance from the triangle's sides, and
// this squared fraction of a constrained edge's length from it.
constexpr double kRefinementMargin = 1e-3;
constexpr double kConstraintClearance2 = 0.04;
// Extra points per triangle when "q" comes without "S".
constexpr int kDefaultExtraPoints = 10;

void fail(McString const& reason) { HxMessage::getTheMsg()->printf("Retriangulate: %s", reason.c_str()); }

// A split triangle's plane, scaled so that its longest side runs from (0, 0) to (1, 0): a
// similarity of the real plane, so Delaunay and angle criteria mean there what they mean on the
// surface. Corner `first` of the surface triangle is local corner 0.
struct TrianglePlane {
    int first = 0;
    int64_t cornerX[3] = {0, kSteps, 0}, cornerY[3] = {0, 0, 0};

    TrianglePlane(Surface const& s, Surface::Triangle const& t) {
        double best = -1;
        for (int i = 0; i < 3; ++i) {
            const double l = length2(s.points[t.points[i]], s.points[t.points[(i + 1) % 3]]);
            if (l > best) best = l, first = i;
        }
        const McVec3f a = s.points[t.points[first]], b = s.points[t.points[(first + 1) % 3]],
                      c = s.points[t.points[(first + 2) % 3]];
        const double bx = double(b.x) - a.x, by = double(b.y) - a.y, bz = double(b.z) - a.z;
        const double cx = double(c.x) - a.x, cy = double(c.y) - a.y, cz = double(c.z) - a.z;
        const double l2 = bx * bx + by * by + bz * bz;
        const double along = l2 > 0 ? (bx * cx + by * cy + bz * cz) / l2 : 0.5;
        const double nx = by * cz - bz * cy, ny = bz * cx - bx * cz, nz = bx * cy - by * cx;
        const double height = l2 > 0 ? std::sqrt(nx * nx + ny * ny + nz * nz) / l2 : 0;
        cornerX[2] = std::clamp<int64_t>(std::llround(along * kSteps), 0, kSteps);
        cornerY[2] = std::clamp<int64_t>(std::llround(height * kSteps), 1, kSteps);
    }
    static double length2(McVec3f const& p, McVec3f const& q) {
        const double x = double(p.x) - q.x, y = double(p.y) - q.y, z = double(p.z) - q.z;
        return x * x + y * y + z * z;
    }
    int local(int surfaceCorner) const { return (surfaceCorner - first + 3) % 3; }
    Point2 corner(int i) const { return Point2(cornerX[i] * kStep, cornerY[i] * kStep); }
    // The point `steps` lattice steps from local corner i towards corner i + 1.
    Point2 onSide(int i, int64_t steps) const {
        const int j = (i + 1) % 3;
        const double scale = kStep * kStep;
        return Point2(double((kSteps - steps) * cornerX[i] + steps * cornerX[j]) * scale,
                      double((kSteps - steps) * cornerY[i] + steps * cornerY[j]) * scale);
    }
    // A point of barycentric coordinates `w` (in the surface triangle's corner order).
    Point2 inside(double const w[3]) const {
        const double w1 = w[(first + 1) % 3], w2 = w[(first + 2) % 3];
        return Point2(w1 + w2 * cornerX[2] * kStep, w2 * cornerY[2] * kStep);
    }
    // Barycentric coordinates of a plane point, in the surface triangle's corner order.
    void barycentric(Point2 const& p, double w[3]) const {
        const double w2 = p.y() / (cornerY[2] * kStep);
        const double w1 = p.x() - w2 * cornerX[2] * kStep;
        w[first] = 1 - w1 - w2;
        w[(first + 1) % 3] = w1;
        w[(first + 2) % 3] = w2;
    }
};

struct SidePoint {
    int64_t steps;  // from the edge's first point
    int point;
};
struct InsidePoint {
    double w[3];
    int point;
};
// What a split triangle gets: its interior points and the path segments through it.
struct SplitTriangle {
    std::vector<InsidePoint> inside;
    std::vector<std::pair<int, int>> segments;
};

// The squared sine of a face's smallest angle.
double smallestAngleSine2(Cdt::Face_handle f) {
    double smallest = 1;
    for (int k = 0; k < 3; ++k) {
        Point2 const &a = f->vertex(k)->point(), &b = f->vertex((k + 1) % 3)->point(), &c = f->vertex((k + 2) % 3)->point();
        const double ux = b.x() - a.x(), uy = b.y() - a.y(), vx = c.x() - a.x(), vy = c.y() - a.y();
        const double cross = ux * vy - uy * vx;
        smallest = std::min(smallest, cross * cross / ((ux * ux + uy * uy) * (vx * vx + vy * vy)));
    }
    return smallest;
}

// Points closer to a constrained edge (a piece of a triangle side or a path segment) than a
// fifth of its length would make a sliver against it; the edge is never split instead, since a
// neighbour across a side, or a path, would then miss the new vertex.
bool tooCloseToAConstraint(Cdt const& cdt, Point2 const& p) {
    for (auto const& [face, i] : cdt.constrained_edges()) {
        Point2 const &a = face->vertex(Cdt::cw(i))->point(), &b = face->vertex(Cdt::ccw(i))->point();
        if (CGAL::squared_distance(p, Kernel::Segment_2(a, b)) < kConstraintClearance2 * CGAL::squared_distance(a, b))
            return true;
    }
    return false;
}

// Inserts the circumcentres of the worst triangles, at most `maxPoints` of them, where they
// lie inside the split triangle and clear of every constrained edge (a Delaunay refinement
// that never splits an edge).
void refineQuality(Cdt& cdt, TrianglePlane const& plane, int maxPoints) {
    std::set<std::array<Cdt::Vertex_handle, 3>> hopeless;
    auto key = [](Cdt::Face_handle f) {
        std::array<Cdt::Vertex_handle, 3> k = {f->vertex(0), f->vertex(1), f->vertex(2)};
        std::sort(k.begin(), k.end());
        return k;
    };
    for (int added = 0; added < maxPoints;) {
        Cdt::Face_handle worst;
        double worstSine2 = kQualityBound;
        for (Cdt::Face_handle f : cdt.finite_face_handles()) {
            const double sine2 = smallestAngleSine2(f);
            if (sine2 < worstSine2 && !hopeless.count(key(f))) worst = f, worstSine2 = sine2;
        }
        if (worst == Cdt::Face_handle()) return;
        const Point2 centre = CGAL::circumcenter(worst->vertex(0)->point(), worst->vertex(1)->point(),
                                                 worst->vertex(2)->point());
        double w[3];
        plane.barycentric(centre, w);
        if (*std::min_element(w, w + 3) < kRefinementMargin || tooCloseToAConstraint(cdt, centre)) {
            hopeless.insert(key(worst));
            continue;
        }
        cdt.insert(centre, worst);
        ++added;
    }
}

// The new triangulation, planned without touching the surface or the paths.
class Plan {
  public:
    Plan(SurfacePathSet const& set, float tolerance, int maxExtraPoints)
        : mSet(set), mSurface(*set.getSurface()), mTolerance(std::max(tolerance, kMinimumSnap)),
          mMaxExtraPoints(maxExtraPoints) {}

    bool make() { return placeNodes() && collectSegments() && splitTriangles(); }
    void apply(SurfacePathSet& set, Surface& surface) const;

  private:
    bool placeNodes();
    int placeNode(SurfaceNode const* node);
    int pointOnEdge(int edge, float t, McVec3f const& position);
    bool collectSegments();
    bool hasSidePoints(int edge) const { return mSidePoints.count(edge) > 0; }
    bool splitTriangles();
    bool split(int triangle, SplitTriangle const& work, bool refine);

    SurfacePathSet const& mSet;
    Surface const& mSurface;
    float mTolerance;
    int mMaxExtraPoints;

    std::vector<McHandle<SurfaceNode>> mSnapped;  // the nodes as placed, one per table entry
    std::vector<int> mNodePoint;                  // surface point of each table entry
    std::vector<McVec3f> mNewPoints;              // appended after the surface's points
    std::unordered_map<int, std::vector<SidePoint>> mSidePoints;  // by edge
    std::map<std::tuple<int, float, float>, int> mInsidePoints;   // by triangle and parameters
    std::map<int, SplitTriangle> mSplit;                          // by triangle, in order
    std::map<int, std::vector<Surface::Triangle>> mNewTriangles;  // by the triangle replaced
    // Points that a segment passes on its way, in order, by (from, to) surface point.
    std::map<std::pair<int, int>, std::vector<int>> mChains;
};

bool Plan::placeNodes() {
    SurfaceNodeFactory snapper(const_cast<Surface*>(&mSurface));
    snapper.mode = SurfaceNodeFactory::BARYCENTRIC;
    snapper.tolerance = mTolerance;
    mNodePoint.assign(size_t(mSet.getNumNodes()), -1);
    for (int i = 0; i < mSet.getNumNodes(); ++i) {
        SurfaceNode* node = mSet.getNode(i);
        if (!node || node->getSurface() != &mSurface) {
            fail(McString::format("node %d does not lie on the path set's surface", i));
            return false;
        }
        mSnapped.emplace_back(snapper.convertNode(node));
        mNodePoint[size_t(i)] = placeNode(mSnapped.back());
    }
    return true;
}

int Plan::placeNode(SurfaceNode const* node) {
    float u, v;
    node->getParameters(u, v);
    const int element = node->getElement();
    if (node->getKind() == SurfaceNode::VERTEX) return element;
    if (node->getKind() == SurfaceNode::EDGE) return pointOnEdge(element, u, node->getPosition());
    const auto key = std::make_tuple(element, u, v);
    auto known = mInsidePoints.find(key);
    if (known != mInsidePoints.end()) return known->second;
    const int point = mSurface.getNumPoints() + int(mNewPoints.size());
    mInsidePoints.emplace(key, point);
    mNewPoints.push_back(node->getPosition());
    InsidePoint inside{{0, 0, 0}, point};
    float w[3];
    node->getBarycentric(element, w);
    for (int k = 0; k < 3; ++k) inside.w[k] = w[k];
    mSplit[element].inside.push_back(inside);
    return point;
}

int Plan::pointOnEdge(int edge, float t, McVec3f const& position) {
    const int64_t steps = std::llround(double(t) * kSteps);
    Surface::Edge const& e = mSurface.edges[edge];
    if (steps <= 0) return e.points[0];
    if (steps >= kSteps) return e.points[1];
    std::vector<SidePoint>& onEdge = mSidePoints[edge];
    for (SidePoint const& side : onEdge)
        if (side.steps == steps) return side.point;
    const int point = mSurface.getNumPoints() + int(mNewPoints.size());
    mNewPoints.push_back(position);
    onEdge.push_back({steps, point});
    return point;
}

bool Plan::collectSegments() {
    for (int p = 0; p < mSet.getNumPaths(); ++p) {
        McDArray<int> const& indices = mSet.paths[p].nodeIndices;
        for (int64_t i = 0; i + 1 < indices.size(); ++i) {
            const int a = indices[i], b = indices[i + 1];
            const int from = mNodePoint[size_t(a)], to = mNodePoint[size_t(b)];
            if (from == to) continue;
            SurfaceNode const* na = mSnapped[size_t(a)];
            SurfaceNode const* nb = mSnapped[size_t(b)];
            if (na->getKind() == SurfaceNode::VERTEX && nb->getKind() == SurfaceNode::VERTEX) {
                const int edge = mSurface.findEdge(from, to);
                if (edge >= 0 && !hasSidePoints(edge)) continue;  // runs along an edge that stays
            }
            const int triangle = na->getSharedElement(nb);
            if (triangle < 0) {
                fail(McString::format("path %d leaves the surface between positions %ld and %ld (the nodes lie on "
                                      "no common triangle); connect them along the surface first",
                                      p, long(i), long(i + 1)));
                return false;
            }
            mSplit[triangle].segments.emplace_back(from, to);
        }
    }
    for (auto const& [edge, points] : mSidePoints)
        for (int k = 0; k < mSurface.getNumTrianglesOfEdge(edge); ++k) mSplit[mSurface.getTrianglesOfEdge(edge)[k]];
    return true;
}

bool Plan::splitTriangles() {
    for (auto const& [triangle, work] : mSplit) {
        const size_t pointsBefore = mNewPoints.size();
        if (mMaxExtraPoints > 0 && split(triangle, work, true)) continue;
        mNewPoints.resize(pointsBefore);  // refinement that went wrong is dropped, not the split
        if (!split(triangle, work, false)) return false;
    }
    return true;
}

bool Plan::split(int triangle, SplitTriangle const& work, bool refine) {
    Surface::Triangle const& t = mSurface.triangles[triangle];
    const TrianglePlane plane(mSurface, t);
    Cdt cdt;
    std::unordered_map<int, Cdt::Vertex_handle> vertexOf;
    auto add = [&](Point2 const& p, int point) {
        Cdt::Vertex_handle v = cdt.insert(p);
        if (v->info().index >= 0 && v->info().index != point) return false;
        v->info().index = point;
        vertexOf[point] = v;
        return true;
    };
    // The sides go in as constrained chains, so that nothing is ever added outside them.
    for (int side = 0; side < 3; ++side) {
        const int local = plane.local(side);
        std::vector<std::pair<int64_t, int>> chain = {{0, t.points[side]}, {kSteps, t.points[(side + 1) % 3]}};
        const int edge = t.edges[side];
        auto found = mSidePoints.find(edge);
        if (edge >= 0 && found != mSidePoints.end()) {
            const bool forward = mSurface.edges[edge].points[0] == t.points[side];
            for (SidePoint const& s : found->second) chain.emplace_back(forward ? s.steps : kSteps - s.steps, s.point);
        }
        std::sort(chain.begin(), chain.end());
        for (auto const& [steps, point] : chain)
            add(steps == 0 ? plane.corner(local) : steps == kSteps ? plane.corner((local + 1) % 3) : plane.onSide(local, steps),
                point);
        for (size_t k = 0; k + 1 < chain.size(); ++k)
            cdt.insert_constraint(vertexOf[chain[k].second], vertexOf[chain[k + 1].second]);
    }
    for (InsidePoint const& inside : work.inside) {
        if (!add(plane.inside(inside.w), inside.point)) {
            fail(McString::format("two nodes in triangle %d lie too close together to tell apart; merge duplicate "
                                  "nodes first",
                                  triangle));
            return false;
        }
    }
    try {
        for (auto const& [from, to] : work.segments) cdt.insert_constraint(vertexOf.at(from), vertexOf.at(to));
    } catch (Cdt::Intersection_of_constraints_exception const&) {
        fail(McString::format("paths cross inside triangle %d without a common node; split the paths at their "
                              "intersections first",
                              triangle));
        return false;
    }
    if (refine) {
        refineQuality(cdt, plane, mMaxExtraPoints);
        for (Cdt::Vertex_handle v : cdt.finite_vertex_handles()) {
            if (v->info().index >= 0) continue;
            double w[3];
            plane.barycentric(v->point(), w);
            if (*std::min_element(w, w + 3) <= kMinimumSnap) return false;
            McVec3f position(0, 0, 0);
            for (int k = 0; k < 3; ++k) position += mSurface.points[t.points[k]] * float(w[k]);
            v->info().index = mSurface.getNumPoints() + int(mNewPoints.size());
            mNewPoints.push_back(position);
        }
    }
    std::vector<Surface::Triangle>& triangles = mNewTriangles[triangle];
    triangles.clear();
    for (Cdt::Face_handle f : cdt.finite_face_handles())
        triangles.emplace_back(f->vertex(0)->info().index, f->vertex(1)->info().index, f->vertex(2)->info().index,
                               t.patch);
    for (auto const& [from, to] : work.segments) {
        Cdt::Vertex_handle a = vertexOf.at(from), b = vertexOf.at(to);
        if (cdt.is_edge(a, b)) continue;
        std::vector<Cdt::Vertex_handle> passed;
        for (Cdt::Vertex_handle v : cdt.finite_vertex_handles())
            if (CGAL::collinear_are_strictly_ordered_along_line(a->point(), v->point(), b->point())) passed.push_back(v);
        std::sort(passed.begin(), passed.end(), [&](Cdt::Vertex_handle u, Cdt::Vertex_handle v) {
            return CGAL::squared_distance(a->point(), u->point()) < CGAL::squared_distance(a->point(), v->point());
        });
        std::vector<int>& chain = mChains[{from, to}];
        for (Cdt::Vertex_handle v : passed) chain.push_back(v->info().index);
        mChains[{to, from}].assign(chain.rbegin(), chain.rend());
    }
    return true;
}

void Plan::apply(SurfacePathSet& set, Surface& surface) const {
    for (McVec3f const& p : mNewPoints) surface.points.append(p);
    for (auto const& [replaced, triangles] : mNewTriangles) {
        surface.triangles[replaced] = triangles.front();
        for (size_t k = 1; k < triangles.size(); ++k) surface.triangles.append(triangles[k]);
    }
    surface.createAllEdges(1);
    surface.createNeighbours();
    surface.computeNormalsPerTriangle();
    surface.computeTrianglesPerPoint();

    // Entries that land on the point before them go; a control point passes its flag on.
    std::vector<unsigned char> flags(mNodePoint.size());
    for (size_t i = 0; i < flags.size(); ++i) flags[i] = set.nodes[int64_t(i)]->isControlPoint;
    for (int p = 0; p < set.getNumPaths(); ++p) {
        McDArray<int>& indices = set.paths[p].nodeIndices;
        McDArray<int> rebuilt;
        int lastPoint = -1;
        for (int64_t i = 0; i < indices.size(); ++i) {
            const int index = indices[i], point = mNodePoint[size_t(index)];
            if (point == lastPoint) {
                if (size_t(rebuilt.last()) < flags.size()) flags[size_t(rebuilt.last())] |= flags[size_t(index)];
                continue;
            }
            auto chain = lastPoint < 0 ? mChains.end() : mChains.find({lastPoint, point});
            if (chain != mChains.end())
                for (int passed : chain->second) rebuilt.append(set.addNode(set.nodeFactory.createVertexNode(passed)));
            rebuilt.append(index);
            lastPoint = point;
        }
        indices = rebuilt;
    }
    for (int i = 0; i < int(mNodePoint.size()); ++i) {
        SurfaceNode* vertex = set.nodeFactory.createVertexNode(mNodePoint[size_t(i)]);
        vertex->isControlPoint = flags[size_t(i)];
        set.nodes[i] = vertex;
    }
}

}  // namespace

PathTriangulator::PathTriangulator(char const* switches) { setSwitches(switches); }

bool PathTriangulator::setSwitches(char const* switches) {
    if (!switches) return false;
    bool quality = false;
    int maxPoints = kDefaultExtraPoints;
    for (char const* c = switches; *c; ++c) {
        if (*c == 'q') {
            quality = true;
        } else if (*c == 'S') {
            char* end = nullptr;
            maxPoints = int(std::strtol(c + 1, &end, 10));
            c = end - 1;
        } else if (!std::strchr("pzQ", *c)) {
            fail(McString::format("unknown switch '%c' in \"%s\" (known: p, q, z, S<number>, Q)", *c, switches));
            return false;
        }
    }
    mSwitches = McString(switches);
    mMaxExtraPoints = quality ? std::max(maxPoints, 0) : 0;
    return true;
}

bool PathTriangulator::run(bool patchify) {
    Surface* surface = mPathSet ? mPathSet->getSurface() : nullptr;
    if (!surface) {
        fail(McString(mPathSet ? "the path set lies on no surface" : "there is no path set"));
        return false;
    }
    surface->createAllEdges(0);
    Plan plan(*mPathSet, mTolerance, mMaxExtraPoints);
    if (!plan.make()) return false;
    std::unique_ptr<Surface> before;
    if (patchify) before = std::make_unique<Surface>(*surface);
    plan.apply(*mPathSet, *surface);
    if (!patchify || SurfacePathPatchifier(mPathSet, surface).compute(true)) return true;
    surface->copyData(*before);
    return false;
}
