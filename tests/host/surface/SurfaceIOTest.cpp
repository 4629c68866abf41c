// Surface files: round trips in every format, polygons that must be triangulated properly,
// broken files that must be refused with their reason, and defects that load with a warning.
// A real mesh is read by the surface tests and the surface script test.

#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "Surface.h"
#include "SurfaceIO.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <limits>
#include <vector>

namespace {

namespace fs = std::filesystem;

// A fresh folder per test, removed afterwards.
class SurfaceFiles : public testing::Test {
  protected:
    void SetUp() override {
        char pattern[] = "/tmp/surfaceio-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir = pattern;
        HxSurface::registerFileFormats();
    }
    void TearDown() override { fs::remove_all(dir); }

    std::string path(char const* name) const { return (dir / name).string(); }
    std::string writeFile(char const* name, std::string const& content) const {
        std::ofstream(path(name), std::ios::binary) << content;
        return path(name);
    }

    fs::path dir;
};

// Reads a file that must load without a warning.
Surface readCleanly(std::string const& file) {
    Surface s;
    McString error, warnings;
    EXPECT_TRUE(SurfaceIO::read(file.c_str(), s, error, warnings)) << error;
    EXPECT_EQ(warnings, "") << file;
    return s;
}

// Triangles as corner coordinates, each starting at its smallest corner (keeping the
// orientation), sorted: equal for surfaces of the same geometry whatever the point order.
using Corners = std::array<std::array<float, 3>, 3>;
std::vector<Corners> geometryOf(Surface const& s) {
    std::vector<Corners> result;
    for (Surface::Triangle const& t : s.triangles) {
        Corners c;
        for (int i = 0; i < 3; ++i) c[i] = {s.points[t.points[i]].x, s.points[t.points[i]].y, s.points[t.points[i]].z};
        std::rotate(c.begin(), std::min_element(c.begin(), c.end()), c.end());
        result.push_back(c);
    }
    std::sort(result.begin(), result.end());
    return result;
}

// A cube moved to coordinates that a printout with too few digits would change.
Surface awkwardCube() {
    Surface cube = makeCube();
    for (McVec3f& p : cube.points) p = p * 0.1234567f + McVec3f(1234.5678f, -0.000123457f, 3.3333333e-5f);
    return cube;
}

float signedAreaInXY(Surface const& s, int t) {
    int const* p = s.triangles[t].points;
    const McVec3f u = s.points[p[1]] - s.points[p[0]], v = s.points[p[2]] - s.points[p[0]];
    return 0.5f * (u.x * v.y - u.y * v.x);
}

class SurfaceRoundTrip : public SurfaceFiles, public testing::WithParamInterface<char const*> {};

TEST_P(SurfaceRoundTrip, WrittenFileReadsBackAsTheSameGeometry) {
    const Surface original = awkwardCube();
    const std::string file = path((std::string("cube.") + GetParam()).c_str());
    McString error;
    ASSERT_TRUE(SurfaceIO::write(original, file.c_str(), error)) << error;
    const Surface read = readCleanly(file);
    EXPECT_EQ(geometryOf(read), geometryOf(original)) << "coordinates and orientation survive exactly";
    EXPECT_EQ(read.getNumEdges(), 18) << "derived tables are built on reading";
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1) << "no temporary file is left";
}

INSTANTIATE_TEST_SUITE_P(SurfaceIO, SurfaceRoundTrip, testing::Values("off", "obj", "ply", "stl", "OFF"));

TEST_F(SurfaceFiles, SavingReplacesAnExistingFileAndFailsCleanlyWhereItCannotWrite) {
    const std::string file = writeFile("old.off", "old contents");
    McString error;
    ASSERT_TRUE(SurfaceIO::write(makeTetrahedron(), file.c_str(), error)) << error;
    EXPECT_EQ(readCleanly(file).getNumTriangles(), 4);

    EXPECT_FALSE(SurfaceIO::write(makeQuad(), path("no/such/folder/quad.off").c_str(), error));
    EXPECT_NE(error.find("cannot create"), std::string::npos) << error;

    Surface broken = makeQuad();
    broken.triangles[1].points[2] = 9;
    EXPECT_FALSE(SurfaceIO::write(broken, path("broken.off").c_str(), error));
    EXPECT_EQ(error, "triangle 1 refers to point 9, which does not exist");
    EXPECT_FALSE(fs::exists(path("broken.off")));
}

