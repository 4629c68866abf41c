#include "PathEditSnapNodes.h"

#include <algorithm>

MC_TYPED_IMPL(PathEditSnapNodes, SinglePathOperation)

PathEditSnapNodes::PathEditSnapNodes(SurfacePathSet* pathSet_)
    : SinglePathOperation(pathSet_, nullptr, nullptr), tolerance(0.01f), mode(1) {}

bool PathEditSnapNodes::exec() {
    snapNodes();
    return true;
}

McBitfield PathEditSnapNodes::chosenNodes() const {
    McBitfield chosen;
    chosen.resize(pathSet->getNumNodes(), paths.empty());
    for (int p = 0; p < pathSet->getNumPaths() && !paths.empty(); ++p) {
        if (std::find(paths.begin(), paths.end(), p) == paths.end()) continue;
        for (int node : pathSet->paths[p].nodeIndices)
            if (node >= 0 && node < pathSet->getNumNodes()) chosen.set(node);
    }
    return chosen;
}

int PathEditSnapNodes::snapNodes() {
    if (!pathSet || !pathSet->getSurface()) return 0;
    const McBitfield chosen = chosenNodes();
    SurfaceNodeFactory& factory = pathSet->nodeFactory;
    factory.backupMode = factory.mode;
    factory.backupTolerance = factory.tolerance;
    factory.mode = static_cast<unsigned char>(mode & 0xff);
    factory.tolerance = tolerance;
    int replaced = 0;
    for (int i = 0; i < pathSet->getNumNodes(); ++i) {
        if (!chosen[i]) continue;
        SurfaceNode* node = pathSet->nodes[i];
        SurfaceNode* converted = factory.convertNode(node);
        if (converted == node) continue;
        pathSet->nodes[i] = converted;
        ++replaced;
    }
    factory.mode = factory.backupMode;
    factory.tolerance = factory.backupTolerance;
    return replaced;
}
