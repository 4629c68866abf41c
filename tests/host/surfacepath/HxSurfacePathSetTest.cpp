// The path set data object as scripts see it: queries, adding and connecting paths, saving and
// loading, and how it follows its surface connection. A path on a real mesh, its round trip
// through a file and the export command are covered by the path set script test.

#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "TestSurfaces.h"
#include "TestTcl.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class PathSetCommands : public testing::Test {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        folder = fs::temp_directory_path() / ("hxpathset-" + std::to_string(getpid()));
        fs::create_directories(folder);
        ASSERT_EQ(evalOk("create HxSurface strip"), "strip");
        static_cast<HxSurface*>(pool().findObject("strip"))->surface = makeStrip(12);
        ASSERT_EQ(evalOk("create HxSurfacePathSet PS"), "PS");
        ps = static_cast<HxSurfacePathSet*>(pool().findObject("PS"));
    }
    void TearDown() override {
        pool().removeAll();
        fs::remove_all(folder);
    }

    std::string file(char const* name) const { return (folder / name).string(); }
    static HxObjectPool& pool() { return HxObjectPool::getTheObjectPool(); }

    fs::path folder;
    HxSurfacePathSet* ps = nullptr;
};

TEST_F(PathSetCommands, AddConnectAndQuery) {
    evalOk("PS surface connect strip");
    EXPECT_EQ(evalOk("PS addPath v:0 v:12"), "0");
    EXPECT_EQ(evalOk("PS connect 0 0 1 Dijkstra"), "7");
    EXPECT_EQ(evalOk("PS getPath 0"), "0 2 3 4 5 6 1") << "new nodes are appended to the table";
    EXPECT_EQ(evalOk("PS getNode 2"), "Vertex 2 0.0 0.0 0 1.0 0.0 0.0");
    EXPECT_EQ(evalOk("PS getLength 0"), "6.0");
    EXPECT_EQ(evalOk("PS addPath e:0:0.5 t:0:0.25:0.25"), "1");
    EXPECT_EQ(evalOk("PS getNode 8"), "Triangle 0 0.25 0.25 1 0.25 0.25 0.0");
    EXPECT_EQ(evalOk("PS addPath v:3 v:3"), "2");
    EXPECT_EQ(evalOk("PS removeDuplicateNodes 0"), "1");
    EXPECT_EQ(evalOk("PS getPath 2"), "9") << "the repeated vertex collapsed";
}

TEST_F(PathSetCommands, MistakesAreExplained) {
    EXPECT_EQ(evalError("PS addPath v:0"), "PS has no surface: connect one with \"PS surface connect SURFACE\"");
    evalOk("PS surface connect strip");
    evalOk("PS addPath v:0 v:1");
    EXPECT_EQ(evalError("PS getPath 3"), "bad value: path index 3 is out of range: PS has 1 paths");
    EXPECT_EQ(evalError("PS getNode -1"), "bad value: node index -1 is out of range: PS has 2 nodes");
    EXPECT_EQ(evalError("PS addPath v:0 w:1"), "bad value: bad node word \"w:1\" (expected v:POINT, e:EDGE:T or t:TRIANGLE:U:V)");
    EXPECT_EQ(evalError("PS addPath v:99"), "bad value: bad node word \"v:99\": vertex 99 does not exist (the surface has 14 vertices)");
    EXPECT_EQ(evalOk("PS getNumPaths"), "1") << "a failed addPath adds nothing";
    EXPECT_EQ(evalError("PS connect 0 1 0 Dijkstra"), "bad value: connect: position FROM (1) must lie before TO (0)");
    EXPECT_EQ(evalError("PS connect 0 0 1 Teleport"), "bad value: connect: there is no path connector named \"Teleport\"");
    EXPECT_EQ(evalOk("PS addPath v:0 t:0:0.2:0.2"), "1");
    EXPECT_EQ(evalError("PS connect 1 0 1 Dijkstra"),
              "connect: the Dijkstra connector joins vertex nodes only, and the end node is a triangle node "
              "(connecting positions 0 and 1 of path 1)");
    EXPECT_EQ(evalError("PS export lines.ply"), "cannot export PS to \"lines.ply\": unknown export format \"ply\" (known formats: .obj, .vtk)");
}

