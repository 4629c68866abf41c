#include "OperationTestSupport.h"

#include "DijkstraConnector.h"
#include "SurfaceIO.h"
#include "SurfaceNode.h"
#include "TestSurfaces.h"

#include <gtest/gtest.h>

#include <algorithm>

EditedPathSet::EditedPathSet(Surface surface_) : surface(std::move(surface_)), pathSet(&surface), selection(&pathSet) {}

int EditedPathSet::addVertexPath(std::initializer_list<int> vertices, std::initializer_list<int> controlPoints) {
    std::vector<int> list(vertices);
    const bool closed = list.size() > 1 && list.front() == list.back();
    if (closed) list.pop_back();
    McDArray<int> indices;
    for (size_t i = 0; i < list.size(); ++i) {
        SurfaceNode* node = pathSet.nodeFactory.createVertexNode(list[i]);
        const bool isEnd = i == 0 || i + 1 == list.size();
        const bool listed = std::find(controlPoints.begin(), controlPoints.end(), list[i]) != controlPoints.end();
        node->isControlPoint = controlPoints.size() == 0 ? isEnd : listed;
        indices.append(pathSet.addNode(node));
    }
    if (closed) indices.append(indices[0]);
    return pathSet.addPath(indices);
}

int EditedPathSet::nodeAt(int path, int position) const { return pathSet.paths[path].nodeIndices[position]; }

bool runProtocol(PathOperation* op) {
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

PathSetState captureState(SurfacePathSet const& pathSet, SelectionInfo const* selection) {
    PathSetState state;
    for (int p = 0; p < pathSet.getNumPaths(); ++p) state.paths.push_back(pathOf(pathSet, p));
    for (auto const& node : pathSet.nodes) {
        state.nodes.push_back(node.ptr());
        state.controlPoints.push_back(node && node->isControlPoint);
    }
    if (selection) {
        for (int p : selection->getActivePaths()) state.activePaths.push_back(p);
        state.activeCP = selection->getActiveCP();
    }
    return state;
}

PathSetState captureState(EditedPathSet const& edited) { return captureState(edited.pathSet, &edited.selection); }

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

std::vector<int> verticesOf(SurfacePathSet const& pathSet, int path) {
    std::vector<int> vertices;
    for (int index : pathSet.paths[path].nodeIndices) {
        SurfaceNode const* node = pathSet.getNode(index);
        vertices.push_back(node && node->getKind() == SurfaceNode::VERTEX ? node->getElement() : -1);
    }
    return vertices;
}

Surface readMesh(char const* name) {
    Surface surface;
    McString error, warnings;
    EXPECT_TRUE(SurfaceIO::read(meshFile(name).c_str(), surface, error, warnings)) << error.c_str();
    return surface;
}

int addVertexPath(SurfacePathSet& pathSet, std::vector<int> const& vertices) {
    McDArray<int> indices;
    for (size_t i = 0; i < vertices.size(); ++i) {
        SurfaceNode* node = pathSet.nodeFactory.createVertexNode(vertices[i]);
        node->isControlPoint = i == 0 || i + 1 == vertices.size();
        indices.append(pathSet.addNode(node));
    }
    return pathSet.addPath(indices);
}

SurfaceNode* makeControlPoint(SurfacePathSet const& pathSet, int vertex) {
    SurfaceNode* node = pathSet.nodeFactory.createVertexNode(vertex);
    if (node) node->isControlPoint = 1;
    return node;
}

std::vector<int> controlPointVerticesOf(SurfacePathSet const& pathSet, int path) {
    std::vector<int> vertices;
    for (int index : pathSet.paths[path].nodeIndices) {
        SurfaceNode const* node = pathSet.getNode(index);
        if (!node || !node->isControlPoint) continue;
        vertices.push_back(node->getKind() == SurfaceNode::VERTEX ? node->getElement() : -1);
    }
    return vertices;
}

::testing::AssertionResult isConsistent(SurfacePathSet const& pathSet) {
    McString problem;
    int badPath = -1;
    if (pathSet.isConsistent(true, &badPath, problem)) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << problem.c_str();
}

PathSetState expectUndoRedoRestores(EditedPathSet& edited, PathOperation* op) {
    const PathSetState before = captureState(edited);
    EXPECT_TRUE(runProtocol(op));
    const PathSetState after = captureState(edited);
    op->undo();
    EXPECT_EQ(captureState(edited), before) << "after undo";
    op->redo();
    EXPECT_EQ(captureState(edited), after) << "after redo";
    return after;
}

std::vector<int> shortestVertexPath(Surface& surface, int from, int to) {
    McDArray<int> vertices;
    DijkstraConnector connector;
    connector.findPath(&surface, from, to, vertices);
    return std::vector<int>(vertices.begin(), vertices.end());
}

int addPathThrough(SurfacePathSet& pathSet, std::initializer_list<int> before, int shared,
                   std::initializer_list<int> after) {
    McDArray<int> indices;
    for (int vertex : before) indices.append(pathSet.addNode(makeControlPoint(pathSet, vertex)));
    indices.append(shared);
    for (int vertex : after) indices.append(pathSet.addNode(makeControlPoint(pathSet, vertex)));
    return pathSet.addPath(indices);
}
