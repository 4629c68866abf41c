// Patchifying and importing contours as undoable steps. Patchify keeps the surface in its
// snapshots, not the paths: undo gives the old patches back and leaves the paths alone.
//
// On the cube the loop 0-1-5-7-6-2 runs around its middle.

#include "OperationTestSupport.h"
#include "PathEditImportContours.h"
#include "PathEditPatchify.h"

#include <gtest/gtest.h>

#include <set>

namespace {

class PatchifyOperation : public testing::Test {
  protected:
    std::vector<int> patches() const {
        std::vector<int> result;
        for (Surface::Triangle const& t : cube.surface.triangles) result.push_back(t.patch);
        return result;
    }
    size_t patchCount() const {
        const std::vector<int> all = patches();
        return std::set<int>(all.begin(), all.end()).size();
    }

    EditedPathSet cube{makeCube()};
};

TEST_F(PatchifyOperation, ALoopCutsTheCubeInTwoAndUndoRestoresTheSurfaceOnly) {
    cube.addVertexPath({0, 1, 5, 7, 6, 2, 0});
    const std::vector<int> before = patches();
    McHandle<PathOperation> patchify = new PathEditPatchify(&cube.pathSet);
    ASSERT_TRUE(runProtocol(patchify));
    const std::vector<int> after = patches();
    EXPECT_EQ(patchCount(), 2u);

    cube.pathSet.paths.clear();  // an edit after the patchify, which its undo must not touch
    patchify->undo();
    EXPECT_EQ(patches(), before);
    EXPECT_EQ(cube.pathSet.getNumPaths(), 0);
    patchify->redo();
    EXPECT_EQ(patches(), after);

    McHandle<PathOperation> import = new PathEditImportContours(&cube.pathSet, &cube.selection, &cube.surface);
    expectUndoRedoRestores(cube, import);
    ASSERT_EQ(cube.pathSet.getNumPaths(), 1);
    EXPECT_TRUE(cube.pathSet.isPathClosed(0));
    const Vertices loop = verticesOf(cube.pathSet, 0);
    EXPECT_EQ(std::set<int>(loop.begin(), loop.end()), std::set<int>({0, 1, 5, 7, 6, 2}));
}

// Which paths make patchifying fail is the patchifier's own test.
TEST_F(PatchifyOperation, WithoutASurfaceImportingIsAnEmptyStepAndPatchifyingFails) {
    const PathSetState before = captureState(cube);
    EXPECT_TRUE(runProtocol(new PathEditImportContours(&cube.pathSet, &cube.selection, nullptr)));
    EXPECT_EQ(captureState(cube), before);
    EXPECT_FALSE(runProtocol(new PathEditPatchify(nullptr)));
}

}  // namespace
