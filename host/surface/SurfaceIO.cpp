#include "SurfaceIO.h"

#include "Surface.h"

#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/exceptions.h>
#include <CGAL/IO/OBJ.h>
#include <CGAL/IO/OFF.h>
#include <CGAL/IO/PLY.h>
#include <CGAL/IO/STL.h>
#include <CGAL/Polygon_mesh_processing/triangulate_hole.h>

#include <algorithm>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <strings.h>
#include <unistd.h>
#include <vector>

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Point = Kernel::Point_3;
using Polygon = std::vector<std::size_t>;
using Soup = std::pair<std::vector<Point>, std::vector<Polygon>>;

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

bool parseSoup(int format, std::istream& in, Soup& soup) {
    auto verbose = CGAL::parameters::verbose(true);
    switch (format) {
        case OFF: return CGAL::IO::read_OFF(in, soup.first, soup.second, verbose);
        case OBJ: return CGAL::IO::read_OBJ(in, soup.first, soup.second, verbose);
        case PLY: return CGAL::IO::read_PLY(in, soup.first, soup.second, verbose);
        default: return CGAL::IO::read_STL(in, soup.first, soup.second, verbose);
    }
}

// CGAL's OFF reader stops silently. Going over the file again with CGAL's OFF scanner finds
// the part that fails; the scanner's own messages, captured by the caller, say why.
McString findOffFailure(std::istream& in) {
    in.clear();
    in.seekg(0);
    CGAL::File_scanner_OFF scanner(in, true);
    if (in.fail()) return "it does not start with an OFF header";
    for (size_t i = 0; i < scanner.size_of_vertices(); ++i) {
        double x, y, z, w;
        unsigned char r, g, b;
        scanner.scan_vertex(x, y, z, w);
        if (scanner.has_normals()) scanner.scan_normal(x, y, z, w);
        if (scanner.has_vcolors()) scanner.scan_color(r, g, b);
        if (scanner.has_textures()) scanner.scan_texture(x, y);
        if (!in.good()) return McString::format("cannot read point %zu", i);
    }
    for (size_t f = 0; f < scanner.size_of_facets(); ++f) {
        size_t corners = size_t(-1), index = 0;
        scanner.scan_facet(corners, f);
        bool ok = (in.eof() || in.good()) && corners != size_t(-1);
        for (size_t j = 0; ok && j < corners; ++j) {
            scanner.scan_facet_vertex_index(index, j + 1, f);
            ok = bool(in);
        }
        if (!ok) return McString::format("cannot read face %zu", f);
    }
    return "";
}

// "not a readable off file: cannot read face 3 (facet 3: vertex index 9: is out of range)"
McString unreadableFile(int format, McString const& where, McString const& details) {
    McString text = McString::format("not a readable %s file", kFormats[format].extension);
    if (!where.empty()) text += ": " + where;
    if (!details.empty()) text += where.empty() ? ": " + details : " (" + details + ")";
    return text;
}

bool readSoup(char const* fileName, int format, Soup& soup, McString& error) {
    std::ifstream in(fileName, std::ios::binary);
    if (!in) {
        error.printf("cannot open the file: %s", strerror(errno));
        return false;
    }
    if (in.peek() == std::char_traits<char>::eof()) {
        error = "the file is empty";
        return false;
    }
    std::string printed;
    McString reason;
    try {
        const bool parsed = withConsoleCaptured(printed, [&] {
            if (parseSoup(format, in, soup)) return true;
            if (format == OFF) reason = findOffFailure(in);
            return false;
        });
        if (parsed) return true;
        error = unreadableFile(format, reason, cgalReasons(printed));
    } catch (std::bad_alloc const&) {
        error = "the file declares more data than fits in memory";
    } catch (CGAL::Failure_exception const& e) {
        error.printf("not a readable %s file: its data break the reader's rule \"%s\"", kFormats[format].extension,
                     e.expression().c_str());
    } catch (std::exception const& e) {
        error.printf("not a readable %s file: %s", kFormats[format].extension, e.what());
    }
    return false;
}

bool checkSoup(Soup const& soup, McString& error) {
    std::vector<Point> const& points = soup.first;
    if (points.size() > size_t(INT_MAX)) {
        error.printf("the file has %zu points, more than a surface can hold", points.size());
        return false;
    }
    for (size_t i = 0; i < points.size(); ++i) {
        for (int k = 0; k < 3; ++k) {
            const double c = points[i][k];
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
    for (size_t f = 0; f < soup.second.size(); ++f) {
        for (size_t index : soup.second[f]) {
            if (index >= points.size()) {
                error.printf("face %zu uses point index %zu, but the file has only %zu points (indices count from 0)",
                             f, index, points.size());
                return false;
            }
        }
    }
    return true;
}

// Indices were checked against the point count, which fits in an int.
Surface::Triangle makeTriangle(size_t a, size_t b, size_t c) { return Surface::Triangle(int(a), int(b), int(c)); }

// Appends the triangles of a polygon with more than three corners. A triangulation of the
// polygon (in its best-fitting plane where it is flat enough) is tried first; a polygon that
// repeats a corner, or one that CGAL cannot triangulate, is split as a fan and false is returned.
bool triangulatePolygon(Polygon const& polygon, std::vector<Point> const& points, McDArray<Surface::Triangle>& out) {
    std::vector<size_t> corners(polygon);
    std::sort(corners.begin(), corners.end());
    if (std::adjacent_find(corners.begin(), corners.end()) == corners.end()) {
        std::vector<Point> ring;
        for (size_t index : polygon) ring.push_back(points[index]);
        std::vector<CGAL::Triple<int, int, int>> found;
        CGAL::Polygon_mesh_processing::triangulate_hole_polyline(
            ring, std::back_inserter(found), CGAL::parameters::use_2d_constrained_delaunay_triangulation(true));
        if (found.size() + 2 == polygon.size()) {
            // Corners in ring order give every triangle the polygon's orientation.
            for (auto const& t : found) {
                int i[3] = {t.first, t.second, t.third};
                std::sort(i, i + 3);
                out.append(makeTriangle(polygon[i[0]], polygon[i[1]], polygon[i[2]]));
            }
            return true;
        }
    }
    for (size_t i = 1; i + 1 < polygon.size(); ++i) out.append(makeTriangle(polygon[0], polygon[i], polygon[i + 1]));
    return false;
}

struct ReadCounts {
    int64_t tooFewCorners = 0;
    int64_t fanned = 0;
    int64_t repeatedCorner = 0;
};

void soupToSurface(Soup const& soup, Surface& surface, ReadCounts& counts) {
    surface.points.resize(soup.first.size());
    for (size_t i = 0; i < soup.first.size(); ++i) {
        Point const& p = soup.first[i];
        surface.points[i] = McVec3f(float(p.x()), float(p.y()), float(p.z()));
    }
    surface.triangles.remax(soup.second.size());
    for (Polygon const& polygon : soup.second) {
        if (polygon.size() < 3)
            ++counts.tooFewCorners;
        else if (polygon.size() == 3)
            surface.triangles.append(makeTriangle(polygon[0], polygon[1], polygon[2]));
        else if (!triangulatePolygon(polygon, soup.first, surface.triangles))
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
    Soup soup;
    if (!readSoup(fileName, format, soup, error) || !checkSoup(soup, error)) return false;
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
    warnings = describeDefects(result, counts);
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
