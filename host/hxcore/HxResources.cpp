#include "HxResources.h"

#include "HxDSO.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "McTypeInfo.h"

#include <algorithm>
#include <cstdlib>
#include <dirent.h>
#include <map>
#include <string>
#include <vector>

namespace {
std::map<std::string, std::string>& declaredClasses() {
    static std::map<std::string, std::string> classes;
    return classes;
}

std::vector<std::string> resourceFilesIn(McString const& dir) {
    std::vector<std::string> files;
    if (DIR* d = opendir(dir.c_str())) {
        while (dirent* entry = readdir(d)) {
            std::string name = entry->d_name;
            if (name.size() > 3 && name.compare(name.size() - 3, 3, ".rc") == 0) files.push_back(dir + "/" + name);
        }
        closedir(d);
    }
    std::sort(files.begin(), files.end());  // a stable order across machines
    return files;
}
}  // namespace

McDArray<McString> HxResources::getResourceDirs() {
    McDArray<McString> dirs;
    dirs.append(HxDSO::getLibraryDir() + "/../share/surfpath");
    if (char const* extra = std::getenv("SURFPATH_RESOURCES")) {
        std::string list = extra;
        size_t start = 0;
        while (start <= list.size()) {
            size_t end = list.find(':', start);
            if (end == std::string::npos) end = list.size();
            if (end > start) dirs.append(McString(list.substr(start, end - start)));
            start = end + 1;
        }
    }
    return dirs;
}

int HxResources::loadAll() {
    int failures = 0;
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    for (McString const& dir : getResourceDirs()) {
        for (std::string const& file : resourceFilesIn(dir)) {
            McString result;
            if (interp.evalFile(file.c_str(), result) != TCL_OK) {
                HxMessage::getTheMsg()->printf("Error in resource file %s: %s", file.c_str(), result.c_str());
                ++failures;
            }
        }
    }
    return failures;
}

void HxResources::declareClass(char const* className, char const* libraryStem) {
    declaredClasses()[className] = libraryStem;
}

char const* HxResources::libraryOfClass(char const* className) {
    auto it = declaredClasses().find(className);
    return it == declaredClasses().end() ? nullptr : it->second.c_str();
}

McDArray<McString> HxResources::getDeclaredClasses() {
    McDArray<McString> names;
    for (auto const& entry : declaredClasses()) names.append(McString(entry.first));
    return names;
}

McTypeInfo const* HxResources::findClass(char const* className, McString& error) {
    if (McTypeInfo const* type = McTypeInfo::fromName(className)) return type;
    char const* stem = libraryOfClass(className);
    if (!stem) {
        error.printf("unknown class \"%s\"", className);
        return nullptr;
    }
    McString file = McString::format("lib%s.so", stem);
    HxDSO dso;
    if (dso.open(file.c_str()) != 0) {
        error.printf("class \"%s\" is declared in %s, which could not be loaded: %s", className, file.c_str(),
                     dso.getError());
        return nullptr;
    }
    if (McTypeInfo const* type = McTypeInfo::fromName(className)) return type;
    error.printf("%s was loaded but does not register the class \"%s\"", file.c_str(), className);
    return nullptr;
}
