#pragma once
// HxFileFormats: the readers behind the `load` command, one per file name extension.

#include "McDArray.h"
#include "McString.h"

class HxData;

class HxFileFormats {
  public:
    // Reads a file into a new data object; on failure returns null and explains in `error`.
    using Reader = HxData* (*)(char const* fileName, McString& error);

    // `extension` without the dot, in lower case (for example "off").
    static void registerReader(char const* extension, char const* description, Reader reader);
    static McDArray<McString> getExtensions();

    // Reads a file with the reader of its extension. Null with a message in `error` for an
    // unknown extension, a missing file or a reader failure.
    static HxData* read(char const* fileName, McString& error);
};
