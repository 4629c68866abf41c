#include "HxGuiApplication.h"

#include "HxGuiCommand.h"
#include "HxMainWindow.h"
#include "HxObjectPool.h"
#include "HxWorkArea.h"

#include <Inventor/Qt/SoQt.h>

#include <QApplication>
#include <QTimer>

#include <X11/Xlib.h>
#include <tcl.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {
// Qt ends the process when it cannot reach the display; this asks first, so that the user
// gets a sentence instead.
bool displayReachable() {
    char const* name = std::getenv("DISPLAY");
    if (!name || !name[0]) {
        std::fputs("surfpath: --gui needs a display, and DISPLAY is not set (run it on a desktop, or under Xvfb)\n",
                   stderr);
        return false;
    }
    Display* display = XOpenDisplay(nullptr);
    if (!display) {
        std::fprintf(stderr, "surfpath: --gui cannot open the display \"%s\"\n", name);
        return false;
    }
    XCloseDisplay(display);
    return true;
}

// `exit` from a script or the console ends the process from inside the event loop: the objects
// go while their port widgets still exist, rather than in the process's teardown after Qt's.
[[noreturn]] void exitFromTheWindow(ClientData status) {
    HxObjectPool::getTheObjectPool().removeAll();
    Tcl_SetExitProc(nullptr);
    std::exit(int(reinterpret_cast<intptr_t>(status)));
}
}  // namespace

int HxGuiApplication::run(int argc, char** argv, int numFiles, char** files) {
    if (!displayReachable()) return 1;
    // The window always uses X, whatever platform the environment asks Qt for.
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    application.setApplicationName("surfpath");
    HxMainWindow window;
    SoQt::init(&window);
    window.createViewer();
    window.resize(1280, 860);
    window.show();
    HxGuiCommand::install(&window);
    Tcl_SetExitProc(exitFromTheWindow);
    // Tcl's own events (`after`, file events) are served between the window's.
    QTimer tclEvents;
    QObject::connect(&tclEvents, &QTimer::timeout, [] { HxWorkArea::getTheWorkArea()->update(); });
    tclEvents.start(20);
    QStringList paths;
    for (int i = 0; i < numFiles; ++i) paths << QString::fromLocal8Bit(files[i]);
    QTimer::singleShot(0, &window, [&window, paths] { window.openFiles(paths); });
    const int code = application.exec();
    Tcl_SetExitProc(nullptr);
    HxGuiCommand::uninstall();
    return code;
}
