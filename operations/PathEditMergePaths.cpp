#include "PathEditMergePaths.h"

#include "NodeEquality.h"
#include "PathEditReversePath.h"

MC_TYPED_IMPL(PathEditMergePaths, SinglePathOperation)

namespace {
// Path ends this close (in barycentric measure) are taken as one point while paths are joined.
constexpr float kMeetTolerance = 1e-05f;
// Joined ends are doubled nodes at the same place; they are merged within this distance.
constexpr float kDuplicateTolerance = 1e-06f;
}  // namespace

PathEditMergePaths::PathEditMergePaths(SurfacePathSet* pathSet_, SelectionInfo* selection_,
                                       McDArray<int> pathIndices_)
    : SinglePathOperation(pathSet_, selection_, nullptr), pathIndices(std::move(pathIndices_)) {}

bool PathEditMergePaths::updatePathset() {
    if (pathIndices.size() < 2) return false;
    SurfaceNodeFactory& factory = pathSet->nodeFactory;
    factory.backupMode = factory.mode;
    factory.backupTolerance = factory.tolerance;
    factory.mode = SurfaceNodeFactory::BARYCENTRIC;
    factory.tolerance = kMeetTolerance;

    for (int64_t i = 0; i < pathIndices.size(); ++i) mergeIntoPathAt(i);

    factory.mode = factory.backupMode;
    factory.tolerance = factory.backupTolerance;
    removeEmptyPaths();
    pathSet->removeDuplicateNodes(kDuplicateTolerance, 1);
    return true;
}

void PathEditMergePaths::mergeIntoPathAt(int64_t i) {
    const int p = pathIndices[i];
    for (int64_t j = i + 1; j < pathIndices.size(); ++j) {
        const int q = pathIndices[j];
        if (pathSet->isPathEmpty(q) || pathSet->isPathEmpty(p)) continue;
        // p has new ends after a join, so its partners are searched again from the start.
        if (joinIfMeeting(p, q)) j = i;
    }
}

// The tests run in this order on the ends as they were before any reversal, so a pair that
// meets in several ways is reversed several times; callers rely on exactly this outcome
// (a path listed twice ends up doubled and then emptied).
bool PathEditMergePaths::joinIfMeeting(int p, int q) {
    SurfaceNode* pFirst = pathSet->getSurfaceNode(p, 0);
    SurfaceNode* pLast = pathSet->getSurfaceNode(p, pathSet->getNumNodesOnPath(p) - 1);
    SurfaceNode* qFirst = pathSet->getSurfaceNode(q, 0);
    SurfaceNode* qLast = pathSet->getSurfaceNode(q, pathSet->getNumNodesOnPath(q) - 1);

    bool reversedP = false;
    if (meet(pFirst, qFirst)) {
        reversePath(p);
        reversedP = true;
    }
    if (meet(pFirst, qLast)) {
        reversePath(p);
        reversePath(q);
    } else if (meet(pLast, qLast)) {
        reversePath(q);
    } else if (!meet(pLast, qFirst) && !reversedP) {
        return false;
    }
    // Read q before emptying it: p and q may be the same path.
    const McDArray<int> appended = pathSet->paths[q].nodeIndices;
    pathSet->paths[p].nodeIndices.appendArray(appended);
    pathSet->paths[q].nodeIndices.clear();
    return true;
}

bool PathEditMergePaths::meet(SurfaceNode* a, SurfaceNode* b) const {
    return NodeEquality::meet(pathSet->nodeFactory, a, b);
}

void PathEditMergePaths::reversePath(int path) {
    PathEditReversePath reversal(pathSet, nullptr, path);
    reversal.exec();
}

// Every empty path of the set goes, listed or not.
void PathEditMergePaths::removeEmptyPaths() {
    for (int path = pathSet->getNumPaths() - 1; path >= 0; --path)
        if (pathSet->isPathEmpty(path)) pathSet->paths.remove(path);
}
