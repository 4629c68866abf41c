#include "SurfacePathPatchifier.h"

#include "HxMessage.h"
#include "Surface.h"
#include "SurfacePathSet.h"

SurfacePathPatchifier::SurfacePathPatchifier(SurfacePathSet* pathSet, Surface* surface)
    : mSet(pathSet), mSurface(surface) {}

bool SurfacePathPatchifier::compute(bool keepExistingBorders) {
    if (!mSet || !mSurface) {
        HxMessage::getTheMsg()->printf("Patchify: there is no %s", mSet ? "surface" : "path set");
        return false;
    }
    mSurface->createAllEdges(0);
    McDArray<char> onPath(mSurface->getNumEdges());
    if (!findPathEdges(onPath)) return false;
    const McDArray<int> patches = floodFill(onPath, keepExistingBorders);
    for (int t = 0; t < mSurface->getNumTriangles(); ++t) mSurface->triangles[t].patch = patches[t];
    return true;
}

bool SurfacePathPatchifier::findPathEdges(McDArray<char>& onPath) const {
    for (int p = 0; p < mSet->getNumPaths(); ++p) {
        McDArray<int> const& indices = mSet->paths[p].nodeIndices;
        int previous = -1;
        for (int64_t i = 0; i < indices.size(); ++i) {
            SurfaceNode* node = mSet->getNode(indices[i]);
            if (!node || node->getSurface() != mSurface || node->getKind() != SurfaceNode::VERTEX) {
                HxMessage::getTheMsg()->printf(
                    "Patchify: path %d does not run along mesh edges (its node at position %ld is no vertex of the "
                    "surface); snap it to the vertices first",
                    p, long(i));
                return false;
            }
            const int vertex = node->getElement();
            if (previous >= 0 && previous != vertex) {
                const int edge = mSurface->findEdge(previous, vertex);
                if (edge < 0) {
                    HxMessage::getTheMsg()->printf(
                        "Patchify: path %d does not run along mesh edges (no edge joins vertices %d and %d)", p,
                        previous, vertex);
                    return false;
                }
                onPath[edge] = 1;
            }
            previous = vertex;
        }
    }
    return true;
}

McDArray<int> SurfacePathPatchifier::floodFill(McDArray<char> const& onPath, bool keepExistingBorders) const {
    McDArray<int> patch(mSurface->getNumTriangles());
    patch.fill(-1);
    McDArray<int> stack;
    int numPatches = 0;
    for (int seed = 0; seed < mSurface->getNumTriangles(); ++seed) {
        if (patch[seed] >= 0) continue;
        patch[seed] = numPatches;
        stack.append(seed);
        while (!stack.empty()) {
            const int t = stack.last();
            stack.remove(stack.size() - 1);
            for (int e : mSurface->triangles[t].edges) {
                if (e < 0 || onPath[e]) continue;
                for (int i = 0; i < mSurface->getNumTrianglesOfEdge(e); ++i) {
                    const int u = mSurface->getTrianglesOfEdge(e)[i];
                    if (patch[u] >= 0) continue;
                    if (keepExistingBorders && mSurface->triangles[u].patch != mSurface->triangles[t].patch) continue;
                    patch[u] = numPatches;
                    stack.append(u);
                }
            }
        }
        ++numPatches;
    }
    return patch;
}
