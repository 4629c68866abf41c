#include "HxFileFormats.h"

#include "HxData.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <sys/stat.h>

namespace {
struct Format {
    std::string description;
    HxFileFormats::Reader reader;
};

std::map<std::string, Format>& formats() {
    static std::map<std::string, Format> table;
    return table;
}

std::string extensionOf(std::string const& fileName) {
    const size_t slash = fileName.rfind('/');
    const size_t dot = fileName.rfind('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string ext = fileName.substr(dot + 1);
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
    return ext;
}

McString knownFormats() {
    McString list;
    for (auto const& entry : formats()) list += (list.empty() ? "." : ", .") + entry.first;
    return list.empty() ? McString("none") : list;
}
}  // namespace

void HxFileFormats::registerReader(char const* extension, char const* description, Reader reader) {
    formats()[extension] = Format{description, reader};
}

McDArray<McString> HxFileFormats::getExtensions() {
    McDArray<McString> list;
    for (auto const& entry : formats()) list.append(McString(entry.first));
    return list;
}

HxData* HxFileFormats::read(char const* fileName, McString& error) {
    const std::string ext = extensionOf(fileName);
    auto it = formats().find(ext);
    if (it == formats().end()) {
        error.printf("unknown file format%s%s (known formats: %s)", ext.empty() ? "" : " .", ext.c_str(),
                     knownFormats().c_str());
        return nullptr;
    }
    struct stat info;
    if (stat(fileName, &info) != 0) {
        error = "no such file";
        return nullptr;
    }
    if (!S_ISREG(info.st_mode)) {
        error = "not a regular file";
        return nullptr;
    }
    return it->second.reader(fileName, error);
}
