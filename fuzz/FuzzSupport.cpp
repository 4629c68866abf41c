#include "FuzzSupport.h"

#include "SurfaceEdgeNode.h"
#include "SurfaceIO.h"
#include "SurfaceTriangleNode.h"
#include "SurfaceVertexNode.h"

#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

std::string scratchFolder() {
    // Never freed: the exit handler that removes the folder runs after static destructors.
    static std::string const* folder = [] {
        char const* tmp = getenv("TMPDIR");
        auto* name = new std::string(std::string(tmp && *tmp ? tmp : "/tmp") + "/surfpath-fuzz-XXXXXX");
        if (!mkdtemp(name->data())) fuzzFailure("cannot make a scratch folder from %s", name->c_str());
        atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(*folder, ignored);
        });
        return name;
    }();
    return *folder;
}

std::string writeScratchFile(char const* fileName, uint8_t const* data, size_t size) {
    std::string path = scratchFolder() + "/" + fileName;
    FILE* file = fopen(path.c_str(), "wb");
    if (!file || fwrite(data, 1, size, file) != size || fclose(file) != 0)
        fuzzFailure("cannot write %s", path.c_str());
    return path;
}

void fillPathSet(SurfacePathSet& set, Surface* cube) {
    const int v0 = set.addNode(new SurfaceVertexNode(cube, 0));
    const int e = set.addNode(new SurfaceEdgeNode(cube, 3, 0.25f));
    const int t = set.addNode(new SurfaceTriangleNode(cube, 5, 0.25f, 1.f / 3));
    const int v7 = set.addNode(new SurfaceVertexNode(cube, 7));
    set.nodes[v0]->isControlPoint = 1;
    set.nodes[v7]->isControlPoint = 1;
    set.addPath(McDArray<int>{v0, e, t, v7});
    set.addPath(McDArray<int>{v0, t, v7, v0});
    set.addPath(McDArray<int>{});
}

void readSurfaceFile(char const* extension, uint8_t const* data, size_t size) {
    const std::string name = std::string("input.") + extension;
    const std::string path = writeScratchFile(name.c_str(), data, size);
    Surface surface;
    McString error, warnings;
    const bool ok = SurfaceIO::read(path.c_str(), surface, error, warnings);
    unlink(path.c_str());
    if (!ok) {
        if (error.empty()) fuzzFailure("a %s file was refused without a reason", extension);
        return;
    }
    const int64_t numPoints = surface.points.size();
    for (int64_t i = 0; i < numPoints; ++i)
        for (int k = 0; k < 3; ++k)
            if (!std::isfinite(surface.points[i][k])) fuzzFailure("point %lld is not finite", (long long)i);
    for (int64_t t = 0; t < surface.triangles.size(); ++t)
        for (int k = 0; k < 3; ++k)
            if (surface.triangles[t].points[k] < 0 || surface.triangles[t].points[k] >= numPoints)
                fuzzFailure("triangle %lld uses point %d of %lld", (long long)t, surface.triangles[t].points[k],
                            (long long)numPoints);
}

void fuzzFailure(char const* format, ...) {
    va_list args;
    va_start(args, format);
    vfprintf(stderr, format, args);
    va_end(args);
    fputc('\n', stderr);
    abort();
}
