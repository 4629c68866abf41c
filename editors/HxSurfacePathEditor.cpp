#include "HxSurfacePathEditor.h"

#include "HxDisplaySurfacePathSet.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxPortButtonList.h"
#include "HxPortMultiMenu.h"
#include "HxPortObserver.h"
#include "HxSurfacePathSet.h"
#include "HxWorkArea.h"
#include "SurfacePathEditorFactory.h"
#include "SurfacePathEditorGUIBase.h"

#include <cstdlib>
#include <cstring>

MC_TYPED_IMPL_CREATABLE(HxSurfacePathEditor, HxEditor)

HxSurfacePathEditor::HxSurfacePathEditor() : HxEditor(HxSurfacePathSet::getClassTypeId()) {
    setLabel("SurfacePathEditor");
    HxMessage::getTheMsg()->printf("Creating %s", getLabel());
}

SurfacePathEditorGUIBase* HxSurfacePathEditor::guiEditor() const {
    return static_cast<SurfacePathEditorGUIBase*>(editor);
}

// === Attaching and detaching

void HxSurfacePathEditor::startEditing(HxData* data) {
    HxEditor::startEditing(data);
    pathSet = data && data->isOfType(HxSurfacePathSet::getClassTypeId()) ? static_cast<HxSurfacePathSet*>(data)
                                                                         : nullptr;
    if (!pathSet) return;
    if (!pathSet->getSurface()) {
        stopEditing();
        HxMessage::getTheMsg()->error("PathSet is not attached to a surface! Cannot start editor!", nullptr, nullptr,
                                      nullptr, -1, -1);
        return;
    }
    createStartPorts();
    if (!portWidgetsCreated) {
        HxEditor::createPortWidgets(data);
        portWidgetsCreated = true;
    }
    HxWorkArea::getTheWorkArea()->update();
}

void HxSurfacePathEditor::createStartPorts() {
    portEditorTypes = new HxPortMultiMenu(this, "portEditorTypes", 1);
    portEditorTypes->setLabel("EditorGUI");
    SurfacePathEditorFactory::initPortEditors(portEditorTypes, McString());
    portEditorTypes->show();

    portStartEditor = new HxPortButtonList(this, "portStartEditor", 1);
    portStartEditor->setLabel("Start selected editor");
    portStartEditor->setLabel(0, "start");
    portStartEditor->setSensitivity(0, true);
    portStartEditor->show();
}

void HxSurfacePathEditor::stopEditing() {
    // Deactivating fires the path set, which updates this module again: by then the module
    // must see neither the editor nor a start button that could start another one.
    SurfacePathEditorViewerBase* stopped = editor;
    editor = nullptr;
    portEditorTypes = nullptr;
    portStartEditor = nullptr;
    if (stopped) {
        stopped->deactivate();
        delete stopped;
    }
    deleteAllPorts();
    portWidgetsCreated = false;
    requestedEditor = -1;
    HxEditor::stopEditing();
}

void HxSurfacePathEditor::deleteAllPorts() {
    // The list holds the editor's ports as well as ours; the data connection is the host
    // base's member and stays.
    McDArray<HxPort*> const& ports = getPorts();
    for (int64_t i = ports.size() - 1; i >= 0; --i)
        if (ports[i] != &portData) delete ports[i];
    // A GUI must drop the widgets of the deleted ports.
    HxPortObserver::notifyPortsChanged(this);
}

// === Updates

void HxSurfacePathEditor::update() {
    // A path set that is no longer connected may be gone: the pointer kept after stopEditing
    // is only used while the data connection still holds it.
    if (!pathSet || portData.getSource() != pathSet) return;
    if (!pathSet->getSurface()) stopEditing();
    if (editor) {
        guiEditor()->update();
        touchAndFirePathSet();
    }
    if (portEditorTypes && portStartEditor && portStartEditor->isNew()) {
        if (portStartEditor->getIndex() != 0) return;
        startSelectedEditor();
        if (!editor) return;
    }
    updateDisplay();
}

void HxSurfacePathEditor::startSelectedEditor() {
    char const* type = portEditorTypes->getLabel(0, portEditorTypes->getIndex(0));
    editor = SurfacePathEditorFactory::createEditor(type, pathSet);
    if (!editor) return;
    guiEditor()->initButtons(this);
    init();
    portEditorTypes->hide();
    portStartEditor->hide();
    createPortWidgets(pathSet);
}

void HxSurfacePathEditor::init() {
    if (editor) {
        guiEditor()->init();
        touchAndFirePathSet();
    }
    if (!pathSet || !pathSet->getSurface()) return;
    updateDisplay();
}

void HxSurfacePathEditor::updateDisplay() {
    pathSet->getDisplaySurfacePathSet(true)->refresh();
    if (editor) guiEditor()->checkButtons();
}

void HxSurfacePathEditor::touchAndFirePathSet() {
    pathSet->touch(~0u);
    pathSet->fire(1);
}

// === Tcl

int HxSurfacePathEditor::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (!editor) return parseWithoutEditor(interp, argc, argv);
    // The editor's own code is not passed on: anything but "unknown or failed" is success.
    if (guiEditor()->parse(interp, argc, argv) != TCL_ERROR) return TCL_OK;
    // A command the editor refused with a reason (a wrong use of its own word) still goes to
    // the host; when the host does not know it either, the editor's reason is the better one.
    McString const editorReason = Tcl_GetStringResult(interp);
    const int code = HxEditor::parse(interp, argc, argv);
    if (code == TCL_ERROR && !editorReason.empty()) Tcl_SetResult(interp, const_cast<char*>(editorReason.c_str()), TCL_VOLATILE);
    return code;
}

int HxSurfacePathEditor::parseWithoutEditor(Tcl_Interp* interp, int argc, char** argv) {
    // Appended on every call, so the list grows with each command; kept that way on purpose.
    getCmdInfo().append(HxCmdInfo{"create", ""});
    if (argc >= 2 && !strcmp(argv[1], "create")) {
        if (argc != 3) return cmdError(interp, HX_CMD_BAD_VALUE, argv[1]);
        requestedEditor = static_cast<int>(strtol(argv[2], nullptr, 10));
        return TCL_OK;
    }
    return HxEditor::parse(interp, argc, argv);
}
