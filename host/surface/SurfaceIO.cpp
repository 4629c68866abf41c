#include "SurfaceIO.h"

#include "ObjReader.h"
#include "OffReader.h"
#include "PlyReader.h"
#include "PolygonSoup.h"
#include "PolygonTriangulator.h"
#include "Surface.h"

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/exceptions.h>
#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/OFF.h>
#include <CGAL/IO/PLY.h>
#include <CGAL/IO/STL.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <iostream>
#include <sstream>
#include <strings.h>
#include <unistd.h>
#include <vector>

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Point = Kernel::Point_3;
using Polygon = std::vector<std::size_t>;

enum FormatId { OFF, OBJ, PLY, STL, NUM_FORMATS };

const SurfaceIO::Format kFormats[NUM_FORMATS] = {
    {"off", "Object File Format surface"},
    {"obj", "Wavefront OBJ surface"},
    {"ply", "Polygon File Format surface"},
    {"stl", "Stereolithography surface"},
};

int formatOf(char const* fileName) {
    char const* dot = strrchr(fileName, '.');
    if (!dot || strchr(dot, '/')) return -1;
    for (int f = 0; f < NUM_FORMATS; ++f)
        if (!strcasecmp(dot + 1, kFormats[f].extension)) return f;
    return -1;
}

McString unknownFormatError(char const* fileName) {
    McString known;
    for (SurfaceIO::Format const& format : kFormats) known += McString(known.empty() ? "." : ", .") + format.extension;
    return McString::format("\"%s\" does not end in the extension of a surface format (%s)", fileName, known.c_str());
}

// Runs `work` while what CGAL prints on std::cerr (the only place where its readers say what
// was wrong) is collected in `printed`; its notes on std::cout are dropped.
template <class Work>
bool withConsoleCaptured(std::string& printed, Work work) {
    std::ostringstream err, out;
    std::streambuf* oldErr = std::cerr.rdbuf(err.rdbuf());
    std::streambuf* oldOut = std::cout.rdbuf(out.rdbuf());
    auto restore = [&] {
        std::cerr.rdbuf(oldErr);
        std::cout.rdbuf(oldOut);
        printed = err.str();
    };
    try {
        const bool result = work();
        restore();
        return result;
    } catch (...) {
        restore();
        throw;
    }
}

// CGAL's lines without its internal function names, joined by "; ".
McString cgalReasons(std::string const& printed) {
    std::istringstream lines(printed);
    McString joined;
    for (std::string line; std::getline(lines, line);) {
        for (char const* prefix : {"input error:", "error:", "Error:", "warning:"}) {
            const size_t at = line.find(prefix);
            if (at != std::string::npos) line = line.substr(at + strlen(prefix));
        }
        line.erase(0, line.find_first_not_of(" \t"));
        while (!line.empty() && strchr(" \t\r.", line.back())) line.pop_back();
        if (line.empty() || (line.size() >= 2 && line.compare(line.size() - 2, 2, "::") == 0)) continue;
        joined += McString(joined.empty() ? "" : "; ") + line;
    }
    return joined;
}

// "not a readable obj file: (details)"
McString unreadableFile(int format, McString const& details) {
    McString text = McString::format("not a readable %s file", kFormats[format].extension);
    if (!details.empty()) text += ": " + details;
    return text;
}

// CGAL reads STL, whose sizes come from the file's length rather than from counts in a header;
// its indices are checked here on the way into the soup.
bool toSoup(std::vector<Point> const& points, std::vector<Polygon> const& polygons, PolygonSoup& soup,
            McString& error) {
    if (points.size() > size_t(INT_MAX)) {
        error.printf("the file has %zu points, more than a surface can hold", points.size());
        return false;
    }
    soup.points.reserve(points.size());
    for (Point const& p : points) soup.points.push_back({p.x(), p.y(), p.z()});
    soup.polygonEnds.reserve(polygons.size());
    for (size_t f = 0; f < polygons.size(); ++f) {
        for (size_t index : polygons[f]) {
            if (index >= points.size()) {
                error.printf("face %zu uses point index %zu, but the file has only %zu points (indices count from 0)",
                             f, index, points.size());
                return false;
            }
            soup.corners.push_back(int(index));
        }
        soup.endPolygon();
    }
    return true;
}

