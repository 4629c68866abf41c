// fuzz_seeds MESH_DIR BAD_INPUT_DIR TCL_SEED_DIR OUT_DIR: the fuzz targets' first corpora.
// Every small real mesh goes to each surface format's folder, as itself and saved in that
// format; each bad input goes to the folder of its extension; the path set folder gets the
// fixed path set as saved; the command folder gets the hand-written scripts.

#include "FuzzSupport.h"
#include "PathSetFile.h"
#include "SurfaceIO.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

// Larger meshes slow every mutation down and add little that the small ones lack.
constexpr uintmax_t kMaxSeedBytes = 24 * 1024;
char const* const kSurfaceFolders[] = {"off", "obj", "ply", "stl"};

// The folder for a file of this extension, or null.
char const* folderOf(fs::path const& file) {
    std::string extension = file.extension().string();
    for (char& c : extension) c = char(tolower(c));
    for (char const* folder : kSurfaceFolders)
        if (extension == std::string(".") + folder) return folder;
    return extension == ".json" ? "pathset" : nullptr;
}

void copyInto(fs::path const& file, fs::path const& folder) {
    fs::copy_file(file, folder / file.filename(), fs::copy_options::overwrite_existing);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        fprintf(stderr, "usage: fuzz_seeds MESH_DIR BAD_INPUT_DIR TCL_SEED_DIR OUT_DIR\n");
        return 2;
    }
    const fs::path out = argv[4];
    for (char const* folder : {"off", "obj", "ply", "stl", "pathset", "tcl"}) fs::create_directories(out / folder);

    int meshes = 0;
    for (fs::directory_entry const& entry : fs::directory_iterator(argv[1])) {
        char const* folder = folderOf(entry.path());
        if (!folder || !entry.is_regular_file() || entry.file_size() > kMaxSeedBytes) continue;
        copyInto(entry.path(), out / folder);
        Surface surface;
        McString error, warnings;
        if (!SurfaceIO::read(entry.path().c_str(), surface, error, warnings)) continue;
        ++meshes;
        for (char const* format : kSurfaceFolders) {
            const fs::path saved = out / format / (entry.path().stem().string() + "-saved." + format);
            if (!SurfaceIO::write(surface, saved.c_str(), error)) {
                fprintf(stderr, "fuzz_seeds: %s: %s\n", saved.c_str(), error.c_str());
                return 1;
            }
        }
    }
    for (fs::directory_entry const& entry : fs::directory_iterator(argv[2]))
        if (char const* folder = folderOf(entry.path())) copyInto(entry.path(), out / folder);
    for (fs::directory_entry const& entry : fs::directory_iterator(argv[3])) copyInto(entry.path(), out / "tcl");

    Surface cube = makeCube();
    SurfacePathSet set(&cube);
    fillPathSet(set, &cube);
    std::ofstream(out / "pathset" / "cube-paths.json") << PathSetFile::toText(set, "cube.off");
    printf("fuzz_seeds: %d meshes in every surface format\n", meshes);
    return 0;
}
