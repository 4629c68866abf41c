// Path set files: a saved set reads back as the same set, every kind of broken file is
// rejected with a message naming the fault, and the polyline exports.

#include "PathSetExport.h"
#include "PathSetFile.h"
#include "SurfaceEdgeNode.h"
#include "SurfacePathSet.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// Kind, element, control point flag and parameters, the parameters to every bit.
std::string describe(SurfaceNode* node) {
    float u = 0, v = 0;
    node->getParameters(u, v);
    return McString::format("%s %d %d %a %a", node->getTypeName(), node->getElement(), node->isControlPoint, u, v);
}

class PathSetFiles : public testing::Test {
  protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / ("pathsetfile-" + std::to_string(getpid()));
        fs::create_directories(folder / "meshes");
        surfaceFile = (folder / "meshes" / "cube.off").string();
        int v = set.addNode(new SurfaceVertexNode(&cube, 0));
        int e = set.addNode(new SurfaceEdgeNode(&cube, 3, 0.125f));
        int t = set.addNode(new SurfaceTriangleNode(&cube, 5, 0.25f, 1.f / 3));
        set.nodes[v]->isControlPoint = 1;
        set.nodes[t]->isControlPoint = 1;
        set.addPath(McDArray<int>({v, e, t}));
        set.addPath(McDArray<int>({t, v, t}));
        set.addPath(McDArray<int>());
    }
    void TearDown() override { fs::remove_all(folder); }

    std::string path(char const* name) const { return (folder / name).string(); }
    static std::string readText(std::string const& file) {
        std::stringstream text;
        text << std::ifstream(file).rdbuf();
        return text.str();
    }
    // Parses a document with the given nodes and paths (JSON text).
    bool parse(std::string const& nodes, std::string const& paths, McString& error) {
        file = PathSetFile();
        return file.parse("{\"format\": \"surfpath path set\", \"version\": 1, \"surface\": \"cube.off\", \"nodes\": " +
                              nodes + ", \"paths\": " + paths + "}",
                          folder.string(), error);
    }

    Surface cube = makeCube();
    SurfacePathSet set{&cube};
    PathSetFile file;
    fs::path folder;
    std::string surfaceFile;
};

TEST_F(PathSetFiles, RoundTripKeepsNodesPathsAndFlags) {
    McString error;
    ASSERT_TRUE(PathSetFile::write(set, surfaceFile.c_str(), path("set.json").c_str(), error)) << error;
    EXPECT_NE(readText(path("set.json")).find("\"surface\": \"meshes/cube.off\""), std::string::npos)
        << "the surface is named relative to the file";
    ASSERT_TRUE(file.read(path("set.json").c_str(), error)) << error;
    EXPECT_EQ(file.surfaceFile, surfaceFile);
    Surface other = makeCube();
    SurfacePathSet loaded;
    ASSERT_TRUE(file.build(&other, loaded, error)) << error;
    ASSERT_EQ(loaded.getNumNodes(), set.getNumNodes());
    for (int i = 0; i < set.getNumNodes(); ++i) EXPECT_EQ(describe(loaded.getNode(i)), describe(set.getNode(i)));
    ASSERT_EQ(loaded.getNumPaths(), 3);
    for (int p = 0; p < 3; ++p) EXPECT_EQ(loaded.paths[p].nodeIndices, set.paths[p].nodeIndices);
}

TEST_F(PathSetFiles, SavingReplacesTheFileWhole) {
    McString error;
    std::ofstream(path("set.json")) << "old content";
    ASSERT_TRUE(PathSetFile::write(set, surfaceFile.c_str(), path("set.json").c_str(), error));
    int files = 0;
    for (auto const& entry : fs::directory_iterator(folder)) files += entry.is_regular_file();
    EXPECT_EQ(files, 1) << "no temporary file is left behind";
    EXPECT_FALSE(PathSetFile::write(set, surfaceFile.c_str(), path("missing/set.json").c_str(), error));
    EXPECT_NE(error.find("cannot create a file next to"), std::string::npos) << error;
    // Found by fuzzing: names that JSON cannot hold ended the program.
    EXPECT_FALSE(PathSetFile::write(set, "bad\xff.off", path("set.json").c_str(), error));
    EXPECT_NE(error.find("not valid UTF-8"), std::string::npos) << error;
    EXPECT_FALSE(PathSetFile::write(set, surfaceFile.c_str(), "", error));
    set.paths[0].nodeIndices[0] = 17;
    EXPECT_FALSE(PathSetFile::write(set, surfaceFile.c_str(), path("set.json").c_str(), error));
    EXPECT_EQ(error, "the path set is broken: path 0: entry 0 names node 17, but the set has 3 nodes");
    EXPECT_NE(readText(path("set.json")).find("\"nodes\""), std::string::npos) << "the old file is kept";
}

