// The surface data object as scripts see it: its query commands and their errors. Counts, the
// bounding box, and saving and loading every format are covered by the surface script test.

#include "HxObjectPool.h"
#include "HxSurface.h"
#include "TestSurfaces.h"
#include "TestTcl.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class HxSurfaceCommands : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        ASSERT_EQ(evalOk("create HxSurface box"), "box");
        box = static_cast<HxSurface*>(HxObjectPool::getTheObjectPool().findObject("box"));
        box->surface = makeCube();
    }
    void TearDown() override { HxObjectPool::getTheObjectPool().removeAll(); }

    HxSurface* box = nullptr;
};

TEST_F(HxSurfaceCommands, QueriesReportTheSurfaceAsItIsNow) {
    EXPECT_EQ(evalOk("box getPoint 6"), "0.0 1.0 1.0");
    EXPECT_EQ(evalOk("box getTriangle 1"), "0 3 1");
    EXPECT_EQ(evalOk("box getLabel"), "box") << "other commands reach the data object's own";
    EXPECT_EQ(evalOk("box getNumEdges"), "18");
    box->surface.triangles.remove(10, 2);  // open the side x = 1
    EXPECT_EQ(evalOk("box getNumEdges"), "17") << "edges follow changed triangles";
}

TEST_F(HxSurfaceCommands, BadArgumentsAreExplained) {
    EXPECT_EQ(evalError("box getPoint 8"), "bad value: point index 8 is out of range: box has 8 points");
    EXPECT_EQ(evalError("box getTriangle -1"), "bad value: triangle index -1 is out of range: box has 12 triangles");
    EXPECT_EQ(evalError("box getPoint one"), "expected integer but got \"one\"");
    EXPECT_EQ(evalError("box getPoint"), "wrong # args: should be \"box getPoint INDEX\"");
    EXPECT_EQ(evalError("box getNumPoints 1"), "wrong # args: should be \"box getNumPoints\"");
    const std::string message = evalError("box save /tmp/box.xyz");
    EXPECT_EQ(message.find("cannot save box to \"/tmp/box.xyz\": "), 0u) << message;
    EXPECT_NE(message.find("(.off, .obj, .ply, .stl)"), std::string::npos) << message;
}

}  // namespace
