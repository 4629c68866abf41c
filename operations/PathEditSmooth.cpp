#include "PathEditSmooth.h"

#include "HxMessage.h"
#include "PathEditSnapNodes.h"

#include <cmath>

MC_TYPED_IMPL(PathEditSmooth, SinglePathOperation)

PathEditSmooth::PathEditSmooth(SurfacePathSet* pathSet_)
    : SinglePathOperation(pathSet_, nullptr, nullptr), smoothPathSet(pathSet_) {
    Surface* surface = pathSet_ ? pathSet_->getSurface() : nullptr;
    geodesic.init(surface);
    stripConnector.init(surface, nullptr);
}

bool PathEditSmooth::exec() {
    if (!smoothPathSet) return false;
    if (pathList.empty())
        for (int p = 0; p < smoothPathSet->getNumPaths(); ++p) pathList.append(p);
    if (iterations < 1) return true;
    for (int pass = 0; pass < iterations; ++pass) {
        for (int p : pathList) {
            smoothPath(p);
            smoothPathSet->removeInteriorNodes(p, 1);
        }
        // Unrecorded: the smoothing step as a whole is what undo restores.
        PathEditSnapNodes(smoothPathSet).exec();
        smoothPathSet->removeDuplicateNodes(1e-06f, 1);
        if (!smoothPathSet->isConsistent(true, nullptr)) {
            HxMessage::getTheMsg()->printf("PathSmooth failed");
            return false;
        }
    }
    return true;
}

void PathEditSmooth::smoothPath(int p) {
    const int n = smoothPathSet->getNumNodesOnPath(p);
    if (n < 1) return;  // callers list only paths with nodes
    McDArray<int> old;
    smoothPathSet->getPath(p, old);
    McDArray<McHandle<SurfaceNode>> moved(n);
    // Read through the const accessor: the node table is still shared with the undo snapshot.
    moved[0] = smoothPathSet->getNode(old[0]);
    moved[n - 1] = smoothPathSet->getNode(old[n - 1]);
    for (int i = 1; i + 1 < n; ++i) {
        SurfaceNode* cur = smoothPathSet->getSurfaceNode(p, i);
        const McVec3f P = smoothPathSet->getSurfaceNode(p, i - 1)->getPosition(), X = cur->getPosition(),
                      Q = smoothPathSet->getSurfaceNode(p, i + 1)->getPosition();
        const float s = float(2.0 * double(weight) + 1.0);
        const McVec3f d = (P + Q - X * 2) * weight / s;
        const McVec3f m = cur->getNormal();
        McVec3f t = d - m * d.dot(m);
        const float L = d.length();
        if (t.length() != 0) t.normalize();
        const double r = double(L) / (double((X - P).length()) + double((Q - X).length()));
        moved[i] = cur;
        McHandle<SurfaceNode> reached;
        if ((r >= 0.0001 || std::isnan(r)) && geodesic.compute(cur, t, L, reached) && reached) moved[i] = reached;
        moved[i]->isControlPoint = cur->isControlPoint;
    }
    McDArray<int> list;
    list.append(old[0]);
    for (int k = 1; k < n; ++k) {
        McDArray<McHandle<SurfaceNode>> between;
        if (!stripConnector.computeConnection(moved[k - 1], moved[k], between, nullptr)) {
            HxMessage::getTheMsg()->printf("Error: cannot smooth path %d", p);
            return;
        }
        for (SurfaceNode* node : between) list.append(smoothPathSet->addNode(node));
        if (k != n - 1) list.append(smoothPathSet->addNode(moved[k]));
    }
    list.append(old[n - 1]);
    smoothPathSet->paths[p].nodeIndices = list;
}
