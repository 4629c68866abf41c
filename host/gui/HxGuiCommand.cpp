#include "HxGuiCommand.h"

#include "HxInterpreter.h"
#include "HxMainWindow.h"
#include "HxObjectList.h"
#include "HxObjectPool.h"

#include <QApplication>
#include <QPixmap>
#include <QScreen>

#include <cstring>

namespace {
HxMainWindow* theWindow = nullptr;
char const* const kUsage = "gui snapshot FILE | gui select OBJECT | gui isOpen";

// The screen's pixels, not a widget rendering: the GL viewer is only there.
int snapshot(Tcl_Interp* interp, char const* file) {
    QApplication::processEvents();
    QScreen* screen = theWindow->screen();
    QPixmap picture = screen ? screen->grabWindow(theWindow->winId()) : QPixmap();
    if (picture.isNull()) {
        Tcl_VaSetResult(interp, "cannot take a picture of the window: it is not on a screen");
        return TCL_ERROR;
    }
    if (!picture.save(QString::fromUtf8(file), "PNG")) {
        Tcl_VaSetResult(interp, "cannot write the picture to \"%s\"", file);
        return TCL_ERROR;
    }
    return TCL_OK;
}

int guiCmd(ClientData, Tcl_Interp* interp, int argc, char const** argv) {
    if (argc == 3 && !strcmp(argv[1], "snapshot")) return snapshot(interp, argv[2]);
    if (argc == 3 && !strcmp(argv[1], "select")) {
        if (!HxObjectPool::getTheObjectPool().findObject(argv[2])) {
            Tcl_VaSetResult(interp, "no object \"%s\"", argv[2]);
            return TCL_ERROR;
        }
        theWindow->getObjectList()->select(argv[2]);
        return TCL_OK;
    }
    if (argc == 2 && !strcmp(argv[1], "isOpen")) {
        Tcl_SetObjResult(interp, Tcl_NewIntObj(theWindow->isVisible() ? 1 : 0));
        return TCL_OK;
    }
    return cmdError(interp, HX_CMD_WRONG_ARGS, kUsage);
}
}  // namespace

void HxGuiCommand::install(HxMainWindow* window) {
    theWindow = window;
    HxInterpreter::getTheInterpreter().addCommand("gui", guiCmd, nullptr);
    for (HxCmdInfo const& info : getCmdInfo())
        if (info.name == "gui") return;
    getCmdInfo().append(HxCmdInfo{"gui", McString::format("%s  -- the window", kUsage)});
}

void HxGuiCommand::uninstall() {
    HxInterpreter::getTheInterpreter().removeCommand("gui");
    theWindow = nullptr;
}
