#include "HxData.h"

#include "HxInterpreter.h"

#include <cstring>
#include <filesystem>

MC_TYPED_IMPL(HxData, HxObject)

bool HxData::saveFile(char const* fileName, McString& error) {
    error.printf("%s objects cannot be saved", getTypeId()->getName());
    return false;
}

void HxData::setFileName(char const* fileName) {
    std::error_code ignored;
    const std::filesystem::path absolute = std::filesystem::absolute(fileName ? fileName : "", ignored);
    mFileName = fileName && *fileName ? absolute.lexically_normal().string() : "";
}

int HxData::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc >= 2 && !strcmp(argv[1], "save")) {
        if (argc != 3) return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s save FILE", argv[0]).c_str());
        McString error;
        if (!saveFile(argv[2], error)) {
            Tcl_VaSetResult(interp, "cannot save %s to \"%s\": %s", getLabel(), argv[2], error.c_str());
            return TCL_ERROR;
        }
        setFileName(argv[2]);
        return TCL_OK;
    }
    return HxObject::parse(interp, argc, argv);
}