bool readWithCgal(int format, std::ifstream& in, PolygonSoup& soup, McString& error) {
    std::vector<Point> points;
    std::vector<Polygon> polygons;
    std::string printed;
    try {
        if (withConsoleCaptured(printed, [&] { return CGAL::IO::read_STL(in, points, polygons, CGAL::parameters::verbose(true)); }))
            return toSoup(points, polygons, soup, error);
        error = unreadableFile(format, cgalReasons(printed));
    } catch (std::bad_alloc const&) {
        error = "the file declares more data than fits in memory";
    } catch (CGAL::Failure_exception const& e) {
        error = unreadableFile(format, McString::format("its data break the reader's rule \"%s\"", e.expression().c_str()));
    } catch (std::exception const& e) {
        error = unreadableFile(format, e.what());
    }
    return false;
}

bool readSoup(char const* fileName, int format, PolygonSoup& soup, McString& error, McString& warnings) {
    std::ifstream in(fileName, std::ios::binary);
    if (!in) {
        error.printf("cannot open the file: %s", strerror(errno));
        return false;
    }
    if (in.peek() == std::char_traits<char>::eof()) {
        error = "the file is empty";
        return false;
    }
    if (format == STL) return readWithCgal(format, in, soup, error);
    // Held whole, the file's length bounds every count in it before anything is reserved.
    std::string bytes;
    try {
        bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
        if (format == OFF) return OffReader::read(bytes, soup, error);
        if (format == OBJ) return ObjReader::read(bytes, soup, error, warnings);
        return PlyReader::read(bytes, soup, error);
    } catch (std::bad_alloc const&) {
        error = "the file is larger than the memory left";
        return false;
    }
}

bool checkSoup(PolygonSoup const& soup, McString& error) {
    for (size_t i = 0; i < soup.points.size(); ++i) {
        for (double c : soup.points[i]) {
            if (!std::isfinite(c)) {
                error.printf("point %zu has a coordinate that is not a finite number", i);
                return false;
            }
            if (std::fabs(c) > FLT_MAX) {
                error.printf("point %zu has a coordinate (%g) too large for single precision", i, c);
                return false;
            }
        }
    }
    return true;
}


// Appends the triangles of a polygon with more than three corners. A triangulation of the
// polygon (in its best-fitting plane where it is flat enough) is tried first; a polygon that
// repeats a corner, or one that CGAL cannot triangulate, is split as a fan and false is returned.
bool triangulatePolygon(int const* polygon, size_t size, PolygonSoup const& soup, McDArray<Surface::Triangle>& out) {
    std::vector<int> corners(polygon, polygon + size);
    std::sort(corners.begin(), corners.end());
    if (std::adjacent_find(corners.begin(), corners.end()) == corners.end()) {
        std::vector<std::array<double, 3>> ring;
        for (size_t k = 0; k < size; ++k) ring.push_back(soup.points[size_t(polygon[k])]);
        std::vector<std::array<int, 3>> found;
        if (PolygonTriangulator::triangulate(ring, found)) {
            for (auto const& t : found) out.append(Surface::Triangle(polygon[t[0]], polygon[t[1]], polygon[t[2]]));
            return true;
        }
    }
    for (size_t i = 1; i + 1 < size; ++i) out.append(Surface::Triangle(polygon[0], polygon[i], polygon[i + 1]));
    return false;
}

struct ReadCounts {
    int64_t tooFewCorners = 0;
    int64_t fanned = 0;
    int64_t repeatedCorner = 0;
};

void soupToSurface(PolygonSoup const& soup, Surface& surface, ReadCounts& counts) {
    surface.points.resize(int64_t(soup.points.size()));
    for (size_t i = 0; i < soup.points.size(); ++i) {
        std::array<double, 3> const& p = soup.points[i];
        surface.points[int64_t(i)] = McVec3f(float(p[0]), float(p[1]), float(p[2]));
    }
    surface.triangles.remax(int64_t(soup.getNumPolygons()));
    for (size_t f = 0; f < soup.getNumPolygons(); ++f) {
        int const* polygon = soup.polygon(f);
        const size_t size = soup.polygonSize(f);
        if (size < 3)
            ++counts.tooFewCorners;
        else if (size == 3)
            surface.triangles.append(Surface::Triangle(polygon[0], polygon[1], polygon[2]));
        else if (!triangulatePolygon(polygon, size, soup, surface.triangles))
            ++counts.fanned;
    }
    counts.repeatedCorner = surface.removeObsoleteTriangles();
}

