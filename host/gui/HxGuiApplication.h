#pragma once
// HxGuiApplication: `surfpath --gui`: the window on this display, with files opened once it
// is up.

class HxGuiApplication {
  public:
    // Opens the window, loads `files` (surfaces, path sets, Tcl scripts, in order) and runs
    // until the window closes. Returns the process exit code; 1 without a display.
    static int run(int argc, char** argv, int numFiles, char** files);
};
