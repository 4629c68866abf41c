#pragma once
// SoSurfaceMeshShape: a Coin shape that draws and picks a large triangle mesh fast.
//
// The stock indexed face set sends its triangles one at a time and tests every triangle when
// picked. This shape draws its arrays with one call and picks through a bounding-box tree,
// built on the first pick after a change (rendering never needs it). A pick gives an
// SoFaceDetail whose face index is the triangle's index in the surface.
//
// The shape owns a copy of the mesh (points, triangles, one normal per point), set with
// setSurface; it is not a field, so it is neither written to files nor copied with the node.
// Draw style (filled, lines, points), material and lighting come from the traversal state,
// as for any shape.
//
// Picks agree with the picture: the surface is drawn pushed back so that lines and points on
// it stay visible, and a line or point hit lying just behind the surface's own hit (within
// the pick radius) therefore stays the nearest.

#include <Inventor/SbBox3f.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoSubNode.h>

#include <cstdint>
#include <memory>
#include <vector>

class Surface;
class TriangleBoxTree;
class SoPickedPoint;

class SoSurfaceMeshShape : public SoShape {
    SO_NODE_HEADER(SoSurfaceMeshShape);

  public:
    // Registers the class with Coin (once; later calls do nothing). Needs SoDB::init().
    static void initClass();
    SoSurfaceMeshShape();

    // Copies the surface's points and triangles and computes the point normals. A triangle
    // naming a point that does not exist is kept as an empty one, so that indices still match.
    void setSurface(Surface const& surface);
    void clear();
    int getNumPoints() const { return static_cast<int>(mCoords.size() / 3); }
    int getNumTriangles() const { return static_cast<int>(mIndices.size() / 3); }

    void GLRender(SoGLRenderAction* action) override;
    void rayPick(SoRayPickAction* action) override;
    void getPrimitiveCount(SoGetPrimitiveCountAction* action) override;

  protected:
    ~SoSurfaceMeshShape() override;
    void generatePrimitives(SoAction* action) override;
    void computeBBox(SoAction* action, SbBox3f& box, SbVec3f& center) override;

  private:
    void computePointNormals();
    TriangleBoxTree const& getTree();
    SbVec3f pointOf(int triangle, float u, float v) const;
    // True when the nearest hit so far is a line or point lying on this surface at `point`.
    bool yieldsToEarlierHit(SoRayPickAction* action, int triangle, SbVec3f const& point) const;
    void addPick(SoRayPickAction* action, int triangle, SbVec3f const& point, bool front);

    std::vector<float> mCoords;
    std::vector<float> mNormals;
    std::vector<uint32_t> mIndices;
    SbBox3f mBox;
    std::unique_ptr<TriangleBoxTree> mTree;
};
