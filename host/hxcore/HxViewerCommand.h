#pragma once
// HxViewerCommand: the global Tcl command `viewer ID SUBCMD ...`, through which scripts size,
// frame, draw and photograph a viewer, and send it the same mouse and key events a window
// sends (see HxController for where they go).

class HxViewerCommand {
  public:
    // Registers the command and its usage in getCmdInfo(). Idempotent.
    static void install();
};
