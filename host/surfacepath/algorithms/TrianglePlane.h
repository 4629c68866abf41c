#pragma once
// TrianglePlane: a triangle laid flat in its own plane, lengths kept, so that segments given in
// barycentric coordinates of the triangle can be intersected and measured in 2D.
//
// Corner 0 lies at the origin, corner 1 on the positive x axis, corner 2 above it. Computed in
// double precision: crossings are decided near the float resolution of the nodes.

class Surface;

class TrianglePlane {
  public:
    struct Point {
        double x = 0, y = 0;
    };

    TrianglePlane(Surface const& surface, int triangle);

    // False for a triangle without area, where nothing can be decided.
    bool isValid() const { return mCorner1 > 0 && mCorner2.y > 0; }
    // The longest side: the scale of tolerances within the triangle.
    double size() const { return mSize; }
    Point fromBarycentric(float const bary[3]) const;
    // Barycentric coordinates of a point of the triangle, clamped into it.
    void toBarycentric(Point const& p, float bary[3]) const;

    static double distance(Point const& a, Point const& b);
    // Parameter in [0,1] of the point of segment a-b nearest to p.
    static double closestParameter(Point const& p, Point const& a, Point const& b);
    static Point along(Point const& a, Point const& b, double t);
    // Parameters s on a0-a1 and t on b0-b1 where the two segments cross; false if they do not
    // (parallel segments never cross: their meetings are their ends touching).
    static bool crossing(Point const& a0, Point const& a1, Point const& b0, Point const& b1, double& s, double& t);

  private:
    double mCorner1 = 0;  // x of corner 1
    Point mCorner2;
    double mSize = 0;
};
