// The three node kinds: where they lie, what they share with other nodes, and what each can
// say is wrong with itself.

#include "SurfaceEdgeNode.h"
#include "SurfaceNodeFactory.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

void expectNear(McVec3f const& a, McVec3f const& b) {
    EXPECT_NEAR(a.x, b.x, 1e-6f);
    EXPECT_NEAR(a.y, b.y, 1e-6f);
    EXPECT_NEAR(a.z, b.z, 1e-6f);
}

class Nodes : public testing::Test {
  protected:
    void SetUp() override { SurfaceNodeFactory::prepareSurface(&quad); }
    // The edge between two points of the quad.
    int edge(int p, int q) const { return quad.findEdge(p, q); }

    Surface quad = makeQuad();
};

TEST_F(Nodes, PositionsFollowElementAndParameters) {
    expectNear(SurfaceVertexNode(&quad, 2).getPosition(), McVec3f(1, 1, 0));
    // Edge parameters run from the edge's first (lower) point to its second.
    expectNear(SurfaceEdgeNode(&quad, edge(0, 1), 0.25f).getPosition(), McVec3f(0.25f, 0, 0));
    // Triangle 0 is 0-1-2: u weighs point 1, v point 2.
    expectNear(SurfaceTriangleNode(&quad, 0, 0.5f, 0.25f).getPosition(), McVec3f(0.75f, 0.25f, 0));
}

TEST_F(Nodes, NormalsAreUnitLength) {
    Surface cube = makeCube();
    SurfaceNodeFactory::prepareSurface(&cube);
    // A corner of the cube averages three faces; an edge two.
    const McVec3f corner = SurfaceVertexNode(&cube, 0).getNormal();
    EXPECT_NEAR(corner.length(), 1, 1e-6f);
    EXPECT_GT(corner.dot(McVec3f(-1, -1, -1)), 1) << "points away from the cube";
    for (int e = 0; e < cube.getNumEdges(); ++e) EXPECT_NEAR(SurfaceEdgeNode(&cube, e, 0.5f).getNormal().length(), 1, 1e-6f);
    expectNear(SurfaceTriangleNode(&quad, 1, 0.2f, 0.2f).getNormal(), McVec3f(0, 0, 1));
}

TEST_F(Nodes, SharedElementAndEdge) {
    SurfaceVertexNode v0(&quad, 0), v1(&quad, 1), v3(&quad, 3);
    SurfaceEdgeNode diagonal(&quad, edge(0, 2), 0.5f);
    SurfaceTriangleNode inside1(&quad, 1, 0.3f, 0.3f);
    EXPECT_EQ(v0.getSharedEdge(&v1), edge(0, 1));
    EXPECT_EQ(v1.getSharedEdge(&v3), -1) << "1 and 3 are opposite corners";
    EXPECT_EQ(v1.getSharedElement(&v3), -1);
    EXPECT_EQ(v0.getSharedEdge(&diagonal), edge(0, 2));
    EXPECT_EQ(v1.getSharedElement(&diagonal), 0);
    EXPECT_EQ(v3.getSharedElement(&diagonal), 1);
    EXPECT_EQ(inside1.getSharedElement(&diagonal), 1);
    EXPECT_EQ(inside1.getSharedEdge(&diagonal), -1) << "a triangle node lies on no edge";
    EXPECT_EQ(inside1.getSharedElement(&v1), -1);
}

TEST_F(Nodes, SameSurfacePointAcrossKinds) {
    SurfaceVertexNode v1(&quad, 1);
    const int e01 = edge(0, 1);
    EXPECT_TRUE(SurfaceEdgeNode(&quad, e01, 1).isSameSurfacePoint(&v1));
    EXPECT_TRUE(SurfaceTriangleNode(&quad, 0, 1, 0).isSameSurfacePoint(&v1));
    EXPECT_FALSE(SurfaceEdgeNode(&quad, e01, 0.99f).isSameSurfacePoint(&v1));
    EXPECT_TRUE(SurfaceEdgeNode(&quad, e01, 0.99f).isSameSurfacePoint(&v1, 0.02f));
    EXPECT_FALSE(SurfaceVertexNode(&quad, 3).isSameSurfacePoint(&v1, 1)) << "no common triangle";
}

// Missing vertices and triangles and edge parameters out of range are named in the tests of
// path set files, which validate every node they build.
TEST_F(Nodes, ValidateExplainsWhatIsWrong) {
    McString problem;
    EXPECT_TRUE(SurfaceEdgeNode(&quad, 0, 1).validate(problem));
    EXPECT_FALSE(SurfaceEdgeNode(&quad, -1, 0).validate(problem));
    EXPECT_EQ(problem, "edge -1 does not exist (the surface has 5 edges)");
    EXPECT_FALSE(SurfaceTriangleNode(&quad, 0, 0.7f, 0.7f).validate(problem));
    EXPECT_NE(problem.find("outside the triangle"), std::string::npos);
    EXPECT_FALSE(SurfaceVertexNode(nullptr, 0).validate(problem));
    EXPECT_EQ(problem, "the node has no surface");
}

TEST_F(Nodes, CopiesKeepKindPlaceAndFlagAndMayMoveToAnotherSurface) {
    McHandle<SurfaceNode> node = new SurfaceTriangleNode(&quad, 1, 0.2f, 0.3f);
    node->isControlPoint = 1;
    McHandle<SurfaceNode> copy = node->copy();
    EXPECT_NE(copy.ptr(), node.ptr());
    EXPECT_EQ(copy->refCount(), 1) << "a copy starts without the original's references";
    EXPECT_EQ(copy->isControlPoint, 1);
    EXPECT_TRUE(copy->isOfType(SurfaceTriangleNode::getClassTypeId()));
    EXPECT_EQ(SurfaceTriangleNode::getClassTypeId()->getParent(), SurfaceNode::getClassTypeId());
    expectNear(copy->getPosition(), node->getPosition());
    Surface other = makeQuad();
    McHandle<SurfaceNode> moved = node->copy(&other);
    EXPECT_EQ(moved->getSurface(), &other);
    EXPECT_EQ(moved->getElement(), 1);
}

}  // namespace