TEST_F(PathSetCommands, SavingNeedsASurfaceFileAndLoadingLoadsItWhenNoObjectHoldsIt) {
    evalOk("PS surface connect strip");
    EXPECT_EQ(evalError("PS save " + file("early.json")),
              "cannot save PS to \"" + file("early.json") +
                  "\": its surface strip was never loaded from or saved to a file; save the surface first");
    evalOk("strip save " + file("strip.off"));
    evalOk("PS addPath v:0 v:13");
    evalOk("PS connect 0 0 1 Dijkstra");
    evalOk("PS save " + file("paths.json"));
    evalOk("remove PS strip");
    EXPECT_EQ(evalOk("load " + file("paths.json")), "paths.json");
    EXPECT_EQ(evalOk("all HxSurface"), "strip.off") << "a surface no object holds is loaded";
    EXPECT_EQ(evalOk("paths.json getNumNodes"), "8");
}

// Broken documents and nodes are refused by the file reader's own tests.
TEST_F(PathSetCommands, AFileWhoseSurfaceCannotBeLoadedChangesNothing) {
    std::ofstream(file("lost.json")) << R"({"format": "surfpath path set", "version": 1, "surface": "gone.off",
        "nodes": [], "paths": []})";
    EXPECT_NE(evalError("load " + file("lost.json")).find("its surface file \"" + file("gone.off") + "\" cannot be loaded"),
              std::string::npos);
    EXPECT_EQ(evalOk("all"), "strip PS");
}

TEST_F(PathSetCommands, PathsFollowTheSurfaceConnection) {
    evalOk("PS surface connect strip");
    evalOk("PS addPath v:0 v:13");
    evalOk("create HxSurface wide");
    static_cast<HxSurface*>(pool().findObject("wide"))->surface = makeStrip(16);
    evalOk("PS surface connect wide");
    EXPECT_EQ(evalOk("PS getNumPaths"), "1") << "the nodes fit the larger strip";
    EXPECT_EQ(ps->pathSet.getNode(0)->getSurface(), &static_cast<HxSurface*>(pool().findObject("wide"))->surface);
    evalOk("create HxSurface small");
    static_cast<HxSurface*>(pool().findObject("small"))->surface = makeQuad();
    HxMessage::getTheMsg()->startCapture();
    evalOk("PS surface connect small");
    const McString message = HxMessage::getTheMsg()->stopCapture();
    EXPECT_NE(message.find("PS: its paths do not fit surface small (node 1: vertex 13 does not exist"), std::string::npos)
        << message;
    EXPECT_EQ(evalOk("PS surface source"), "wide") << "a surface the paths do not fit is not taken";
    EXPECT_EQ(evalOk("PS getNumPaths"), "1");
}

// Removing the surface once removed every path lying on it.
TEST_F(PathSetCommands, PathsOutliveTheirSurfaceOnACopyOfIt) {
    evalOk("PS surface connect strip");
    evalOk("PS addPath v:0 v:13");
    const std::string node = evalOk("PS getNode 1");
    HxMessage::getTheMsg()->startCapture();
    evalOk("remove strip");
    EXPECT_NE(HxMessage::getTheMsg()->stopCapture().find("PS: its surface is gone; its paths are kept on a copy of it"),
              std::string::npos);
    EXPECT_EQ(ps->getSurface(), nullptr);
    EXPECT_EQ(evalOk("PS getNode 1"), node) << "the node still knows its place";
    const std::string refusal = evalError("PS save " + file("never.json"));
    EXPECT_NE(refusal.find("its surface was removed"), std::string::npos) << refusal;
    evalOk("create HxSurface again");
    static_cast<HxSurface*>(pool().findObject("again"))->surface = makeStrip(16);
    evalOk("PS surface connect again");
    EXPECT_EQ(ps->pathSet.getNode(1)->getSurface(), &static_cast<HxSurface*>(pool().findObject("again"))->surface);
    EXPECT_EQ(evalOk("PS getNode 1"), node);
}

}  // namespace
