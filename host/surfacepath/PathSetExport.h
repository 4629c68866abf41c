#pragma once
// PathSetExport: the paths as polylines for other programs, in the format named by the file's
// extension: Wavefront OBJ (`v` lines for the nodes, one `l` line per path) or legacy VTK
// polydata (ASCII). Paths with fewer than two nodes draw no line and are left out.

#include "McString.h"

class SurfacePathSet;

class PathSetExport {
  public:
    // True if the extension is one of "obj" and "vtk" (any letter case).
    static bool isSupported(char const* fileName);
    // Atomic: false leaves an old file untouched and explains in `error`.
    static bool write(SurfacePathSet const& set, char const* fileName, McString& error);

    static std::string toObj(SurfacePathSet const& set);
    static std::string toVtk(SurfacePathSet const& set);
};
