// The surface data object as scripts see it: its query commands and their errors. Counts, the
// bounding box, and saving and loading every format are covered by the surface script test.

#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class HxSurfaceCommands : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        ASSERT_EQ(eval("create HxSurface box"), "box");
        auto* object = HxObjectPool::getTheObjectPool().findObject("box");
        ASSERT_NE(object, nullptr);
        ASSERT_TRUE(object->isOfType(HxSurface::getClassTypeId()));
        box = static_cast<HxSurface*>(object);
        box->surface = makeCube();
    }
    void TearDown() override { HxObjectPool::getTheObjectPool().removeAll(); }

    std::string eval(char const* command) {
        std::string result = interp().eval("%s", command);
        lastFailed = interp().lastCode() != TCL_OK;
        return result;
    }
    static HxInterpreter& interp() { return HxInterpreter::getTheInterpreter(); }

    HxSurface* box = nullptr;
    bool lastFailed = false;
};

TEST_F(HxSurfaceCommands, QueriesReportTheSurfaceAsItIsNow) {
    EXPECT_EQ(eval("box getPoint 6"), "0.0 1.0 1.0");
    EXPECT_EQ(eval("box getTriangle 1"), "0 3 1");
    EXPECT_EQ(eval("box getLabel"), "box") << "other commands reach the data object's own";
    EXPECT_EQ(eval("box getNumEdges"), "18");
    box->surface.triangles.remove(10, 2);  // open the side x = 1
    EXPECT_EQ(eval("box getNumEdges"), "17") << "edges follow changed triangles";
}

TEST_F(HxSurfaceCommands, BadArgumentsAreExplained) {
    EXPECT_EQ(eval("box getPoint 8"), "bad value: point index 8 is out of range: box has 8 points");
    EXPECT_TRUE(lastFailed);
    EXPECT_EQ(eval("box getTriangle -1"), "bad value: triangle index -1 is out of range: box has 12 triangles");
    EXPECT_EQ(eval("box getPoint one"), "expected integer but got \"one\"");
    EXPECT_EQ(eval("box getPoint"), "wrong # args: should be \"box getPoint INDEX\"");
    EXPECT_EQ(eval("box getNumPoints 1"), "wrong # args: should be \"box getNumPoints\"");
    const std::string message = eval("box save /tmp/box.xyz");
    EXPECT_TRUE(lastFailed);
    EXPECT_EQ(message.find("cannot save box to \"/tmp/box.xyz\": "), 0u) << message;
    EXPECT_NE(message.find("(.off, .obj, .ply, .stl)"), std::string::npos) << message;
}

}  // namespace