// Regression: a fan from the first corner of this L-shaped hexagon would fold over the
// reflex corner, so the polygon needs a real triangulation.
TEST_F(SurfaceFiles, NonConvexPolygonIsTriangulatedInsideItsOutline) {
    const std::string file = writeFile("ell.off",
                                       "OFF\n6 1 0\n"
                                       "2 1 0\n1 1 0\n1 2 0\n0 2 0\n0 0 0\n2 0 0\n"
                                       "6 0 1 2 3 4 5\n");
    const Surface s = readCleanly(file);
    ASSERT_EQ(s.getNumTriangles(), 4);
    float area = 0;
    for (int t = 0; t < 4; ++t) {
        EXPECT_GT(signedAreaInXY(s, t), 0) << "triangle " << t << " keeps the polygon's orientation";
        area += signedAreaInXY(s, t);
    }
    EXPECT_FLOAT_EQ(area, 3);
}

TEST_F(SurfaceFiles, DefectsLoadWithOneWarningThatCountsThem) {
    const std::string file = writeFile("defects.off",
                                       "OFF\n7 7 0\n"
                                       "0 0 0\n1 0 0\n0 1 0\n0 -1 0\n0 0 1\n2 0 0\n1 1 -1\n"
                                       "3 0 1 2\n3 1 0 3\n3 0 1 4\n"  // three triangles on edge 0-1
                                       "3 0 1 5\n"                    // no area: 5 is on the line 0-1
                                       "3 2 2 3\n"                    // repeats a corner
                                       "2 0 6\n"                      // too few corners
                                       "4 0 4 6 6\n");                // repeats a corner
    HxMessage::getTheMsg()->startCapture();
    McString error;
    HxData* data = HxSurface::readFile(file.c_str(), error);
    const McString console = HxMessage::getTheMsg()->stopCapture();
    ASSERT_NE(data, nullptr) << error;
    Surface const& s = static_cast<HxSurface*>(data)->surface;
    EXPECT_EQ(s.getNumTriangles(), 5) << "the fan of 0-4-6-6 keeps its one real triangle";
    EXPECT_NE(console.find("Warning: defects.off: 1 face with fewer than three corners was skipped; "
                           "1 face that repeats a corner or could not be triangulated was split as a fan; "
                           "2 triangles that repeat a corner were removed; 1 triangle has no area; "
                           "1 edge is shared by more than two triangles; 2 points join separate sheets of triangles\n"),
              std::string::npos)
        << console;
    delete data;
}

// Polylines as a path export writes them, and statements of other tools, cost one warning.
TEST_F(SurfaceFiles, ObjPolylinesAndUnknownStatementsLoadTheFacesWithOneWarning) {
    const std::string file = writeFile("paths.obj",
                                       "maplib a.tga\nv 0 0 0\nv 1 0 0\nv 0 1 0\nmg 1 0.5\nf 1 2 3\n"
                                       "l 1 2 \\\n 3\nl 3 1\nmg off\n");
    HxMessage::getTheMsg()->startCapture();
    McString error;
    HxData* data = HxSurface::readFile(file.c_str(), error);
    const McString console = HxMessage::getTheMsg()->stopCapture();
    ASSERT_NE(data, nullptr) << error;
    EXPECT_EQ(static_cast<HxSurface*>(data)->surface.getNumTriangles(), 1);
    EXPECT_EQ(console, "Warning: paths.obj: 2 polylines (l) were ignored; 3 unknown statements were skipped (maplib, mg)\n");
    delete data;
}

// Appends a number in the given byte order.
template <class T>
void append(std::string& bytes, T value, bool bigEndian) {
    char raw[sizeof(T)];
    memcpy(raw, &value, sizeof(T));
    if (bigEndian) std::reverse(raw, raw + sizeof(T));  // the tests run on little-endian machines
    bytes.append(raw, sizeof(T));
}

