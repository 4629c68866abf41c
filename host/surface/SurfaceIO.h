#pragma once
// SurfaceIO: surface files in the formats OFF, OBJ, PLY and STL, chosen by the file name's
// extension (any letter case).
//
// OffReader, PlyReader and ObjReader read OFF, PLY and OBJ (header counts that a damaged file
// makes absurd, statements of other tools); CGAL reads STL and writes every format. This class checks what was read
// (finite coordinates, point indices in range), triangulates polygons with more than three corners, drops what
// cannot form a triangle and reports the defects of the result. All CGAL code of the host's
// surface library lives in SurfaceIO.cpp.

#include "McDArray.h"
#include "McString.h"

class Surface;

class SurfaceIO {
  public:
    struct Format {
        char const* extension;  // lower case, without the dot
        char const* description;
    };
    static McDArray<Format> getFormats();
    // True if the extension of the file name is one of getFormats().
    static bool isSupported(char const* fileName);

    // Reads a file into `surface` (its parameters are kept) and builds every derived table.
    // On failure returns false with the reason in `error` and leaves `surface` unchanged.
    // Repairs made and defects found are described in `warnings` (empty when there are none).
    static bool read(char const* fileName, Surface& surface, McString& error, McString& warnings);

    // Writes the points and triangles; a temporary file is renamed at the end, so a failed
    // write leaves an existing file untouched. PLY and STL are written in binary.
    static bool write(Surface const& surface, char const* fileName, McString& error);
};
