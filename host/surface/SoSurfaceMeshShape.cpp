#include "SoSurfaceMeshShape.h"

#include "Surface.h"
#include "TriangleBoxTree.h"

#include <Inventor/C/glue/gl.h>
#include <Inventor/SbLine.h>
#include <Inventor/SbViewVolume.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoGLRenderAction.h>
#include <Inventor/actions/SoGetPrimitiveCountAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/bundles/SoMaterialBundle.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/details/SoPointDetail.h>
#include <Inventor/elements/SoCacheElement.h>
#include <Inventor/elements/SoDrawStyleElement.h>
#include <Inventor/elements/SoGLCacheContextElement.h>
#include <Inventor/elements/SoModelMatrixElement.h>
#include <Inventor/elements/SoShapeHintsElement.h>
#include <Inventor/elements/SoViewVolumeElement.h>
#include <Inventor/elements/SoViewportRegionElement.h>

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

SO_NODE_SOURCE(SoSurfaceMeshShape);

void SoSurfaceMeshShape::initClass() {
    if (getClassTypeId() == SoType::badType()) SO_NODE_INIT_CLASS(SoSurfaceMeshShape, SoShape, "Shape");
}

SoSurfaceMeshShape::SoSurfaceMeshShape() {
    SO_NODE_CONSTRUCTOR(SoSurfaceMeshShape);
    mBox.makeEmpty();
}

SoSurfaceMeshShape::~SoSurfaceMeshShape() = default;

void SoSurfaceMeshShape::setSurface(Surface const& surface) {
    const int numPoints = surface.getNumPoints();
    mCoords.resize(3 * size_t(numPoints));
    mBox.makeEmpty();
    for (int p = 0; p < numPoints; ++p) {
        McVec3f const& point = surface.points[p];
        std::copy(&point.x, &point.x + 3, &mCoords[3 * size_t(p)]);
        mBox.extendBy(SbVec3f(point.x, point.y, point.z));
    }
    mIndices.resize(3 * size_t(surface.getNumTriangles()));
    for (int t = 0; t < surface.getNumTriangles(); ++t) {
        int const* corners = surface.triangles[t].points;
        const bool valid = std::all_of(corners, corners + 3, [&](int p) { return p >= 0 && p < numPoints; });
        for (int k = 0; k < 3; ++k) mIndices[3 * size_t(t) + k] = valid ? uint32_t(corners[k]) : 0u;
    }
    computePointNormals();
    mTree.reset();
    touch();
}

void SoSurfaceMeshShape::clear() {
    mCoords.clear();
    mNormals.clear();
    mIndices.clear();
    mBox.makeEmpty();
    mTree.reset();
    touch();
}

// Smooth shading from area-weighted point normals: one normal per point keeps the arrays at
// one entry per point, where flat shading would need three copies of every point (one per
// triangle corner), and scanned meshes look better smooth.
void SoSurfaceMeshShape::computePointNormals() {
    mNormals.assign(mCoords.size(), 0.0f);
    for (size_t t = 0; t < mIndices.size(); t += 3) {
        float const* p0 = &mCoords[3 * size_t(mIndices[t])];
        float const* p1 = &mCoords[3 * size_t(mIndices[t + 1])];
        float const* p2 = &mCoords[3 * size_t(mIndices[t + 2])];
        const SbVec3f e1(p1[0] - p0[0], p1[1] - p0[1], p1[2] - p0[2]);
        const SbVec3f e2(p2[0] - p0[0], p2[1] - p0[1], p2[2] - p0[2]);
        const SbVec3f areaNormal = e1.cross(e2);  // its length is twice the area
        for (int k = 0; k < 3; ++k) {
            float* n = &mNormals[3 * size_t(mIndices[t + k])];
            for (int axis = 0; axis < 3; ++axis) n[axis] += areaNormal[axis];
        }
    }
    for (size_t p = 0; p < mNormals.size(); p += 3) {
        SbVec3f n(mNormals[p], mNormals[p + 1], mNormals[p + 2]);
        if (n.normalize() > 0.0f) std::copy(n.getValue(), n.getValue() + 3, &mNormals[p]);
    }
}