std::string binaryOffTriangle() {
    std::string bytes = "OFF BINARY\n";
    for (int32_t count : {3, 1, 0}) append(bytes, count, true);
    for (float c : {0.f, 0.f, 0.f, 1.f, 0.f, 0.f, 0.f, 1.f, 0.f}) append(bytes, c, true);
    for (int32_t word : {3, 0, 1, 2, 0}) append(bytes, word, true);
    return bytes;
}

// Short coordinates and a uint index list, big-endian, then an element of lists to read past.
std::string bigEndianPlyTriangle() {
    std::string bytes =
        "ply\nformat binary_big_endian 1.0\nelement vertex 3\nproperty short x\nproperty short y\nproperty short z\n"
        "element face 1\nproperty list uchar uint vertex_indices\nelement tag 1\nproperty list int double values\n"
        "end_header\n";
    for (int16_t c : {0, 0, 0, 1, 0, 0, 0, 1, 0}) append(bytes, c, true);
    append(bytes, uint8_t(3), true);
    for (uint32_t index : {0u, 1u, 2u}) append(bytes, index, true);
    append(bytes, int32_t(2), true);
    for (double value : {0.5, 0.25}) append(bytes, value, true);
    return bytes;
}

std::string littleEndianPlyTriangle() {
    std::string bytes =
        "ply\r\nformat binary_little_endian 1.0\r\ncomment by hand\r\nelement vertex 3\r\nproperty float64 x\r\n"
        "property float64 y\r\nproperty float64 z\r\nproperty uint8 red\r\nelement face 1\r\n"
        "property list int32 int32 vertex_index\r\nend_header\r\n";
    for (int i = 0; i < 3; ++i) {
        for (double c : {i == 1 ? 1.0 : 0.0, i == 2 ? 1.0 : 0.0, 0.0}) append(bytes, c, false);
        append(bytes, uint8_t(200), false);
    }
    for (int32_t word : {3, 0, 1, 2}) append(bytes, word, false);
    return bytes;
}

struct ReadableFile {
    char const* name;
    std::string content;
};

void PrintTo(ReadableFile const& file, std::ostream* out) { *out << file.name; }

class ReadableVariant : public SurfaceFiles, public testing::WithParamInterface<ReadableFile> {};

TEST_P(ReadableVariant, ReadsAsTheUnitTriangle) {
    const Surface s = readCleanly(writeFile(GetParam().name, GetParam().content));
    ASSERT_EQ(s.getNumPoints(), 3);
    ASSERT_EQ(s.getNumTriangles(), 1);
    EXPECT_EQ(s.points[0], McVec3f(0, 0, 0));
    EXPECT_EQ(s.points[1], McVec3f(1, 0, 0));
    EXPECT_EQ(s.points[2], McVec3f(0, 1, 0));
}

INSTANTIATE_TEST_SUITE_P(
    SurfaceIO, ReadableVariant,
    testing::Values(
        ReadableFile{"counts.off", "# made by hand\nOFF 3 1 0\n0 0 0\n\n+1 0 0 # comment\n0 1.0e0 0\n3 0 1 2 255 0 0\n"},
        ReadableFile{"colour.off", "COFF\n3 1 0\n0 0 0 255 0 0 255\n1 0 0 0 255 0 255\n0 1 0 0 0 255 255\n3 0 1 2\n"},
        ReadableFile{"normals.off", "NOFF\n3 1 0\n0 0 0 0 0 1\n1 0 0 0 0 1\n0 1 0 0 0 1\n3 0 1 2\n"},
        ReadableFile{"homogeneous.off", "4OFF\n3 1 0\n0 0 0 2\n2 0 0 2\n0 2 0 2\n3 0 1 2\n"},
        ReadableFile{"dimension.off", "nOFF\n4\n3 1 0\n0 0 0 9\n1 0 0 9\n0 1 0 9\n3 0 1 2\n"},
        ReadableFile{"binary.off", binaryOffTriangle()},
        ReadableFile{"double.ply",
                     "ply\nformat ascii 1.0\nelement vertex 3\nproperty double x\nproperty double y\nproperty double z\n"
                     "property uchar red\nelement face 1\nproperty list uchar int vertex_indices\nproperty int label\n"
                     "element edge 1\nproperty list uchar int ends\nend_header\n"
                     "0 0 0 1\n1.0 0 0 2\n0 1e0 0 3\n3 0 1 2 7\n2 0 1\n"},
        ReadableFile{"bigendian.ply", bigEndianPlyTriangle()},
        ReadableFile{"littleendian.ply", littleEndianPlyTriangle()},
        ReadableFile{"forms.obj", "# exported\nmtllib x.mtl\no tri\ng part\ns 1\nusemtl red\nv 0 0 0\nv 1 0 0 1\n"
                                  "v\t0 1 0 0.5 0.5 0.5\nvt 0 0\nvn 0 0 1\nf 1/1/1\t2//1 3/1\n"},
        ReadableFile{"negative.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf -3 -2 -1\n"},
        ReadableFile{"forward.obj", "f 1 2 3\nv 0 0 0\nv 1 0 0\nv 0 1 0\n"},
        ReadableFile{"continued.obj", "v 0 0 \\\n0\nv 1 0 0\r\nv 0 1 0\nf 1 \\\r\n2 3\n"}),
    [](testing::TestParamInfo<ReadableFile> const& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), '.', '_');
        return name;
    });

