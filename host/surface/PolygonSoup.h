#pragma once
// PolygonSoup: the points and polygons of a surface file as listed there, before they become
// a Surface. The corners of all polygons lie in one array, so a million faces cost a few
// allocations rather than a million.

#include <array>
#include <cstddef>
#include <vector>

class PolygonSoup {
  public:
    std::vector<std::array<double, 3>> points;
    // Point indices of every polygon, one polygon after the other.
    std::vector<int> corners;
    // Polygon f has the corners [polygonEnds[f - 1], polygonEnds[f]) (from 0 for f = 0).
    std::vector<size_t> polygonEnds;

    size_t getNumPolygons() const { return polygonEnds.size(); }
    int const* polygon(size_t f) const { return corners.data() + start(f); }
    size_t polygonSize(size_t f) const { return polygonEnds[f] - start(f); }
    // Closes the polygon made of the corners appended since the previous one.
    void endPolygon() { polygonEnds.push_back(corners.size()); }

  private:
    size_t start(size_t f) const { return f ? polygonEnds[f - 1] : 0; }
};
