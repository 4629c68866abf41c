// Files that once crashed, hung or exhausted the loaders (tests/data/bad-inputs, README there):
// each is refused through `load` with one line naming the file and the fault, adds nothing and
// stays small, or, where it is a valid file after all, loads with its real geometry.

#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "Surface.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

struct BadInput {
    char const* name;
    char const* reason;  // part of the message; null for a file that loads
};

void PrintTo(BadInput const& input, std::ostream* out) { *out << input.name; }

const fs::path kFolder = fs::path(__FILE__).parent_path() / "../../data/bad-inputs";

long peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

class BadInputFile : public testing::TestWithParam<BadInput> {
  protected:
    void SetUp() override {
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
    }
};

TEST_P(BadInputFile, IsRefusedInOneLineOrLoadsAsTheValidFileItIs) {
    const std::string file = (kFolder / GetParam().name).lexically_normal().string();
    ASSERT_TRUE(fs::exists(file)) << file;
    HxObjectPool& pool = HxObjectPool::getTheObjectPool();
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    const int64_t objectsBefore = pool.getObjects().size();
    const long megabytesBefore = peakMegabytes();
    const McString result = interp.eval("load {%s}", file.c_str());
    EXPECT_LT(peakMegabytes() - megabytesBefore, 50) << "no count in a small file may reserve much memory";

    if (!GetParam().reason) {
        ASSERT_EQ(interp.lastCode(), TCL_OK) << result;
        Surface const& s = static_cast<HxSurface*>(pool.findObject(result.c_str()))->surface;
        EXPECT_EQ(s.getNumPoints(), 3);
        ASSERT_EQ(s.getNumTriangles(), 1);
        EXPECT_EQ(s.points[1], McVec3f(1, 0, 0));
        interp.eval("remove {%s}", result.c_str());
        return;
    }
    EXPECT_EQ(interp.lastCode(), TCL_ERROR);
    EXPECT_EQ(result.find("cannot load \"" + file + "\": "), 0u) << result;
    EXPECT_NE(result.find(GetParam().reason), std::string::npos) << result;
    EXPECT_EQ(result.find('\n'), std::string::npos) << result;
    EXPECT_EQ(result.find("18446744073709551615"), std::string::npos) << result;
    EXPECT_EQ(pool.getObjects().size(), objectsBefore) << "a failed load leaves nothing behind";
}

INSTANTIATE_TEST_SUITE_P(
    Loaders, BadInputFile,
    testing::Values(
        BadInput{"off-binary-header-overflow-ub.off", "\"BINARY\" belongs on the first line"},
        BadInput{"off-coff-short-vertex-heap-overflow.off", "the rest of the file (7 bytes) cannot hold them"},
        BadInput{"off-face-corner-count-4GB.off", "line 6: face 0 declares 500000000 corners, but its line lists 3"},
        BadInput{"off-face-corner-count-8GB.off", "line 6: face 0 declares 999999999 corners, but its line lists 3"},
        BadInput{"off-face-count-10GB.off", "429967295 faces, but the rest of the file (2 bytes) cannot hold them"},
        BadInput{"off-index-beyond-64-bits.off", "face 0 uses point index 100000000000000000000, but the file has only 3"},
        BadInput{"off-index-minus-one.off", "line 6: face 0 uses point index -1, but the file has only 3 points"},
        BadInput{"off-stoff-texture-uninitialised.off", nullptr},
        BadInput{"off-ub-negative-face-index.off", "line 6: face 0 uses point index -1"},
        BadInput{"ply-ascii-list-count-4GB.ply", "face 0 lists 1000000000 entries, more than the rest of the file holds"},
        BadInput{"ply-binary-list-count-4GB.ply", "face 0 lists 1000000000 entries, more than the rest of the file holds"},
        BadInput{"ply-binary-truncated-list-uninitialised-size.ply", "line 4: \"prolist\" is not a header keyword"},
        BadInput{"ply-empty-element-hang.ply", "line 3: element \"x\" has a negative count (-1)"},
        BadInput{"ply-fuzzer-timeout-negative-count.ply", "is not a header keyword"},
        BadInput{"ply-int-coordinates-segv.ply", nullptr},
        BadInput{"ply-property-before-element-segv.ply", "line 2: \"t\" is not a header keyword"},
        BadInput{"ply-vertex-count-minus-one-unbounded.ply", "element \"vertex\" has a negative count (-1)"},
        BadInput{"ply-vertex-no-properties-12GB.ply", "the vertex element has no number property \"x\""},
        BadInput{"pathset-cycle-a.json", "pathset-cycle-b.json\", which is not a surface file"},
        BadInput{"pathset-cycle-b.json", "pathset-cycle-a.json\", which is not a surface file"},
        BadInput{"pathset-self-reference.json", "\"surface\" names the path set file itself"}),
    [](testing::TestParamInfo<BadInput> const& info) {
        std::string name = info.param.name;
        for (char& c : name)
            if (!isalnum(static_cast<unsigned char>(c))) c = '_';
        return name;
    });

}  // namespace
