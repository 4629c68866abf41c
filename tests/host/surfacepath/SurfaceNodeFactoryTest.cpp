// Making nodes by element or by point, snapping them to vertices and edges in both measures,
// and comparing them.

#include "Surface.h"
#include "SurfaceNodeFactory.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// "Vertex 2", "Edge 4": the kind of a node and its element. The handle owns a new node.
std::string placeOf(McHandle<SurfaceNode> node) {
    return node ? McString::format("%s %d", node->getTypeName(), node->getElement()) : "no node";
}

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
    int edge(int p, int q) const { return quad.findEdge(p, q); }
    // Handles on both sides, so that neither the given node nor a new one leaks.
    McHandle<SurfaceNode> snap(McHandle<SurfaceNode> node) const { return factory.convertNode(node); }

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
}

TEST_F(Factory, CreateByPointPicksTheNearestElementOfTheKind) {
    EXPECT_EQ(placeOf(factory.createNode(SurfaceNode::VERTEX, 0, McVec3f(0.9f, 0.2f, 0))), "Vertex 1");
    McHandle<SurfaceNode> onEdge = factory.createNode("Edge", 0, McVec3f(0.25f, -0.5f, 0));
    EXPECT_EQ(onEdge->getElement(), edge(0, 1));
    EXPECT_NEAR(onEdge->getPosition().x, 0.25f, 1e-6f);
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
    McHandle<SurfaceNode> snapped = snap(triangleNode(0.004f, 0.004f));
    EXPECT_EQ(placeOf(snapped), "Vertex 0");
    EXPECT_EQ(snapped->isControlPoint, 1) << "the flag survives snapping";
    McHandle<SurfaceNode> nearSide = triangleNode(0.6f, 0.005f);
    snapped = snap(nearSide);
    EXPECT_EQ(placeOf(snapped), "Edge " + std::to_string(edge(0, 1)));
    EXPECT_NEAR(snapped->getPosition().x, nearSide->getPosition().x, 0.01f);
    EXPECT_EQ(snapped->getPosition().y, 0);
    McHandle<SurfaceNode> middle = triangleNode(0.3f, 0.3f);
    EXPECT_EQ(snap(middle).ptr(), middle.ptr()) << "nothing changes: the same node";
    EXPECT_EQ(placeOf(snap(factory.createEdgeNode(edge(1, 2), 0.995f))), "Vertex 2");
}

TEST_F(Factory, WorldSnappingMeasuresInDistance) {
    setSnapping(SurfaceNodeFactory::WORLD, 0.05f);
    McHandle<SurfaceNode> nearSide = triangleNode(0.5f, 0.04f);  // 0.04 above side 0-1
    EXPECT_EQ(placeOf(snap(nearSide)), "Edge " + std::to_string(edge(0, 1)));
    setSnapping(SurfaceNodeFactory::WORLD, 0.03f);
    EXPECT_EQ(snap(nearSide).ptr(), nearSide.ptr());
    EXPECT_EQ(placeOf(snap(factory.createEdgeNode(edge(0, 1), 0.02f))), "Vertex 0");
    McHandle<SurfaceNode> vertex = factory.createVertexNode(3);
    EXPECT_EQ(snap(vertex).ptr(), vertex.ptr());
}

TEST_F(Factory, IsEqualUsesTheCurrentSetting) {
    McHandle<SurfaceNode> a = factory.createEdgeNode(edge(0, 1), 0.5f);
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
