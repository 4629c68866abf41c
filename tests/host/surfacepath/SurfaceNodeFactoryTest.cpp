// Making nodes by element or by point, snapping them to vertices and edges in both measures,
// and comparing them.

#include "Surface.h"
#include "SurfaceNodeFactory.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

namespace {

class Factory : public testing::Test {
  protected:
    // Triangle 0 of the quad is 0 (0,0), 1 (1,0), 2 (1,1); u weighs point 1, v point 2.
    McHandle<SurfaceNode> triangleNode(float u, float v) {
        McHandle<SurfaceNode> node = factory.createTriangleNode(0, u, v);
        node->isControlPoint = 1;
        return node;
    }
    void setSnapping(unsigned char mode, float tolerance) {
        factory.mode = mode;
        factory.tolerance = tolerance;
    }

    Surface quad = makeQuad();
    SurfaceNodeFactory factory{&quad};
};

TEST_F(Factory, CreateByElementRejectsWhatDoesNotFit) {
    EXPECT_EQ(factory.createVertexNode(4), nullptr);
    EXPECT_EQ(factory.createEdgeNode(0, 1.5f), nullptr);
    EXPECT_EQ(factory.createTriangleNode(0, 0.6f, 0.6f), nullptr);
    McHandle<SurfaceNode> node = factory.createEdgeNode(4, 0.5f);
    ASSERT_TRUE(node);
    EXPECT_EQ(node->refCount(), 1) << "the caller's handle is the only reference";
    EXPECT_EQ(node->isControlPoint, 0);
}

TEST_F(Factory, CreateByPointPicksTheNearestElementOfTheKind) {
    McHandle<SurfaceNode> vertex = factory.createNode(SurfaceNode::VERTEX, 0, McVec3f(0.9f, 0.2f, 0));
    EXPECT_EQ(vertex->getKind(), SurfaceNode::VERTEX);
    EXPECT_EQ(vertex->getElement(), 1);
    McHandle<SurfaceNode> edge = factory.createNode("Edge", 0, McVec3f(0.25f, -0.5f, 0));
    EXPECT_EQ(edge->getElement(), quad.findEdge(0, 1));
    EXPECT_NEAR(edge->getPosition().x, 0.25f, 1e-6f);
    // A point above the triangle lands on its projection; one beside it on the nearest point.
    McHandle<SurfaceNode> inside = factory.createNode(SurfaceNode::TRIANGLE, 0, McVec3f(0.7f, 0.2f, 3));
    EXPECT_NEAR((inside->getPosition() - McVec3f(0.7f, 0.2f, 0)).length(), 0, 1e-6f);
    McHandle<SurfaceNode> clamped = factory.createNode("Triangle", 0, McVec3f(2, 0.5f, 0));
    EXPECT_NEAR((clamped->getPosition() - McVec3f(1, 0.5f, 0)).length(), 0, 1e-6f);
    EXPECT_EQ(factory.createNode("Corner", 0, McVec3f()), nullptr);
    EXPECT_EQ(factory.createNode(SurfaceNode::VERTEX, 2, McVec3f()), nullptr);
}

TEST_F(Factory, BarycentricSnappingMeasuresInWeights) {
    setSnapping(SurfaceNodeFactory::BARYCENTRIC, 0.01f);
    McHandle<SurfaceNode> nearCorner = triangleNode(0.004f, 0.004f);
    McHandle<SurfaceNode> snapped = factory.convertNode(nearCorner);
    EXPECT_EQ(snapped->getKind(), SurfaceNode::VERTEX);
    EXPECT_EQ(snapped->getElement(), 0);
    EXPECT_EQ(snapped->isControlPoint, 1) << "the flag survives snapping";

    McHandle<SurfaceNode> nearSide = triangleNode(0.6f, 0.005f);  // close to side 0-1
    snapped = factory.convertNode(nearSide);
    ASSERT_EQ(snapped->getKind(), SurfaceNode::EDGE);
    EXPECT_EQ(snapped->getElement(), quad.findEdge(0, 1));
    EXPECT_NEAR(snapped->getPosition().x, nearSide->getPosition().x, 0.01f);
    EXPECT_EQ(snapped->getPosition().y, 0);

    McHandle<SurfaceNode> middle = triangleNode(0.3f, 0.3f);
    EXPECT_EQ(factory.convertNode(middle), middle.ptr()) << "nothing changes: the same node";

    McHandle<SurfaceNode> edgeEnd = factory.createEdgeNode(quad.findEdge(1, 2), 0.995f);
    snapped = factory.convertNode(edgeEnd);
    EXPECT_EQ(snapped->getKind(), SurfaceNode::VERTEX);
    EXPECT_EQ(snapped->getElement(), 2);
}

TEST_F(Factory, WorldSnappingMeasuresInDistance) {
    setSnapping(SurfaceNodeFactory::WORLD, 0.05f);
    McHandle<SurfaceNode> nearSide = triangleNode(0.5f, 0.04f);  // 0.04 above side 0-1
    McHandle<SurfaceNode> onSide = factory.convertNode(nearSide);
    EXPECT_EQ(onSide->getKind(), SurfaceNode::EDGE);
    setSnapping(SurfaceNodeFactory::WORLD, 0.03f);
    EXPECT_EQ(factory.convertNode(nearSide), nearSide.ptr());
    McHandle<SurfaceNode> nearCorner = factory.createEdgeNode(quad.findEdge(0, 1), 0.02f);
    McHandle<SurfaceNode> snapped = factory.convertNode(nearCorner);
    EXPECT_EQ(snapped->getKind(), SurfaceNode::VERTEX);
    EXPECT_EQ(snapped->getElement(), 0);
    McHandle<SurfaceNode> vertex = factory.createVertexNode(3);
    EXPECT_EQ(factory.convertNode(vertex), vertex.ptr());
}

TEST_F(Factory, IsEqualUsesTheCurrentSetting) {
    McHandle<SurfaceNode> a = factory.createEdgeNode(quad.findEdge(0, 1), 0.5f);
    McHandle<SurfaceNode> b = factory.createTriangleNode(0, 0.5f, 0.00002f);
    setSnapping(SurfaceNodeFactory::BARYCENTRIC, 1e-5f);
    EXPECT_FALSE(factory.isEqual(a, b));
    setSnapping(SurfaceNodeFactory::BARYCENTRIC, 1e-4f);
    EXPECT_TRUE(factory.isEqual(a, b));
    setSnapping(SurfaceNodeFactory::WORLD, 1e-5f);
    EXPECT_FALSE(factory.isEqual(a, b));
    EXPECT_TRUE(factory.isEqual(a, a));
    EXPECT_FALSE(factory.isEqual(a, nullptr));
}

}  // namespace
