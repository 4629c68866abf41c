// Entangling on a real mesh: random walks through neighbouring triangles, all starting in one
// triangle so that they cross many times, stay consistent and need no second run, even where
// crossings lie within the tolerance of each other (a single pass once left those apart).

#include "McString.h"
#include "PathEntangler.h"
#include "Surface.h"
#include "SurfaceIO.h"
#include "SurfacePathSet.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// Alternates triangle nodes and edge nodes on the side crossed into the next triangle.
McDArray<int> randomWalk(SurfacePathSet& set, int start, int steps, std::mt19937& random) {
    Surface const& surface = *set.getSurface();
    std::uniform_real_distribution<float> inside(0.1f, 0.4f), along(0.1f, 0.9f);
    std::uniform_int_distribution<int> side(0, 2);
    McDArray<int> indices;
    int t = start;
    indices.append(set.addNode(set.nodeFactory.createTriangleNode(t, inside(random), inside(random))));
    for (int step = 0; step < steps; ++step) {
        const int i = side(random);
        const int next = surface.neighbours[3 * t + i];
        if (next < 0) continue;
        indices.append(set.addNode(set.nodeFactory.createEdgeNode(surface.triangles[t].edges[i], along(random))));
        indices.append(set.addNode(set.nodeFactory.createTriangleNode(next, inside(random), inside(random))));
        t = next;
    }
    return indices;
}

TEST(EntangleOnAMesh, RandomCrossingWalksStayConsistentAndNeedNoSecondRun) {
    Surface elephant;
    McString error, warnings;
    ASSERT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), elephant, error, warnings)) << error;
    SurfacePathSet set(&elephant);
    std::mt19937 random(7);
    for (int walk = 0; walk < 12; ++walk) set.addPath(randomWalk(set, 100, 40, random));
    const int before = set.getNumNodes();

    ASSERT_TRUE(PathEntangler(&set, 0.001f, false).compute());
    int bad = -2;
    McString problem;
    EXPECT_TRUE(set.isConsistent(true, &bad, problem)) << problem.c_str();
    EXPECT_GT(set.getNumNodes(), before) << "the walks cross";
    const int entangled = set.getNumNodes();
    EXPECT_FALSE(PathEntangler(&set, 0.001f, true).compute()) << "a second run finds nothing to share";
    EXPECT_EQ(set.getNumNodes(), entangled);
}

}  // namespace
