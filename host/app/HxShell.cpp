#include "HxShell.h"

#include "HxGlobalCommands.h"
#include "HxGuiApplication.h"
#include "HxInterpreter.h"
#include "HxLineReader.h"
#include "HxResources.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {
char const* const kUsage =
    "usage: surfpath                 interactive shell\n"
    "       surfpath FILE.tcl ARGS   run a script (argv holds ARGS)\n"
    "       surfpath -e COMMAND      run one command and print its result\n"
    "       surfpath --gui [FILE...] open the window; FILEs are loaded (.tcl: run)\n";
}

HxShell::HxShell() {
    HxGlobalCommands::install();
    HxSurface::registerFileFormats();
    HxSurfacePathSet::registerFileFormats();
    HxResources::loadAll();
}

int HxShell::run(int argc, char** argv) {
    if (argc >= 2 && (!strcmp(argv[1], "-h") || !strcmp(argv[1], "--help"))) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (argc >= 2 && !strcmp(argv[1], "-e")) {
        if (argc != 3) {
            std::fputs(kUsage, stderr);
            return 2;
        }
        setArgv(argv[0], 0, nullptr);
        return runCommand(argv[2]);
    }
    if (argc >= 2 && !strcmp(argv[1], "--gui")) {
        setArgv(argv[0], 0, nullptr);
        return HxGuiApplication::run(argc, argv, argc - 2, argv + 2);
    }
    if (argc >= 2 && argv[1][0] == '-') {
        std::fprintf(stderr, "surfpath: unknown option %s\n%s", argv[1], kUsage);
        return 2;
    }
    if (argc >= 2) return runScript(argv[1], argc - 2, argv + 2);
    setArgv(argv[0], 0, nullptr);
    return runInteractive();
}

void HxShell::setArgv(char const* argv0, int argc, char** argv) {
    Tcl_Interp* interp = HxInterpreter::getTheInterpreter().getTclInterp();
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    for (int i = 0; i < argc; ++i) Tcl_ListObjAppendElement(interp, list, Tcl_NewStringObj(argv[i], -1));
    Tcl_SetVar2Ex(interp, "argv", nullptr, list, TCL_GLOBAL_ONLY);
    Tcl_SetVar2Ex(interp, "argc", nullptr, Tcl_NewIntObj(argc), TCL_GLOBAL_ONLY);
    Tcl_SetVar(interp, "argv0", argv0, TCL_GLOBAL_ONLY);
}

int HxShell::runScript(char const* file, int argc, char** argv) {
    setArgv(file, argc, argv);
    McString result;
    if (HxInterpreter::getTheInterpreter().evalFile(file, result) != TCL_OK) {
        std::fprintf(stderr, "surfpath: error in %s:\n%s\n", file, result.c_str());
        return 1;
    }
    return 0;
}

int HxShell::runCommand(char const* command) {
    McString result;
    if (HxInterpreter::getTheInterpreter().evalScript(command, result) != TCL_OK) {
        std::fprintf(stderr, "surfpath: %s\n", result.c_str());
        return 1;
    }
    if (!result.empty()) std::printf("%s\n", result.c_str());
    return 0;
}

// Reads lines until they form a complete command, evaluates it and prints the result.
int HxShell::runInteractive() {
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    HxLineReader input;
    std::string command, line;
    for (;;) {
        if (!input.readLine(command.empty() ? "surfpath> " : "> ", line)) break;
        command += line;
        command += '\n';
        if (!Tcl_CommandComplete(command.c_str())) continue;
        McString result;
        const int code = interp.evalScript(command.c_str(), result);
        command.clear();
        if (code != TCL_OK)
            std::fprintf(stderr, "error: %s\n", result.c_str());
        else if (!result.empty())
            std::printf("%s\n", result.c_str());
        std::fflush(stdout);
    }
    if (input.isTerminal()) std::fputs("\n", stdout);
    return 0;
}
