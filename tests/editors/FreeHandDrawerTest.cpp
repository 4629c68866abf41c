// Free-hand strokes in the offscreen viewer: motions become thinned samples on the displayed
// surface, the ray pick agrees with the viewer's own projection, the overlay is drawn without
// harm, and a finished stroke becomes node lists, split where the connector finds no way.

#include "FreeHandDrawer.h"
#include "HxController.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "PathConnector.h"
#include "PathConnectorFactory.h"
#include "TestSurfaces.h"

#include <Inventor/events/SoLocation2Event.h>
#include <Inventor/lists/SoPickedPointList.h>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using NodeList = FreeHandDrawer::NodeList;

// Two copies of a strip of three triangles, the second moved by 6 along x: no edge path
// joins them.
Surface makeTwoStrips() {
    Surface s = makeStrip(3);
    const int points = s.getNumPoints(), triangles = s.getNumTriangles();
    for (int i = 0; i < points; ++i) s.points.append(s.points[i] + McVec3f(6, 0, 0));
    for (int t = 0; t < triangles; ++t) {
        int const* p = s.triangles[t].points;
        s.triangles.append(Surface::Triangle(p[0] + points, p[1] + points, p[2] + points));
    }
    s.buildAllTables();
    return s;
}

class FreeHandDrawerTest : public testing::Test {
  protected:
    void TearDown() override {
        if (drawer) drawer->deactivate();
        drawer.reset();
        connector.reset();
        HxObjectPool::getTheObjectPool().removeAll();
    }

    // Shows the surface in a viewer of the given size and makes a drawer for a path set on it.
    void show(Surface const& s, int width, int height) {
        surface = new HxSurface;
        surface->surface = s;
        HxObjectPool::getTheObjectPool().addObject(surface);
        surface->getDisplaySurface(true);
        pathSet = new HxSurfacePathSet;
        HxObjectPool::getTheObjectPool().addObject(pathSet);
        ASSERT_TRUE(pathSet->connectSurface(surface));
        viewer = HxController::getTheController()->viewer(0, 1);
        McString error;
        ASSERT_TRUE(viewer->setSize(width, height, error));
        viewer->setViewing(false);
        viewer->viewAll();
        viewer->redraw();
        connector.reset(PathConnectorFactory::createConnector("Dijkstra", pathSet));
        ASSERT_TRUE(connector);
        drawer = std::make_unique<FreeHandDrawer>(surface, pathSet);
    }

    McVec2i screenOf(McVec3f const& p) const {
        float sx = 0, sy = 0;
        EXPECT_TRUE(viewer->project(p, sx, sy));
        return McVec2i(int(std::lround(sx)), int(std::lround(sy)));
    }
    // A mouse motion to where the world point appears; true if anyone consumed it.
    bool moveTo(McVec3f const& p) {
        McVec2i s = screenOf(p);
        SoLocation2Event motion;
        motion.setPosition(SbVec2s(short(s.x), short(s.y)));
        return viewer->processEvent(&motion);
    }
    SurfaceNode* triangleNode(int triangle, float u, float v) {
        return pathSet->pathSet.nodeFactory.createTriangleNode(triangle, u, v);
    }

    HxSurface* surface = nullptr;
    HxSurfacePathSet* pathSet = nullptr;
    HxViewer* viewer = nullptr;
    std::unique_ptr<PathConnector> connector;
    std::unique_ptr<FreeHandDrawer> drawer;
};

TEST_F(FreeHandDrawerTest, MotionsOverTheSurfaceAddThinnedSamples) {
    show(makeQuad(), 400, 400);
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    const McVec3f start(0.3f, 0.6f, 0);

    EXPECT_FALSE(moveTo(start)) << "motions are never consumed";
    ASSERT_EQ(drawer->samples.size(), 1);
    SurfaceNode* first = drawer->samples[0];
    EXPECT_TRUE(first->getKind() == SurfaceNode::TRIANGLE && !first->isControlPoint);
    EXPECT_LT((first->getPosition() - start).length(), 0.01f);

    // On this surface the threshold is 1.4e-4: compared with the squared distance, a step of
    // about 0.006 is dropped although it is longer than that.
    moveTo(start + McVec3f(0.006f, 0, 0));
    EXPECT_EQ(drawer->samples.size(), 1);
    moveTo(start + McVec3f(0.05f, 0, 0));
    EXPECT_EQ(drawer->samples.size(), 2);

    moveTo(McVec3f(1.15f, 0.5f, 0));
    EXPECT_EQ(drawer->samples.size(), 2) << "a motion off the surface adds nothing";
    viewer->setViewing(true);
    moveTo(McVec3f(0.7f, 0.2f, 0));
    EXPECT_EQ(drawer->samples.size(), 2) << "in viewing mode the camera moves, nothing is sampled";
}

TEST_F(FreeHandDrawerTest, ActivationWithoutConnectorOrTypeSamplesNothing) {
    show(makeQuad(), 400, 400);
    for (int type : {int(SurfaceNode::TRIANGLE), -1}) {
        drawer->activate(type, type < 0 ? connector.get() : nullptr);
        EXPECT_TRUE(drawer->active);
        moveTo(McVec3f(0.3f, 0.6f, 0));
        EXPECT_TRUE(drawer->samples.empty());
        drawer->deactivate();
    }

    // A second activation changes nothing: one deactivation stops the sampling.
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    moveTo(McVec3f(0.3f, 0.6f, 0));
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    EXPECT_EQ(drawer->samples.size(), 1);
    drawer->deactivate();
    moveTo(McVec3f(0.7f, 0.2f, 0));
    EXPECT_EQ(drawer->samples.size(), 1);
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    EXPECT_TRUE(drawer->samples.empty()) << "a new stroke starts without the old samples";
}

