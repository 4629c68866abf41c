// Random sequences of operations with random undo and redo on a real mesh. After every step
// the live state must equal the recorded state of the history position (paths, node table by
// identity, selection), a failed operation must leave nothing behind, and the path set must
// stay consistent. Control-point flags are left out: they live on the nodes, which snapshots
// share, so an operation that flags an existing node (opening a path with new end control
// points) keeps that flag through undo by design. The surface's patches are part of the state
// too, since patchifying changes them, and retriangulating changes their number.

#include "DijkstraConnector.h"
#include "OperationTestSupport.h"
#include "PathEditAddCP.h"
#include "PathEditAddPath.h"
#include "PathEditClosePath.h"
#include "PathEditDeleteAllPaths.h"
#include "PathEditDeleteCP.h"
#include "PathEditDeletePaths.h"
#include "PathEditEntangle.h"
#include "PathEditFixIntersections.h"
#include "PathEditImportContours.h"
#include "PathEditInsertCP.h"
#include "PathEditMergePaths.h"
#include "PathEditMoveCP.h"
#include "PathEditOpenPath.h"
#include "PathEditPatchify.h"
#include "PathEditRetriangulate.h"
#include "PathEditReversePath.h"
#include "PathEditSelection.h"
#include "PathEditSmooth.h"
#include "PathEditSnapNodes.h"
#include "PathEditUntangle.h"
#include "PathEditUndoBuffer.h"
#include "SurfaceIO.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace {

PathSetState structure(PathSetState state) {
    state.controlPoints.clear();
    return state;
}

// The paths without flags, and the patch of every triangle.
struct SessionState {
    PathSetState paths;
    std::vector<int> patches;
    bool operator==(SessionState const& other) const { return paths == other.paths && patches == other.patches; }
};
std::ostream& operator<<(std::ostream& out, SessionState const& state) { return out << state.paths; }

SessionState live(EditedPathSet const& edited) {
    SessionState state{structure(captureState(edited)), {}};
    for (Surface::Triangle const& t : edited.surface.triangles) state.patches.push_back(t.patch);
    return state;
}

constexpr int kDefaultSequences = 2000;
constexpr int kStepsPerSequence = 20;
// Long histories: snapshots share arrays with the live set and with one another, so a write
// that reached a shared block would surface only when an old state is restored much later.
constexpr int kDefaultLongSequences = 10;
constexpr int kStepsPerLongSequence = 400;

int countFromEnv(char const* name, int fallback) {
    char const* env = std::getenv(name);
    return env ? std::atoi(env) : fallback;
}

Surface const& elephant() {
    static Surface surface = [] {
        McString error;
        Surface s;
        McString warnings;
        EXPECT_TRUE(SurfaceIO::read(meshFile("elephant.off").c_str(), s, error, warnings)) << error;
        return s;
    }();
    return surface;
}

// Plays one random sequence against an undo buffer and checks every step.
class RandomSession {
  public:
    RandomSession(unsigned seed)
        : mEdited(elephant()), mRng(seed) {
        followSurface();
        mStates.push_back(live(mEdited));
    }

    void run(int steps) {
        for (int s = 0; s < steps && !testing::Test::HasFailure(); ++s) {
            const PathSetState before = captureState(mEdited);
            const int roll = pick(100);
            if (roll < 15)
                undo();
            else if (roll < 25)
                redo();
            else
                apply();
            check(before);
            followSurface();
        }
    }

  private:
    // The connector keeps its own graph of the surface; a retriangulation, or its undo, changes it.
    void followSurface() {
        if (mEdited.surface.getNumTriangles() == mConnectorTriangles) return;
        mConnector.init(&mEdited.pathSet, nullptr);
        mConnectorTriangles = mEdited.surface.getNumTriangles();
    }
    int pick(int n) { return n <= 0 ? 0 : std::uniform_int_distribution<int>(0, n - 1)(mRng); }
    SurfacePathSet& set() { return mEdited.pathSet; }
    int numPaths() { return set().getNumPaths(); }

