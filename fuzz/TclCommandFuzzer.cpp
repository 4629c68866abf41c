// Any lines of host commands, from `load` of the scratch folder's files to the ports of the
// objects they make: errors come back as Tcl errors, never as crashes.
//
// Each line is one command as a Tcl list, run word for word with no substitution, and only if
// its first word is a host command or an object; the Tcl language itself is not under test
// (`while 1 {}` would hang any interpreter). The interpreter is made safe as well, so that no
// host command that evaluates a script can reach files or processes, and a word holding a
// '/' or starting with '~' is refused: files that `load`, `save`, `export` and `snapshot`
// name lie in the scratch folder, the working directory while a command runs.

#include "FuzzSupport.h"
#include "HxGlobalCommands.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "PathSetFile.h"
#include "SurfaceIO.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

constexpr int kMaxCommands = 24;
char const* const kScratchFiles[] = {"cube.off", "paths.json", "short.off"};

Tcl_Interp* startHost() {
    Tcl_Interp* interp = HxInterpreter::getTheInterpreter().getTclInterp();
    // Before the host's commands: Tcl's own `load` is hidden, the host's comes after.
    if (Tcl_MakeSafe(interp) != TCL_OK) fuzzFailure("cannot make the interpreter safe");
    HxGlobalCommands::install();
    HxSurface::registerFileFormats();
    HxSurfacePathSet::registerFileFormats();

    static Surface cube = makeCube();
    SurfacePathSet set(&cube);
    fillPathSet(set, &cube);
    McString error;
    const std::string cubeFile = scratchFolder() + "/cube.off";
    if (!SurfaceIO::write(cube, cubeFile.c_str(), error) ||
        !PathSetFile::write(set, cubeFile.c_str(), (scratchFolder() + "/paths.json").c_str(), error))
        fuzzFailure("cannot write the scratch files: %s", error.c_str());
    static char const bad[] = "OFF\n3 1 0\n0 0 0\n1 0 0\n";
    writeScratchFile("short.off", reinterpret_cast<uint8_t const*>(bad), sizeof bad - 1);
    return interp;
}

bool isHostCommand(char const* name) {
    for (HxCmdInfo const& info : getCmdInfo())
        if (info.name == name) return true;
    return HxObjectPool::getTheObjectPool().findObject(name) != nullptr;
}

bool isContained(int objc, Tcl_Obj** objv) {
    for (int i = 0; i < objc; ++i) {
        char const* word = Tcl_GetString(objv[i]);
        if (strchr(word, '/') || word[0] == '~') return false;
    }
    return true;
}

void runLine(Tcl_Interp* interp, std::string const& line) {
    Tcl_Obj* list = Tcl_NewStringObj(line.data(), int(line.size()));
    Tcl_IncrRefCount(list);
    int objc = 0;
    Tcl_Obj** objv = nullptr;
    if (Tcl_ListObjGetElements(nullptr, list, &objc, &objv) == TCL_OK && objc > 0 &&
        isHostCommand(Tcl_GetString(objv[0])) && isContained(objc, objv)) {
        // libFuzzer's own folders may be relative to the caller's working directory.
        const int caller = open(".", O_RDONLY | O_DIRECTORY);
        if (caller < 0 || chdir(scratchFolder().c_str()) != 0) fuzzFailure("cannot enter %s", scratchFolder().c_str());
        Tcl_EvalObjv(interp, objc, objv, TCL_EVAL_GLOBAL);
        if (fchdir(caller) != 0) fuzzFailure("cannot return to the working directory");
        close(caller);
    }
    Tcl_ResetResult(interp);
    Tcl_DecrRefCount(list);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    static Tcl_Interp* interp = startHost();
    std::string text(reinterpret_cast<char const*>(data), size);
    size_t start = 0;
    for (int n = 0; n < kMaxCommands && start < text.size(); ++n) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        runLine(interp, text.substr(start, end - start));
        start = end + 1;
    }
    HxObjectPool::getTheObjectPool().removeAll();
    // What an input saved would make the next one behave differently.
    for (auto const& entry : std::filesystem::directory_iterator(scratchFolder())) {
        const std::string name = entry.path().filename().string();
        if (std::find(std::begin(kScratchFiles), std::end(kScratchFiles), name) == std::end(kScratchFiles))
            std::filesystem::remove_all(entry.path());
    }
    return 0;
}
