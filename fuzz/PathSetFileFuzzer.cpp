// Any text as a path set file on the cube: refused with a reason, or a consistent set that
// saves and reads back as the same set.

#include "FuzzSupport.h"
#include "PathSetFile.h"

#include <string>

namespace {

bool readSet(std::string const& text, Surface* cube, SurfacePathSet& set, McString& error) {
    PathSetFile file;
    return file.parse(text, "/nonexistent", error) && file.build(cube, set, error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    static Surface cube = makeCube();
    SurfacePathSet set(&cube);
    McString error;
    if (!readSet(std::string(reinterpret_cast<char const*>(data), size), &cube, set, error)) {
        if (error.empty()) fuzzFailure("a path set file was refused without a reason");
        return 0;
    }
    McString problem;
    if (!set.isConsistent(false, nullptr, problem)) fuzzFailure("an accepted path set is inconsistent: %s", problem.c_str());

    const std::string saved = PathSetFile::toText(set, "cube.off");
    SurfacePathSet again(&cube);
    if (!readSet(saved, &cube, again, error)) fuzzFailure("a saved path set does not read back: %s", error.c_str());
    if (PathSetFile::toText(again, "cube.off") != saved) fuzzFailure("a saved path set reads back changed:\n%s", saved.c_str());
    return 0;
}