// In a window taller than wide the view volume is widened; the pick must follow the viewer.
TEST_F(FreeHandDrawerTest, RayPickHitsTheTriangleUnderTheProjectedPoint) {
    for (auto size : {McVec2i(400, 300), McVec2i(200, 400)}) {
        show(makeQuad(), size.x, size.y);
        viewer->makeCurrent();
        Surface const& s = surface->surface;
        for (int t = 0; t < s.getNumTriangles(); ++t) {
            McVec3f centre;
            for (int corner : s.triangles[t].points) centre += s.points[corner] / 3.0f;
            McVec3f point;
            int triangle = -1;
            SoPickedPointList picks;
            ASSERT_EQ(drawer->rayPick(screenOf(centre), viewer, point, triangle, picks), 1);
            EXPECT_EQ(triangle, t);
            EXPECT_LT((point - centre).length(), 0.02f);
            EXPECT_GE(picks.getLength(), 1);
        }
        McVec3f point;
        int triangle = -1;
        SoPickedPointList picks;
        EXPECT_EQ(drawer->rayPick(screenOf(McVec3f(1.15f, 0.5f, 0)), viewer, point, triangle, picks), 0);
        EXPECT_EQ(drawer->rayPick(screenOf(McVec3f(0.5f, 0.5f, 0)), nullptr, point, triangle, picks), 0);
        TearDown();
    }
}

TEST_F(FreeHandDrawerTest, OverlayDrawnDuringAStrokeShowsWithoutGLErrors) {
    show(makeQuad(), 400, 400);
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    const McVec3f a(0.2f, 0.5f, 0), b(0.8f, 0.5f, 0);
    moveTo(a);
    moveTo(b);
    ASSERT_EQ(drawer->samples.size(), 2);
    ASSERT_TRUE(viewer->makeCurrent());
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));

    // Orange near the middle of the stroke: the line went through the camera's matrices.
    McVec2i mid = screenOf((a + b) * 0.5f);
    int orange = 0;
    for (int y = mid.y - 2; y <= mid.y + 2; ++y) {
        unsigned char const* p = viewer->getImage() + 4 * (y * 400 + mid.x);
        orange += p[0] > 200 && p[1] > 100 && p[1] < 160 && p[2] < 50;
    }
    EXPECT_GT(orange, 0);
}

TEST_F(FreeHandDrawerTest, FewOrCloseSamplesGiveOnePieceAndNoneGiveNone) {
    show(makeQuad(), 400, 400);
    drawer->activate(SurfaceNode::TRIANGLE, connector.get());
    drawer->deactivate();
    McDArray<NodeList> pieces;
    drawer->handleDrag(pieces);
    EXPECT_TRUE(pieces.empty()) << "a click without motion";

    SurfaceNode* only = triangleNode(0, 0.2f, 0.2f);
    drawer->samples.append(only);
    drawer->handleDrag(pieces);
    ASSERT_EQ(pieces.size(), 1);
    ASSERT_EQ(pieces[0].size(), 1);
    EXPECT_EQ(pieces[0][0].ptr(), only);
    EXPECT_TRUE(drawer->samples.empty());

    // Samples that never leave one triangle collapse onto the last of them.
    SurfaceNode* last = triangleNode(0, 0.3f, 0.4f);
    for (SurfaceNode* node : {triangleNode(0, 0.1f, 0.1f), triangleNode(0, 0.2f, 0.3f), last})
        drawer->samples.append(node);
    drawer->handleDrag(pieces);
    ASSERT_EQ(pieces.size(), 1);
    ASSERT_EQ(pieces[0].size(), 1);
    EXPECT_EQ(pieces[0][0].ptr(), last);
}

TEST_F(FreeHandDrawerTest, StrokeIsJoinedByTheConnectorAndSplitWhereItFindsNoWay) {
    show(makeTwoStrips(), 600, 150);
    drawer->activate(SurfaceNode::VERTEX, connector.get());
    drawer->deactivate();
    SurfaceNodeFactory const& factory = pathSet->pathSet.nodeFactory;
    drawer->samples.append(factory.createVertexNode(0));
    drawer->samples.append(factory.createVertexNode(4));
    McDArray<NodeList> pieces;
    drawer->handleDrag(pieces);
    ASSERT_EQ(pieces.size(), 1);
    McDArray<int> vertices;
    for (McHandle<SurfaceNode> const& node : pieces[0]) vertices.append(node->getElement());
    EXPECT_EQ(vertices, McDArray<int>({0, 2, 4})) << "joined by the connector, in stroke order";

    drawer->activate(SurfaceNode::VERTEX, connector.get());
    for (float x = 0.1f; x < 9.0f; x += 0.25f) moveTo(McVec3f(x, 0.3f, 0));
    drawer->deactivate();
    ASSERT_GE(drawer->samples.size(), 2);
    SurfaceNode* lastSample = drawer->samples.last();
    drawer->handleDrag(pieces);
    ASSERT_EQ(pieces.size(), 2);
    for (int piece = 0; piece < 2; ++piece) {
        ASSERT_FALSE(pieces[piece].empty());
        for (McHandle<SurfaceNode> const& node : pieces[piece])
            EXPECT_EQ(node->getPosition().x > 4, piece == 1) << "vertex " << node->getElement();
    }
    EXPECT_EQ(pieces[1].last().ptr(), lastSample);
    EXPECT_TRUE(drawer->samples.empty());
}

}  // namespace
