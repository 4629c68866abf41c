#include "HxDSO.h"

#include <dlfcn.h>

#include <cstring>

namespace {
McDArray<McString>& loadedFiles() {
    static McDArray<McString> files;
    return files;
}
}  // namespace

McString HxDSO::getLibraryDir() {
    // This function lives in the host's core library; its folder is the library folder.
    Dl_info info;
    if (!dladdr(reinterpret_cast<void*>(&HxDSO::getLibraryDir), &info) || !info.dli_fname) return ".";
    McString path = info.dli_fname;
    const size_t slash = path.rfind('/');
    return slash == McString::npos ? McString(".") : McString(path.substr(0, slash));
}

McDArray<McString> const& HxDSO::getLoadedFiles() { return loadedFiles(); }

bool HxDSO::isLoaded(char const* file) {
    for (McString const& loaded : loadedFiles())
        if (loaded == file) return true;
    return false;
}

int HxDSO::open(char const* file) {
    mError.clear();
    if (!file || !file[0] || strchr(file, '/') || !strcmp(file, ".") || !strcmp(file, "..")) {
        mError.printf("\"%s\" is not a library file name (a name like libNAME.so, without a folder)", file ? file : "");
        return 1;
    }
    if (isLoaded(file)) return 0;
    McString path = getLibraryDir() + "/" + file;
    // RTLD_GLOBAL: a package's editors may live in further libraries that use its symbols.
    if (!dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL)) {
        char const* reason = dlerror();
        mError.printf("cannot load %s: %s", path.c_str(), reason ? reason : "unknown reason");
        return 1;
    }
    loadedFiles().append(file);
    return 0;
}