TriangleBoxTree const& SoSurfaceMeshShape::getTree() {
    if (!mTree) mTree = std::make_unique<TriangleBoxTree>(mCoords.data(), mIndices.data(), getNumTriangles());
    return *mTree;
}

SbVec3f SoSurfaceMeshShape::pointOf(int triangle, float u, float v) const {
    SbVec3f point(0, 0, 0);
    const float weights[3] = {1.0f - u - v, u, v};
    for (int k = 0; k < 3; ++k) {
        float const* p = &mCoords[3 * size_t(mIndices[3 * size_t(triangle) + k])];
        point += weights[k] * SbVec3f(p[0], p[1], p[2]);
    }
    return point;
}

// === Rendering

void SoSurfaceMeshShape::GLRender(SoGLRenderAction* action) {
    if (mIndices.empty() || !shouldGLRender(action)) return;
    SoState* state = action->getState();
    // A display list of a million triangles costs more to record than it saves.
    if (state->isCacheOpen()) SoCacheElement::invalidate(state);
    SoGLCacheContextElement::shouldAutoCache(state, SoGLCacheContextElement::DONT_AUTO_CACHE);

    SoMaterialBundle material(action);
    material.sendFirst();
    // Coin may leave a buffer object bound after drawing other shapes; the arrays below are
    // plain memory.
    cc_glglue const* glue = cc_glglue_instance(action->getCacheContext());
    if (cc_glglue_has_vertex_buffer_object(glue)) {
        cc_glglue_glBindBuffer(glue, GL_ARRAY_BUFFER, 0);
        cc_glglue_glBindBuffer(glue, GL_ELEMENT_ARRAY_BUFFER, 0);
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, mCoords.data());
    glNormalPointer(GL_FLOAT, 0, mNormals.data());
    // Points are drawn once each rather than once per triangle corner.
    if (SoDrawStyleElement::get(state) == SoDrawStyleElement::POINTS)
        glDrawArrays(GL_POINTS, 0, getNumPoints());
    else
        glDrawElements(GL_TRIANGLES, GLsizei(mIndices.size()), GL_UNSIGNED_INT, mIndices.data());
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

void SoSurfaceMeshShape::computeBBox(SoAction*, SbBox3f& box, SbVec3f& center) {
    box = mBox;
    if (!mBox.isEmpty()) center = mBox.getCenter();
}

void SoSurfaceMeshShape::getPrimitiveCount(SoGetPrimitiveCountAction* action) {
    if (shouldPrimitiveCount(action)) action->addNumTriangles(getNumTriangles());
}

// For the actions that want every triangle (callback actions, exports).
void SoSurfaceMeshShape::generatePrimitives(SoAction* action) {
    SoPrimitiveVertex vertex;
    SoPointDetail pointDetail;
    SoFaceDetail faceDetail;
    vertex.setDetail(&pointDetail);
    beginShape(action, TRIANGLES, &faceDetail);
    for (int t = 0; t < getNumTriangles(); ++t) {
        faceDetail.setFaceIndex(t);
        for (int k = 0; k < 3; ++k) {
            const uint32_t p = mIndices[3 * size_t(t) + k];
            pointDetail.setCoordinateIndex(int(p));
            pointDetail.setNormalIndex(int(p));
            vertex.setPoint(SbVec3f(&mCoords[3 * size_t(p)]));
            vertex.setNormal(SbVec3f(&mNormals[3 * size_t(p)]));
            shapeVertex(&vertex);
        }
    }
    endShape();
}

// === Picking

void SoSurfaceMeshShape::rayPick(SoRayPickAction* action) {
    if (mIndices.empty() || !shouldRayPick(action)) return;
    computeObjectSpaceRay(action);
    SbLine const& line = action->getLine();
    if (mBox.isEmpty() || !action->intersect(mBox, TRUE)) return;
    float const* origin = line.getPosition().getValue();
    float const* direction = line.getDirection().getValue();
    TriangleBoxTree const& tree = getTree();
    if (action->isPickAll()) {
        tree.allHits(origin, direction, [&](TriangleBoxTree::Hit const& hit) {
            const SbVec3f point = pointOf(hit.triangle, hit.u, hit.v);
            if (action->isBetweenPlanes(point)) addPick(action, hit.triangle, point, hit.front);
        });
        return;
    }
    TriangleBoxTree::Hit hit;
    auto between = [&](TriangleBoxTree::Hit const& h) {
        return bool(action->isBetweenPlanes(pointOf(h.triangle, h.u, h.v)));
    };
    if (!tree.nearestHit(origin, direction, between, hit)) return;
    const SbVec3f point = pointOf(hit.triangle, hit.u, hit.v);
    if (!yieldsToEarlierHit(action, hit.triangle, point)) addPick(action, hit.triangle, point, hit.front);
}

void SoSurfaceMeshShape::addPick(SoRayPickAction* action, int triangle, SbVec3f const& point, bool front) {
    if (SoShapeHintsElement::getVertexOrdering(action->getState()) == SoShapeHintsElement::CLOCKWISE) front = !front;
    SoPickedPoint* picked = action->addIntersection(point, front);
    if (!picked) return;
    auto* detail = new SoFaceDetail;
    detail->setFaceIndex(triangle);
    detail->setPartIndex(0);
    detail->setNumPoints(3);
    SbVec3f normal(0, 0, 0);
    for (int k = 0; k < 3; ++k) {
        const int p = int(mIndices[3 * size_t(triangle) + k]);
        SoPointDetail corner;
        corner.setCoordinateIndex(p);
        corner.setNormalIndex(p);
        detail->setPoint(k, &corner);
        normal += SbVec3f(&mNormals[3 * size_t(p)]);
    }
    normal.normalize();
    picked->setDetail(detail, this);
    picked->setObjectNormal(normal);
}

bool SoSurfaceMeshShape::yieldsToEarlierHit(SoRayPickAction* action, int triangle, SbVec3f const& point) const {
    SoPickedPoint const* nearest = action->getPickedPoint(0);
    SoDetail const* detail = nearest ? nearest->getDetail() : nullptr;
    if (!detail ||
        !(detail->isOfType(SoLineDetail::getClassTypeId()) || detail->isOfType(SoPointDetail::getClassTypeId())))
        return false;
    SoState* state = action->getState();
    SbMatrix const& toWorld = SoModelMatrixElement::get(state);
    SbVec3f world, direction;
    toWorld.multVecMatrix(point, world);
    toWorld.multDirMatrix(action->getLine().getDirection(), direction);
    if (direction.normalize() == 0.0f) return false;
    const SbVec3f toLine = nearest->getPoint() - world;
    const float behind = toLine.dot(direction);
    // The pick radius in world units at this depth, doubled for surfaces seen at a slant.
    SbVec2s viewport = SoViewportRegionElement::get(state).getViewportSizePixels();
    const float pixel = SoViewVolumeElement::get(state).getWorldToScreenScale(world, 1.0f) /
                        float(std::max<short>(1, std::min(viewport[0], viewport[1])));
    if (behind < 0.0f || behind > 2.0f * (action->getRadius() + 1.0f) * pixel) return false;
    // Only a line lying on this part of the surface wins; one on a sheet behind it (a path
    // behind an ear) is hidden in the picture and must not be picked through it.
    SbVec3f corners[3];
    for (int k = 0; k < 3; ++k) toWorld.multVecMatrix(pointOf(triangle, k == 1, k == 2), corners[k]);
    SbVec3f normal = (corners[1] - corners[0]).cross(corners[2] - corners[0]);
    if (normal.normalize() == 0.0f) return true;
    return std::fabs(toLine.dot(normal)) <= 1.5f * pixel;
}