// One clause per kind of defect, e.g. "2 triangles have no area".
McString describeDefects(Surface const& surface, ReadCounts const& counts) {
    McString text;
    auto add = [&text](int64_t n, char const* one, char const* many) {
        if (n > 0) text += McString(text.empty() ? "" : "; ") + McString::format("%lld %s", (long long)n, n == 1 ? one : many);
    };
    add(counts.tooFewCorners, "face with fewer than three corners was skipped",
        "faces with fewer than three corners were skipped");
    add(counts.fanned, "face that repeats a corner or could not be triangulated was split as a fan",
        "faces that repeat a corner or could not be triangulated were split as fans");
    add(counts.repeatedCorner, "triangle that repeats a corner was removed", "triangles that repeat a corner were removed");
    add(surface.countZeroAreaTriangles(), "triangle has no area", "triangles have no area");
    add(surface.countNonManifoldEdges(), "edge is shared by more than two triangles",
        "edges are shared by more than two triangles");
    add(surface.countNonManifoldPoints(), "point joins separate sheets of triangles",
        "points join separate sheets of triangles");
    return text;
}

bool writeSoup(int format, std::ostream& out, std::vector<Point> const& points, std::vector<Polygon> const& triangles) {
    switch (format) {
        case OFF: return CGAL::IO::write_OFF(out, points, triangles);
        case OBJ: return CGAL::IO::write_OBJ(out, points, triangles);
        case PLY: return CGAL::IO::write_PLY(out, points, triangles);
        default: return CGAL::IO::write_STL(out, points, triangles);
    }
}

bool surfaceToSoup(Surface const& surface, std::vector<Point>& points, std::vector<Polygon>& triangles, McString& error) {
    for (McVec3f const& p : surface.points) points.emplace_back(p.x, p.y, p.z);
    for (int t = 0; t < surface.getNumTriangles(); ++t) {
        int const* corners = surface.triangles[t].points;
        for (int k = 0; k < 3; ++k) {
            if (corners[k] < 0 || corners[k] >= surface.getNumPoints()) {
                error.printf("triangle %d refers to point %d, which does not exist", t, corners[k]);
                return false;
            }
        }
        triangles.push_back(Polygon{size_t(corners[0]), size_t(corners[1]), size_t(corners[2])});
    }
    return true;
}

}  // namespace

McDArray<SurfaceIO::Format> SurfaceIO::getFormats() {
    McDArray<Format> formats;
    formats.append(NUM_FORMATS, kFormats);
    return formats;
}

bool SurfaceIO::isSupported(char const* fileName) { return formatOf(fileName) >= 0; }

bool SurfaceIO::read(char const* fileName, Surface& surface, McString& error, McString& warnings) {
    const int format = formatOf(fileName);
    if (format < 0) {
        error = unknownFormatError(fileName);
        return false;
    }
    PolygonSoup soup;
    McString skipped;
    if (!readSoup(fileName, format, soup, error, skipped) || !checkSoup(soup, error)) return false;
    Surface result(&surface.parameters);
    ReadCounts counts;
    try {
        soupToSurface(soup, result, counts);
    } catch (std::exception const& e) {
        error.printf("its polygons could not be triangulated: %s", e.what());
        return false;
    }
    if (result.triangles.empty()) {
        error = counts.tooFewCorners + counts.repeatedCorner > 0 ? "the file contains no face that forms a triangle"
                                                                 : "the file contains no triangles";
        return false;
    }
    result.buildAllTables();
    const McString defects = describeDefects(result, counts);
    warnings = skipped.empty() || defects.empty() ? skipped + defects : skipped + "; " + defects;
    surface = std::move(result);
    return true;
}

bool SurfaceIO::write(Surface const& surface, char const* fileName, McString& error) {
    const int format = formatOf(fileName);
    if (format < 0) {
        error = unknownFormatError(fileName);
        return false;
    }
    std::vector<Point> points;
    std::vector<Polygon> triangles;
    if (!surfaceToSoup(surface, points, triangles, error)) return false;

    const McString temporary = McString::format("%s.%d.part", fileName, int(getpid()));
    std::ofstream out(temporary, std::ios::binary);
    if (!out) {
        error.printf("cannot create \"%s\": %s", temporary.c_str(), strerror(errno));
        return false;
    }
    CGAL::IO::set_mode(out, format == PLY || format == STL ? CGAL::IO::BINARY : CGAL::IO::ASCII);
    out.precision(9);  // enough digits to read back the same single-precision coordinates
    bool written = false;
    try {
        written = writeSoup(format, out, points, triangles);
    } catch (std::exception const& e) {
        error = e.what();
    }
    out.close();
    if (!written || out.fail()) {
        if (error.empty()) error.printf("writing \"%s\" failed: %s", temporary.c_str(), strerror(errno));
        std::remove(temporary.c_str());
        return false;
    }
    if (std::rename(temporary.c_str(), fileName) != 0) {
        error.printf("cannot replace \"%s\": %s", fileName, strerror(errno));
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}