std::string truncatedBinaryPly() {
    std::string bytes = littleEndianPlyTriangle();
    return bytes.substr(0, bytes.size() - 1);
}

struct BrokenFile {
    char const* name;
    std::string content;
    char const* reason;  // part of the message
};

void PrintTo(BrokenFile const& file, std::ostream* out) { *out << file.name; }

std::string binaryStlWithNaN() {
    std::string data(80, ' ');
    const uint32_t count = 1;
    data.append(reinterpret_cast<char const*>(&count), 4);
    float values[12] = {0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0};
    values[4] = std::numeric_limits<float>::quiet_NaN();
    data.append(reinterpret_cast<char const*>(values), sizeof values);
    return data + "  ";
}

class BrokenSurfaceFile : public SurfaceFiles, public testing::WithParamInterface<BrokenFile> {};

TEST_P(BrokenSurfaceFile, IsRefusedWithItsReasonAndAddsNothing) {
    BrokenFile const& broken = GetParam();
    const std::string file =
        broken.content == "<missing>" ? path(broken.name) : writeFile(broken.name, broken.content);
    HxObjectPool& pool = HxObjectPool::getTheObjectPool();
    const int64_t objectsBefore = pool.getObjects().size();
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    const McString message = interp.eval("load {%s}", file.c_str());
    EXPECT_EQ(interp.lastCode(), TCL_ERROR);
    EXPECT_EQ(message.find("cannot load \"" + file + "\": "), 0u) << message;
    EXPECT_NE(message.find(broken.reason), std::string::npos) << message;
    EXPECT_TRUE(std::all_of(message.begin(), message.end(), [](unsigned char c) { return c >= 0x20 && c < 0x7f; }))
        << "the file's own bytes are shown escaped: " << message;
    EXPECT_EQ(pool.getObjects().size(), objectsBefore);

    if (SurfaceIO::isSupported(file.c_str()) && fs::exists(file)) {
        Surface target = makeQuad();
        McString error, warnings;
        EXPECT_FALSE(SurfaceIO::read(file.c_str(), target, error, warnings));
        EXPECT_EQ(geometryOf(target), geometryOf(makeQuad())) << "a failed read leaves the surface as it was";
    }
}

