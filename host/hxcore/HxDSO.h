#pragma once
// HxDSO: loads a shared library from the host's library folder. Only a bare file name is
// accepted, so no path given by a script ever reaches the dynamic loader. Libraries stay
// loaded for the life of the process: destroying the loader does not unload them.

#include "McDArray.h"
#include "McString.h"

class HxDSO {
  public:
    HxDSO() = default;
    ~HxDSO() = default;

    // Loads `file` (for example "libhxsurfacepathedit.so") from the library folder.
    // Returns 0 on success; on failure getError() says why.
    int open(char const* file);
    char const* getError() const { return mError.c_str(); }

    // The folder that holds the host's own libraries and its plug-ins.
    static McString getLibraryDir();
    // The file names loaded so far, in load order.
    static McDArray<McString> const& getLoadedFiles();
    static bool isLoaded(char const* file);

  private:
    McString mError;
};