    int randomVertex() { return pick(mEdited.surface.getNumPoints()); }
    // A vertex a few edges away from `vertex`, so that connections stay short.
    int nearbyVertex(int vertex) {
        Surface const& s = mEdited.surface;
        for (int step = 0, n = 1 + pick(6); step < n; ++step) {
            const int begin = s.pointTriangleStart[vertex], end = s.pointTriangleStart[vertex + 1];
            if (begin == end) break;
            const int t = s.pointTriangles[begin + pick(end - begin)];
            vertex = s.triangles[t].points[pick(3)];
        }
        return vertex;
    }
    int lastVertexOf(int path) {
        auto const& indices = set().paths[path].nodeIndices;
        SurfaceNode* node = indices.size() ? set().getNode(indices.last()) : nullptr;
        return node && node->getKind() == SurfaceNode::VERTEX ? node->getElement() : randomVertex();
    }
    SurfaceNode* newControlPoint(int vertex) {
        SurfaceNode* node = set().nodeFactory.createVertexNode(vertex);
        node->isControlPoint = 1;
        return node;
    }
    int randomControlPoint(int path) {
        const int n = set().getNumControlPointsOnPath(path);
        return n > 0 ? set().getIndexOfIthCP(pick(n), path) : -1;
    }

    PathOperation* randomOperation() {
        SurfacePathSet* ps = &set();
        SelectionInfo* sel = &mEdited.selection;
        if (numPaths() == 0) return new PathEditAddPath(ps, sel, newControlPoint(randomVertex()));
        const int p = pick(numPaths());
        switch (pick(20)) {
            case 0: return new PathEditAddPath(ps, sel, newControlPoint(randomVertex()));
            case 1:
            case 2: return new PathEditAddCP(ps, p, newControlPoint(nearbyVertex(lastVertexOf(p))), &mConnector);
            case 3: return insertOperation(p);
            case 4: {
                const int cp = randomControlPoint(p);
                if (cp < 0) return new PathEditReversePath(ps, sel, p);
                SurfaceNode* old = set().getNode(cp);
                const int from = old->getKind() == SurfaceNode::VERTEX ? old->getElement() : randomVertex();
                return new PathEditMoveCP(ps, sel, cp, newControlPoint(nearbyVertex(from)), &mConnector);
            }
            case 5: {
                const int cp = randomControlPoint(p);
                if (cp < 0) return new PathEditReversePath(ps, sel, p);
                return new PathEditDeleteCP(ps, sel, cp, &mConnector, pick(2));
            }
            case 6: return new PathEditClosePath(ps, p, &mConnector);
            case 7: {
                const int n = set().getNumNodesOnPath(p);
                return new PathEditOpenPath(ps, sel, p, pick(n), pick(2) == 1);
            }
            case 8: return new PathEditReversePath(ps, sel, p);
            case 9: {
                McDArray<int> paths;
                for (int i = 0; i < numPaths(); ++i)
                    if (pick(3) == 0) paths.append(i);
                if (pick(20) == 0) return new PathEditDeleteAllPaths(ps, sel);
                return new PathEditDeletePaths(ps, sel, paths, pick(2));
            }
            case 10: return selectionOperation();
            case 12: return new PathEditFixIntersections(ps, sel, pick(2) == 1);
            case 13: return new PathEditFixIntersections(ps, sel, somePaths(), false);
            case 14: return new PathEditEntangle(ps, sel, somePaths(), 0.001f);
            case 15: return new PathEditUntangle(ps, sel, somePaths());
            case 16:
                if (pick(2)) return new PathEditImportContours(ps, sel, &mEdited.surface);
                return new PathEditPatchify(ps);
            case 17: {
                auto* snap = new PathEditSnapNodes(ps);
                snap->mode = 1 + pick(2);
                snap->tolerance = snap->mode == SurfaceNodeFactory::WORLD ? 0.01f : 0.2f;
                snap->paths = somePaths();
                return snap;
            }
            case 18: return new PathEditRetriangulate(ps, pick(2) ? "Constrained Delaunay" : "Quality Delaunay", 0.001f, false);
            case 19: {
                auto* smooth = new PathEditSmooth(ps);
                smooth->pathList = somePaths();
                smooth->iterations = 1 + pick(2);
                return smooth;
            }
            default: return new PathEditMergePaths(ps, sel, somePaths());
        }
    }

    // Each path with probability one half; often none, which means all to some operations.
    McDArray<int> somePaths() {
        McDArray<int> paths;
        for (int i = 0; i < numPaths(); ++i)
            if (pick(2) == 0) paths.append(i);
        return paths;
    }

