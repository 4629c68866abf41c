#pragma once
// HxGlobalCommands: the host's global Tcl commands (create, remove, all, load, dso, help).

class HxGlobalCommands {
  public:
    // Registers the commands in the interpreter and their usage in getCmdInfo(). Idempotent.
    static void install();
};
