#pragma once
// SurfacePathEditorFactory: lists the available path editors and makes one by its type name.
// It keeps no table of its own: the editors are configured in three parallel Tcl lists,
// read row by row, so that scripts and further libraries can add editors:
//   hxsurfacepathedit::editorTypes    the name shown in the menu and asked for
//   hxsurfacepathedit::editorClasses  the registered class to instantiate
//   hxsurfacepathedit::editorLibs     the stem of the library holding it (lib<stem>.so)

#include "McString.h"

class HxPortMultiMenu;
class HxSurfacePathSet;
class SurfacePathEditorViewerBase;

class SurfacePathEditorFactory {
  public:
    // A new editor bound to (and activated on) `ps`, owned by the caller; null when the set
    // has no surface, the type is not configured, its library or class is missing, or the
    // editor declines the set. Only the missing library and class are reported.
    static SurfacePathEditorViewerBase* createEditor(char const* type, HxSurfacePathSet* ps);
    // Fills menu 0 with the type names of the list variable `listVar`, or of editorTypes
    // when that list is unset or empty.
    static void initPortEditors(HxPortMultiMenu* menu, McString const& listVar);

  private:
    static int listLength(char const* listVar);
    static McString listItem(char const* listVar, int i);
    // The first row of editorTypes naming `type`, -1 for none.
    static int findRow(char const* type);
    static bool loadLibraryOfRow(int row);
    static SurfacePathEditorViewerBase* instantiateClassOfRow(int row);
};