    // A control point on a segment between two vertex nodes, in the middle of their edge.
    PathOperation* insertOperation(int path) {
        const int n = set().getNumNodesOnPath(path);
        if (n < 2) return new PathEditReversePath(&set(), &mEdited.selection, path);
        const int j = pick(n - 1);
        SurfaceNode* a = set().getSurfaceNode(path, j);
        SurfaceNode* b = set().getSurfaceNode(path, j + 1);
        const int edge = a->getSharedEdge(b);
        if (edge < 0) return new PathEditReversePath(&set(), &mEdited.selection, path);
        SurfaceNode* node = set().nodeFactory.createEdgeNode(edge, 0.5f);
        node->isControlPoint = 1;
        return new PathEditInsertCP(&set(), &mEdited.selection, path, j, node);
    }

    PathOperation* selectionOperation() {
        SelectionInfo next(&set());
        for (int i = 0; i < numPaths(); ++i)
            if (pick(3) == 0) next.addToActivePaths(i);
        if (next.isInEditMode() && pick(2)) next.setActiveCP(randomControlPoint(next.getActivePath()));
        return new PathEditSelection(&mEdited.selection, next);
    }

    void apply() {
        McHandle<PathOperation> op = randomOperation();
        mLastStep = op->getTypeId()->getName();
        const SessionState before = live(mEdited);
        if (!runProtocol(op)) {
            ASSERT_EQ(live(mEdited), before) << op->getTypeId()->getName() << " failed and left a change";
            return;
        }
        const SessionState after = live(mEdited);
        op->undo();
        ASSERT_EQ(live(mEdited), before) << "undo of " << op->getTypeId()->getName();
        op->redo();
        ASSERT_EQ(live(mEdited), after) << "redo of " << op->getTypeId()->getName();
        mBuffer.push(op);
        mStates.resize(mBuffer.current + 1);
        mStates.push_back(after);
    }
    void undo() {
        mLastStep = "undo";
        mBuffer.undo();
    }
    void redo() {
        mLastStep = "redo";
        mBuffer.redo();
    }

    void check(PathSetState const& before) {
        ASSERT_EQ(live(mEdited), mStates[mBuffer.current + 1]) << "at history position " << mBuffer.current;
        McString problem;
        int badPath = -1;
        // Structure only: joining paths by their ends, as the merge must, can leave a jump
        // where a one-node path met both ends of another, so segments are not checked here.
        ASSERT_TRUE(set().isConsistent(false, &badPath, problem)) << problem << " (path " << badPath << ") after " << mLastStep << ": " << before << " -> "
                                                         << captureState(mEdited);
    }

    EditedPathSet mEdited;
    std::mt19937 mRng;
    DijkstraConnector mConnector;
    int mConnectorTriangles = 0;
    PathEditUndoBuffer mBuffer;
    std::vector<SessionState> mStates;
    std::string mLastStep;  // state after history entry i is mStates[i + 1]
};

// SURFPATH_PROPERTY_SEED=N replays the one sequence of a reported seed;
// SURFPATH_PROPERTY_TRACE=1 names each seed before it runs (for crashes and hangs).
void runSequences(int count, int steps) {
    const bool trace = std::getenv("SURFPATH_PROPERTY_TRACE") != nullptr;
    char const* only = std::getenv("SURFPATH_PROPERTY_SEED");
    const int first = only ? std::atoi(only) : 1;
    const int last = only ? first : count;
    for (int seed = first; seed <= last && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE(testing::Message() << "sequence seed " << seed);
        if (trace) std::fprintf(stderr, "sequence seed %d\n", seed);
        RandomSession(static_cast<unsigned>(seed)).run(steps);
    }
}

TEST(OperationSequenceProperty, UndoRestoresEveryPreviousStateOnARealMesh) {
    runSequences(countFromEnv("SURFPATH_PROPERTY_SEQUENCES", kDefaultSequences), kStepsPerSequence);
}

TEST(OperationSequenceProperty, UndoRestoresEveryPreviousStateOfALongHistory) {
    runSequences(countFromEnv("SURFPATH_PROPERTY_LONG_SEQUENCES", kDefaultLongSequences),
                 countFromEnv("SURFPATH_PROPERTY_LONG_STEPS", kStepsPerLongSequence));
}

}  // namespace