TEST_F(PathSetFiles, BrokenDocumentsAreRejectedWithTheReason) {
    McString error;
    EXPECT_FALSE(file.parse("{\"format\": ", folder.string(), error));
    EXPECT_EQ(error.find("not a valid JSON file: parse error at line 1"), 0u) << error;
    EXPECT_FALSE(file.parse("{\"format\": \"something else\"}", folder.string(), error));
    EXPECT_EQ(error, "not a path set file (it needs \"format\": \"surfpath path set\")");
    EXPECT_FALSE(file.parse("{\"format\": \"surfpath path set\", \"version\": 2}", folder.string(), error));
    EXPECT_EQ(error, "version 2 of the format cannot be read (this program reads version 1 to 1)");
    // Regression: an unsigned version beyond int64_t read as -1.
    EXPECT_FALSE(file.parse("{\"format\": \"surfpath path set\", \"version\": 18446744073709551615}", folder.string(),
                            error));
    EXPECT_EQ(error.find("version 18446744073709551615 of the format cannot be read"), 0u) << error;
    EXPECT_FALSE(file.parse("{\"format\": \"surfpath path set\", \"version\": 1, \"nodes\": {}}", folder.string(), error));
    EXPECT_EQ(error, "\"surface\" must name the surface file\n\"nodes\" must be a list of nodes\n"
                     "\"paths\" must be a list of paths");
    EXPECT_FALSE(file.read(path("absent.json").c_str(), error));
    EXPECT_EQ(error, "cannot open the file");
}

TEST_F(PathSetFiles, EveryBadNodeAndEntryIsNamed) {
    McString error;
    EXPECT_FALSE(parse(R"([{"kind": "Corner", "element": 0}, {"kind": "Edge", "element": -3},
                           {"kind": "Edge", "element": 1}, {"kind": "Triangle", "element": 1, "u": "x", "v": 0},
                           {"kind": "Vertex", "element": 2, "controlPoint": 1}, 7,
                           {"kind": "Edge", "element": 1, "t": 1e300}])",
                       "[[0, 9], [1.5], 3]", error));
    EXPECT_EQ(error,
              "node 0: unknown kind \"Corner\" (known kinds: Vertex, Edge, Triangle)\n"
              "node 1: \"element\" must be a non-negative integer\n"
              "node 2: the parameter \"t\" is missing\n"
              "node 3: the parameter \"u\" must be a number\n"
              "node 4: \"controlPoint\" must be true or false\n"
              "node 5 is not an object\n"
              "node 6: the parameter \"t\" is out of range (1e+300)\n"
              "path 0, entry 1: node 9 does not exist (the file has 7 nodes)\n"
              "path 1, entry 0: a node index must be a non-negative integer\n"
              "path 2 is not a list of node indices");
}

TEST_F(PathSetFiles, NodesAreCheckedAgainstTheSurface) {
    McString error;
    ASSERT_TRUE(parse(R"([{"kind": "Vertex", "element": 8}, {"kind": "Edge", "element": 2, "t": 2},
                          {"kind": "Triangle", "element": 12, "u": 0, "v": 0}, {"kind": "Vertex", "element": 7}])",
                      "[[0, 3]]", error))
        << error;
    SurfacePathSet target;
    EXPECT_FALSE(file.build(&cube, target, error));
    EXPECT_EQ(error,
              "node 0: vertex 8 does not exist (the surface has 8 vertices)\n"
              "node 1: the parameter 2 along edge 2 lies outside [0,1]\n"
              "node 2: triangle 12 does not exist (the surface has 12 triangles)");
    EXPECT_EQ(target.getNumNodes(), 0) << "a failed build leaves the set alone";
}

TEST_F(PathSetFiles, ManyProblemsAreCountedNotListed) {
    std::string nodes = "[";
    for (int i = 0; i < 25; ++i) nodes += std::string(i ? "," : "") + "{\"kind\": \"Vertex\"}";
    McString error;
    EXPECT_FALSE(parse(nodes + "]", "[]", error));
    EXPECT_NE(error.find("\n... and 5 more problems"), std::string::npos) << error;
}

TEST_F(PathSetFiles, ExportsDrawEveryPathOfTwoOrMoreNodes) {
    const std::string obj = PathSetExport::toObj(set);
    EXPECT_NE(obj.find("\nv 0 0 0\n"), std::string::npos);
    EXPECT_NE(obj.find("\nl 1 2 3\nl 3 1 3\n"), std::string::npos) << obj;
    const std::string vtk = PathSetExport::toVtk(set);
    EXPECT_NE(vtk.find("POINTS 3 float\n0 0 0\n"), std::string::npos) << vtk;
    EXPECT_NE(vtk.find("LINES 2 8\n3 0 1 2\n3 2 0 2\n"), std::string::npos) << vtk;
    McString error;
    EXPECT_TRUE(PathSetExport::write(set, path("lines.VTK").c_str(), error)) << error;
    EXPECT_EQ(readText(path("lines.VTK")), vtk);
}

}  // namespace
