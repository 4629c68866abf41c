// The surface display in an offscreen viewer: picks name the surface's own triangles, also
// after the surface changed, and the display follows its surface's connection.

#include "HxController.h"
#include "HxDisplaySurface.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxViewer.h"
#include "SoSurfaceMeshShape.h"
#include "TestSurfaces.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/nodes/SoSeparator.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class HxDisplaySurfaceTest : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        surface = new HxSurface;
        surface->surface = makeStrip(12);
        surface->HxBase::setLabel("strip");
        pool().addObject(surface);
        display = surface->getDisplaySurface(true);
        viewer = HxController::getTheController()->viewer(0, 1);
        McString error;
        ASSERT_TRUE(viewer->setSize(400, 100, error));
        viewer->viewAll();
    }
    void TearDown() override { pool().removeAll(); }
    static HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

    // What lies at the screen position of triangle t's centre.
    SoPickedPoint const* pickAtCentreOf(int t) {
        McVec3f centre;
        for (int corner : surface->surface.triangles[t].points) centre += surface->surface.points[corner] / 3.0f;
        float sx, sy;
        return viewer->project(centre, sx, sy) ? viewer->pick(sx, sy) : nullptr;
    }
    // The triangle of a pick on the display, -1 for anything else.
    int triangleOf(SoPickedPoint const* picked) const {
        if (!picked || !picked->getPath()->containsNode(display->getSceneNode())) return -1;
        EXPECT_NEAR(picked->getPoint()[2], 0.0f, 1e-5f) << "the picked point lies on the surface";
        auto const* face = dynamic_cast<SoFaceDetail const*>(picked->getDetail());
        return face ? face->getFaceIndex() : -1;
    }

    HxSurface* surface = nullptr;
    HxDisplaySurface* display = nullptr;
    HxViewer* viewer = nullptr;
};

TEST_F(HxDisplaySurfaceTest, PicksNameTheTriangleUnderThePoint) {
    EXPECT_EQ(std::string(display->getLabel()), "strip-display");
    EXPECT_EQ(surface->getDisplaySurface(true), display) << "showing again finds the display";
    for (int t = 0; t < surface->surface.getNumTriangles(); ++t) EXPECT_EQ(triangleOf(pickAtCentreOf(t)), t);

    Tcl_Interp* interp = HxInterpreter::getTheInterpreter().getTclInterp();
    Tcl_Obj* words = Tcl_NewListObj(0, nullptr);
    Tcl_IncrRefCount(words);
    display->describePick(*pickAtCentreOf(5), interp, words);
    EXPECT_EQ(std::string(Tcl_GetString(words)), "triangle 5");
    Tcl_DecrRefCount(words);
}

// Actions other than rendering and picking see every triangle with its own index.
void collectTriangle(void* data, SoCallbackAction*, SoPrimitiveVertex const* v0, SoPrimitiveVertex const*,
                     SoPrimitiveVertex const*) {
    static_cast<std::vector<int>*>(data)->push_back(static_cast<SoFaceDetail const*>(v0->getDetail())->getFaceIndex());
}

TEST_F(HxDisplaySurfaceTest, CallbackActionsSeeEveryTriangle) {
    std::vector<int> faces;
    SoCallbackAction action;
    action.addTriangleCallback(SoSurfaceMeshShape::getClassTypeId(), collectTriangle, &faces);
    action.apply(display->getSceneNode());
    ASSERT_EQ(faces.size(), 12u);
    for (int t = 0; t < 12; ++t) EXPECT_EQ(faces[size_t(t)], t);
}

TEST_F(HxDisplaySurfaceTest, FollowsItsSurface) {
    surface->surface = makeStrip(20);
    surface->touch();
    surface->fire();
    EXPECT_EQ(display->getShape()->getNumTriangles(), 20);
    viewer->viewAll();
    EXPECT_EQ(triangleOf(pickAtCentreOf(17)), 17) << "picks see the changed surface";

    SoSeparator* geometry = HxController::getTheController()->getGeometryRoot();
    pool().removeObject(surface);
    EXPECT_LT(geometry->findChild(display->getSceneNode()), 0) << "without a surface nothing is shown";
    EXPECT_EQ(display->getShape()->getNumTriangles(), 0);
    EXPECT_EQ(viewer->pick(200, 50), nullptr);
}

}  // namespace
