#pragma once
// HxGuiCommand: the Tcl command `gui`, present while the window is open:
//   gui snapshot FILE   writes a PNG of the whole window as it is on the screen
//   gui select OBJECT   selects an object in the list, showing its ports
//   gui isOpen          1 while the window is shown

class HxMainWindow;

class HxGuiCommand {
  public:
    static void install(HxMainWindow* window);
    static void uninstall();
};