INSTANTIATE_TEST_SUITE_P(
    SurfaceIO, BrokenSurfaceFile,
    testing::Values(
        BrokenFile{"garbage.off", "this is not a mesh\n", "the file does not start with an OFF header"},
        BrokenFile{"binaryword.ply", "ply\nformat ascii 1.0\ncomm\x94nt\xff\nend_header\n",
                   "line 3: \"comm\\x94nt\\xff\" is not a header keyword"},
        BrokenFile{"empty.stl", "", "the file is empty"},
        BrokenFile{"index.off", "OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 7\n", "line 6: face 0 uses point index 7, but the file has only 3 points (indices count from 0)"},
        BrokenFile{"index.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 4\n",
                   "line 4: face 0 uses point index 4, but the file has only 3 points"},
        BrokenFile{"zero.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 0 1 2\n", "line 4: face 0 uses point index 0, but indices count from 1"},
        BrokenFile{"back.obj", "v 0 0 0\nv 1 0 0\nf -1 -2 -3\nv 0 1 0\n",
                   "line 3: face 0 uses point index -3, but only 2 points come before it"},
        BrokenFile{"continued.obj", "v 0 0 0\\\n\nv 1 0 0\nv 0 1 0\nf 1 2 \\\n3\nf 1 2 x\n",
                   "line 7: face 1: \"x\" is not a point index"},
        BrokenFile{"shortpoint.obj", "v 0 0\n", "line 1: point 0 has 2 numbers where 3 coordinates are needed"},
        BrokenFile{"polylines.obj", "# surface paths: 2\nv 0 0 0\nv 1 0 0\nv 0 1 0\nl 1 2 3\nl 3 1\n",
                   "the file holds 2 polylines and no faces, so it has no surface to load (path sets are loaded from .json files)"},
        BrokenFile{"nan.obj", "v 0 0 0\nv nan 0 0\nv 0 1 0\nf 1 2 3\n", "point 1 has a coordinate that is not a finite number"},
        BrokenFile{"nan.stl", binaryStlWithNaN(), "point 0 has a coordinate that is not a finite number"},
        BrokenFile{"huge.off", "OFF\n3 1 0\n0 0 0\n1e300 0 0\n0 1 0\n3 0 1 2\n",
                   "point 1 has a coordinate (1e+300) too large for single precision"},
        BrokenFile{"short.ply",
                   "ply\nformat ascii 1.0\nelement vertex 3\nproperty float x\nproperty float y\nproperty float z\n"
                   "element face 1\nproperty list uchar int vertex_indices\nend_header\n0 0 0\n1 0 0\n",
                   "the header declares 3 vertices, but the rest of the file (12 bytes) cannot hold them"},
        BrokenFile{"points.off", "OFF\n3 0 0\n0 0 0\n1 0 0\n0 1 0\n", "the file contains no triangles"},
        BrokenFile{"lines.off", "OFF\n3 2 0\n0 0 0\n1 0 0\n0 1 0\n2 0 1\n3 1 1 2\n",
                   "the file contains no face that forms a triangle"},
        BrokenFile{"missing.off", "<missing>", "no such file"},
        BrokenFile{"shortline.off", "COFF\n3 1 0\n0 0\n1 0 0 255 0 0\n0 1 0 0 0 255\n3 0 1 2\n",
                   "line 3: point 0 has 2 numbers where 3 coordinates are needed"},
        BrokenFile{"shortfile.off", "OFF\n3 2 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n", "the file ends after 1 face of its 2 faces"},
        BrokenFile{"order.ply", "ply\nformat ascii 1.0\nproperty float x\nelement vertex 0\nend_header\n",
                   "line 3: a property comes before any element"},
        BrokenFile{"open.ply", "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\n",
                   "the header has no end_header line"},
        BrokenFile{"type.ply", "ply\nformat ascii 1.0\nelement vertex 1\nproperty float128 x\nend_header\n",
                   "line 4: property \"x\" has the unknown type \"float128\""},
        BrokenFile{"length.ply",
                   "ply\nformat ascii 1.0\nelement vertex 0\nproperty float x\nproperty float y\nproperty float z\n"
                   "element face 0\nproperty list float int vertex_indices\nend_header\n",
                   "the length of list \"vertex_indices\" must have an integer type, not float"},
        BrokenFile{"nolist.ply",
                   "ply\nformat ascii 1.0\nelement vertex 0\nproperty float x\nproperty float y\nproperty float z\n"
                   "element face 1\nproperty int corners\nend_header\n3\n",
                   "the face element has no vertex_indices list"},
        BrokenFile{"truncated.ply", truncatedBinaryPly(), "face 0 lists 3 entries, more than the rest of the file holds"},
        BrokenFile{"mesh.xyz", "0 0 0\n", "unknown file format .xyz"}),
    [](testing::TestParamInfo<BrokenFile> const& info) {
        std::string name = info.param.name;
        std::replace(name.begin(), name.end(), '.', '_');
        return name;
    });

}  // namespace
