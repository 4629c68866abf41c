#include "PathSetExport.h"

#include "AtomicFile.h"
#include "SurfacePathSet.h"

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace {

std::string extensionOf(char const* fileName) {
    const std::string name = fileName;
    const size_t dot = name.rfind('.');
    if (dot == std::string::npos || name.find('/', dot) != std::string::npos) return "";
    std::string ext = name.substr(dot + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

bool drawsLine(SurfacePathSet const& set, int path) { return set.getNumNodesOnPath(path) >= 2; }

// One line of points: every node of the table, so that path entries are point indices.
std::string pointLines(SurfacePathSet const& set, char const* prefix) {
    std::string text;
    char line[128];
    for (SurfaceNode* node : set.nodes) {
        const McVec3f p = node ? node->getPosition() : McVec3f();
        snprintf(line, sizeof line, "%s%.9g %.9g %.9g\n", prefix, p.x, p.y, p.z);
        text += line;
    }
    return text;
}

}  // namespace

bool PathSetExport::isSupported(char const* fileName) {
    const std::string ext = extensionOf(fileName);
    return ext == "obj" || ext == "vtk";
}

std::string PathSetExport::toObj(SurfacePathSet const& set) {
    std::string text = "# surface paths: " + std::to_string(set.getNumPaths()) + "\n" + pointLines(set, "v ");
    for (int p = 0; p < set.getNumPaths(); ++p) {
        if (!drawsLine(set, p)) continue;
        text += "l";
        for (int index : set.paths[p].nodeIndices) text += " " + std::to_string(index + 1);
        text += "\n";
    }
    return text;
}

std::string PathSetExport::toVtk(SurfacePathSet const& set) {
    int lines = 0;
    int64_t size = 0;
    for (int p = 0; p < set.getNumPaths(); ++p) {
        if (!drawsLine(set, p)) continue;
        ++lines;
        size += set.getNumNodesOnPath(p) + 1;
    }
    std::string text = "# vtk DataFile Version 3.0\nsurface paths\nASCII\nDATASET POLYDATA\nPOINTS " +
                       std::to_string(set.getNumNodes()) + " float\n" + pointLines(set, "");
    text += "LINES " + std::to_string(lines) + " " + std::to_string(size) + "\n";
    for (int p = 0; p < set.getNumPaths(); ++p) {
        if (!drawsLine(set, p)) continue;
        text += std::to_string(set.getNumNodesOnPath(p));
        for (int index : set.paths[p].nodeIndices) text += " " + std::to_string(index);
        text += "\n";
    }
    return text;
}

bool PathSetExport::write(SurfacePathSet const& set, char const* fileName, McString& error) {
    const std::string ext = extensionOf(fileName);
    if (ext != "obj" && ext != "vtk") {
        error.printf("unknown export format \"%s\" (known formats: .obj, .vtk)", ext.c_str());
        return false;
    }
    McString problem;
    if (!set.isConsistent(false, nullptr, problem)) {
        error = "the path set is broken: " + problem;
        return false;
    }
    return AtomicFile::write(fileName, ext == "obj" ? toObj(set) : toVtk(set), error);
}
