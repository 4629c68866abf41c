#include "SurfacePathEditorFactory.h"

#include "HxDSO.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxPortMultiMenu.h"
#include "HxSurfacePathSet.h"
#include "SurfacePathEditorViewerBase.h"

#include <cstdlib>
#include <cstring>

namespace {
char const* const editorTypes = "hxsurfacepathedit::editorTypes";
char const* const editorClasses = "hxsurfacepathedit::editorClasses";
char const* const editorLibs = "hxsurfacepathedit::editorLibs";
}  // namespace

// The interpreter's error state is not looked at: a malformed list gives whatever text
// llength and lindex leave, and a missing row gives "".
int SurfacePathEditorFactory::listLength(char const* listVar) {
    return static_cast<int>(strtol(HxInterpreter::getTheInterpreter().eval("llength $%s", listVar), nullptr, 10));
}

McString SurfacePathEditorFactory::listItem(char const* listVar, int i) {
    return HxInterpreter::getTheInterpreter().eval("lindex $%s %d", listVar, i);
}

int SurfacePathEditorFactory::findRow(char const* type) {
    if (!HxInterpreter::getTheInterpreter().getVar(editorTypes)) return -1;
    const int n = listLength(editorTypes);
    for (int i = 0; i < n; ++i)
        if (listItem(editorTypes, i) == type) return i;
    return -1;
}

bool SurfacePathEditorFactory::loadLibraryOfRow(int row) {
    McString file = McString::format("lib%s.so", listItem(editorLibs, row).c_str());
    // The loader never unloads, so the editor's code stays after it is gone.
    HxDSO dso;
    if (dso.open(file.c_str()) == 0) return true;
    HxMessage::getTheMsg()->printf("Internal error: could not open %s", file.c_str());
    return false;
}

SurfacePathEditorViewerBase* SurfacePathEditorFactory::instantiateClassOfRow(int row) {
    McString className = listItem(editorClasses, row);
    McTypeInfo const* type = McTypeInfo::fromName(className.c_str());
    if (!type) {
        HxMessage::getTheMsg()->printf("Internal error: displacer %s could not be created", className.c_str());
        return nullptr;
    }
    // The configuration is trusted to name editor classes; the object is not type-tested.
    return static_cast<SurfacePathEditorViewerBase*>(type->createInstance());
}

SurfacePathEditorViewerBase* SurfacePathEditorFactory::createEditor(char const* type, HxSurfacePathSet* ps) {
    if (!ps || !ps->getSurface()) return nullptr;
    const int row = findRow(type ? type : "");
    if (row < 0 || !loadLibraryOfRow(row)) return nullptr;
    SurfacePathEditorViewerBase* editor = instantiateClassOfRow(row);
    if (!editor) return nullptr;
    // setPathSet activates the editor before it is asked; its destructor deactivates it again.
    editor->setPathSet(ps);
    if (!editor->canEditPathSet(ps)) {
        delete editor;
        return nullptr;
    }
    return editor;
}

void SurfacePathEditorFactory::initPortEditors(HxPortMultiMenu* menu, McString const& listVar) {
    HxInterpreter& interpreter = HxInterpreter::getTheInterpreter();
    char const* list = editorTypes;
    if (interpreter.getVar(listVar.c_str()) && listLength(listVar.c_str()) != 0) {
        list = listVar.c_str();
    } else if (!interpreter.getVar(editorTypes)) {
        HxMessage::getTheMsg()->printf("Internal error: missing editor info");
        return;
    }
    // An empty default list is not caught: it leaves a menu without entries.
    const int n = listLength(list);
    menu->setNum(0, n);
    for (int i = 0; i < n; ++i) menu->setLabel(0, i, listItem(list, i).c_str());
}
