#pragma once
// PathSetFile: the path set file format (JSON, versioned; see docs/path-set-format.md).
//
// Reading happens in two steps, so that a file can be checked before anything is changed:
// read() parses the file and checks its structure, build() checks every node against the
// surface and every path entry against the node table and only then fills a path set.
// Both report every problem found (up to a limit), one per line.

#include "McDArray.h"
#include "McString.h"

class Surface;
class SurfacePathSet;

class PathSetFile {
  public:
    static constexpr char const* kFormat = "surfpath path set";
    static constexpr int kVersion = 1;

    struct NodeRecord {
        int kind = -1;  // SurfaceNode::Kind
        int element = -1;
        float u = 0, v = 0;
        bool controlPoint = false;
    };

    // Absolute name of the surface file the paths lie on.
    McString surfaceFile;
    McDArray<NodeRecord> nodes;
    McDArray<McDArray<int>> paths;

    // Parses a file; false with the problems in `error`.
    bool read(char const* fileName, McString& error);
    // Parses JSON text; relative surface names are taken relative to `folder`.
    bool parse(std::string const& text, std::string const& folder, McString& error);
    // Fills `set` (made to lie on `surface`) when every node fits the surface and every path
    // entry names a node; otherwise leaves `set` alone and explains in `error`.
    bool build(Surface* surface, SurfacePathSet& set, McString& error) const;

    // Writes a path set whose surface is stored in `surfaceFile`; the file names the surface
    // relative to its own folder where it can. Atomic: false leaves an old file untouched.
    static bool write(SurfacePathSet const& set, char const* surfaceFile, char const* fileName, McString& error);
    static std::string toText(SurfacePathSet const& set, std::string const& surfaceReference);
};
