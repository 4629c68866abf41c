#pragma once
// HxResources: the resource scripts of the installed packages and the classes they declare.
//
// At start the host sources every *.rc file of its share folder (and of the folders listed
// in the environment variable SURFPATH_RESOURCES, separated by colons). A resource script
// declares which creatable classes a package's library holds:
//     dso declare hxsurfacepathedit HxSurfacePathEditor
// The library (libhxsurfacepathedit.so) is loaded the first time one of them is created.

#include "McDArray.h"
#include "McString.h"

class McTypeInfo;

class HxResources {
  public:
    // The folders searched for resource scripts, share folder first.
    static McDArray<McString> getResourceDirs();
    // Sources every resource script; returns the number of scripts that failed (each
    // failure is reported on the console with the file name).
    static int loadAll();

    static void declareClass(char const* className, char const* libraryStem);
    // The library stem that holds a declared class, or null.
    static char const* libraryOfClass(char const* className);
    static McDArray<McString> getDeclaredClasses();

    // The type record of `className`, loading the library that declares it if needed.
    // Null with an explanation in `error` when there is no such class.
    static McTypeInfo const* findClass(char const* className, McString& error);
};
