#pragma once
// HxTclConsoleChannel: Tcl's standard output and error channels while the window is open, so
// that what scripts `puts` (and the errors of `after` scripts) shows in the console as well
// as on the terminal. Complete lines are passed on; a line is held until its newline.

class HxConsoleOutput;

class HxTclConsoleChannel {
  public:
    // Replaces Tcl's stdout and stderr with channels into `console`.
    static void install(HxConsoleOutput* console);
    // Gives Tcl back the terminal's channels.
    static void uninstall();
};
