#include "OperationTestSupport.h"

#include "SurfaceNode.h"

#include <gtest/gtest.h>

#include <algorithm>

EditedPathSet::EditedPathSet(Surface surface_) : surface(std::move(surface_)), pathSet(&surface), selection(&pathSet) {}

int EditedPathSet::addVertexPath(std::vector<int> list, std::vector<int> const& controlPoints) {
    const bool closed = list.size() > 1 && list.front() == list.back();
    if (closed) list.pop_back();
    McDArray<int> indices;
    for (size_t i = 0; i < list.size(); ++i) {
        SurfaceNode* node = pathSet.nodeFactory.createVertexNode(list[i]);
        const bool isEnd = i == 0 || i + 1 == list.size();
        const bool listed = std::find(controlPoints.begin(), controlPoints.end(), list[i]) != controlPoints.end();
        node->isControlPoint = controlPoints.empty() ? isEnd : listed;
        indices.append(pathSet.addNode(node));
    }
    if (closed) indices.append(indices[0]);
    return pathSet.addPath(indices);
}

int EditedPathSet::nodeAt(int path, int position) const { return pathSet.paths[path].nodeIndices[position]; }

void EditedPathSet::select(int path, int position) {
    selection.setSinglePathActive(path);
    selection.setActiveCP(nodeAt(path, position));
}

bool runProtocol(McHandle<PathOperation> const& op) {
    op->initUndo();
    const bool ok = op->exec();
    if (ok)
        op->initRedo();
    else
        op->undo();
    return ok;
}

bool PathSetState::operator==(PathSetState const& o) const {
    return paths == o.paths && nodes == o.nodes && controlPoints == o.controlPoints && activePaths == o.activePaths &&
           activeCP == o.activeCP;
}

PathSetState captureState(EditedPathSet const& edited) {
    PathSetState state;
    for (int p = 0; p < edited.pathSet.getNumPaths(); ++p) state.paths.push_back(pathOf(edited.pathSet, p));
    for (auto const& node : edited.pathSet.nodes) {
        state.nodes.push_back(node.ptr());
        state.controlPoints.push_back(node && node->isControlPoint);
    }
    for (int p : edited.selection.getActivePaths()) state.activePaths.push_back(p);
    state.activeCP = edited.selection.getActiveCP();
    return state;
}

std::ostream& operator<<(std::ostream& out, PathSetState const& state) {
    out << "{paths:";
    for (auto const& path : state.paths) {
        out << " [";
        for (int i : path) out << ' ' << i;
        out << " ]";
    }
    out << " nodes: " << state.nodes.size() << " cps:";
    for (size_t i = 0; i < state.controlPoints.size(); ++i)
        if (state.controlPoints[i]) out << ' ' << i;
    out << " active:";
    for (int p : state.activePaths) out << ' ' << p;
    return out << " cp: " << state.activeCP << '}';
}

std::vector<int> pathOf(SurfacePathSet const& pathSet, int path) {
    auto const& indices = pathSet.paths[path].nodeIndices;
    return std::vector<int>(indices.begin(), indices.end());
}

namespace {
std::vector<int> vertexList(SurfacePathSet const& pathSet, int path, bool controlPointsOnly) {
    std::vector<int> vertices;
    for (int index : pathSet.paths[path].nodeIndices) {
        SurfaceNode const* node = pathSet.getNode(index);
        if (controlPointsOnly && !(node && node->isControlPoint)) continue;
        vertices.push_back(node && node->getKind() == SurfaceNode::VERTEX ? node->getElement() : -1);
    }
    return vertices;
}
}  // namespace

std::vector<int> verticesOf(SurfacePathSet const& pathSet, int path) { return vertexList(pathSet, path, false); }

std::vector<Vertices> verticesOfAllPaths(SurfacePathSet const& pathSet) {
    std::vector<Vertices> result;
    for (int p = 0; p < pathSet.getNumPaths(); ++p) result.push_back(verticesOf(pathSet, p));
    return result;
}

std::vector<int> controlPointVerticesOf(SurfacePathSet const& pathSet, int path) {
    return vertexList(pathSet, path, true);
}

SurfaceNode* makeControlPoint(SurfacePathSet const& pathSet, int vertex) {
    SurfaceNode* node = pathSet.nodeFactory.createVertexNode(vertex);
    if (node) node->isControlPoint = 1;
    return node;
}

::testing::AssertionResult isConsistent(SurfacePathSet const& pathSet) {
    McString problem;
    int badPath = -1;
    if (pathSet.isConsistent(true, &badPath, problem)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << problem.c_str();
}

PathSetState expectUndoRedoRestores(EditedPathSet& edited, McHandle<PathOperation> const& op) {
    const PathSetState before = captureState(edited);
    EXPECT_TRUE(runProtocol(op));
    const PathSetState after = captureState(edited);
    op->undo();
    EXPECT_EQ(captureState(edited), before) << "after undo";
    op->redo();
    EXPECT_EQ(captureState(edited), after) << "after redo";
    return after;
}

::testing::AssertionResult failsWithoutChange(EditedPathSet& edited, McHandle<PathOperation> const& op) {
    const PathSetState before = captureState(edited);
    if (runProtocol(op)) return ::testing::AssertionFailure() << "the operation succeeded";
    const PathSetState after = captureState(edited);
    if (after == before) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "it changed " << before << " into " << after;
}

SurfaceNode* StripEditTest::insideTriangle(int triangle) const {
    SurfaceNode* node = set.pathSet.nodeFactory.createTriangleNode(triangle, 0.3f, 0.3f);
    node->isControlPoint = 1;
    return node;
}
