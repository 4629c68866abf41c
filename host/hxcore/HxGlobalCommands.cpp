#include "HxGlobalCommands.h"

#include "HxDSO.h"
#include "HxData.h"
#include "HxEditor.h"
#include "HxModule.h"
#include "HxFileFormats.h"
#include "HxInterpreter.h"
#include "HxObject.h"
#include "HxObjectPool.h"
#include "HxResources.h"
#include "HxViewerCommand.h"

#include <cstring>
#include <string>

namespace {

using Argv = char const**;

char const* baseName(char const* path) {
    char const* slash = strrchr(path, '/');
    return slash ? slash + 1 : path;
}

int usageError(Tcl_Interp* interp, char const* name) {
    for (HxCmdInfo const& info : getCmdInfo())
        if (info.name == name) return cmdError(interp, HX_CMD_WRONG_ARGS, info.usage.c_str());
    return cmdError(interp, HX_CMD_WRONG_ARGS, name);
}

int createCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc < 2 || argc > 3) return usageError(interp, "create");
    McString error;
    McTypeInfo const* type = HxResources::findClass(argv[1], error);
    if (!type) {
        Tcl_VaSetResult(interp, "cannot create %s: %s", argv[1], error.c_str());
        return TCL_ERROR;
    }
    if (!type->canCreate() || !type->isOfType(HxObject::getClassTypeId())) {
        Tcl_VaSetResult(interp, "cannot create %s: it is not a class of objects that can be created by name", argv[1]);
        return TCL_ERROR;
    }
    auto* object = static_cast<HxObject*>(type->createInstance());
    object->HxBase::setLabel(argc == 3 ? argv[2] : argv[1]);
    HxObjectPool::getTheObjectPool().addObject(object);
    Tcl_SetResult(interp, const_cast<char*>(object->getLabel()), TCL_VOLATILE);
    return TCL_OK;
}

int removeCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    HxObjectPool& pool = HxObjectPool::getTheObjectPool();
    if (argc < 2) return usageError(interp, "remove");
    if (argc == 2 && !strcmp(argv[1], "-all")) {
        pool.removeAll();
        return TCL_OK;
    }
    // Check every name first, so that a typo removes nothing.
    for (int i = 1; i < argc; ++i) {
        if (!pool.findObject(argv[i])) {
            Tcl_VaSetResult(interp, "cannot remove \"%s\": there is no such object", argv[i]);
            return TCL_ERROR;
        }
    }
    for (int i = 1; i < argc; ++i)
        if (HxObject* object = pool.findObject(argv[i])) pool.removeObject(object);
    return TCL_OK;
}

int allCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc > 2) return usageError(interp, "all");
    McTypeInfo const* type = nullptr;
    if (argc == 2 && !(type = McTypeInfo::fromName(argv[1]))) {
        Tcl_VaSetResult(interp, "unknown class \"%s\"", argv[1]);
        return TCL_ERROR;
    }
    for (HxObject* object : HxObjectPool::getTheObjectPool().getObjectsOfType(type))
        Tcl_AppendElement(interp, object->getLabel());
    return TCL_OK;
}

int loadCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc != 2) return usageError(interp, "load");
    McString error;
    HxData* data = HxFileFormats::read(argv[1], error);
    if (!data) {
        Tcl_VaSetResult(interp, "cannot load \"%s\": %s", argv[1], error.c_str());
        return TCL_ERROR;
    }
    data->HxBase::setLabel(baseName(argv[1]));
    if (!*data->getFileName()) data->setFileName(argv[1]);
    HxObjectPool::getTheObjectPool().addObject(data);
    Tcl_SetResult(interp, const_cast<char*>(data->getLabel()), TCL_VOLATILE);
    return TCL_OK;
}

int dsoCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc >= 2 && !strcmp(argv[1], "declare") && argc >= 4) {
        for (int i = 3; i < argc; ++i) HxResources::declareClass(argv[i], argv[2]);
        return TCL_OK;
    }
    if (argc == 3 && !strcmp(argv[1], "open")) {
        McString file = McString::format("lib%s.so", argv[2]);
        HxDSO dso;
        if (dso.open(file.c_str()) != 0) {
            Tcl_VaSetResult(interp, "%s", dso.getError());
            return TCL_ERROR;
        }
        return TCL_OK;
    }
    if (argc == 2 && !strcmp(argv[1], "loaded")) {
        for (McString const& file : HxDSO::getLoadedFiles()) Tcl_AppendElement(interp, file.c_str());
        return TCL_OK;
    }
    if (argc == 2 && !strcmp(argv[1], "classes")) {
        for (McString const& name : HxResources::getDeclaredClasses()) Tcl_AppendElement(interp, name.c_str());
        return TCL_OK;
    }
    return usageError(interp, "dso");
}

int helpCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc > 2) return usageError(interp, "help");
    std::string text;
    for (HxCmdInfo const& info : getCmdInfo()) {
        if (argc == 2 && info.name != argv[1]) continue;
        if (!text.empty()) text += '\n';
        text += info.usage;
    }
    if (text.empty()) {
        Tcl_VaSetResult(interp, "no help for \"%s\"; \"help\" lists every command", argv[1]);
        return TCL_ERROR;
    }
    Tcl_SetObjResult(interp, Tcl_NewStringObj(text.c_str(), -1));
    return TCL_OK;
}

void addCommand(char const* name, Tcl_CmdProc* proc, char const* usage) {
    HxInterpreter::getTheInterpreter().addCommand(name, proc, nullptr);
    for (HxCmdInfo const& info : getCmdInfo())
        if (info.name == name) return;
    getCmdInfo().append(HxCmdInfo{name, usage});
}

}  // namespace

void HxGlobalCommands::install() {
    // The host's own classes are known by name from the start, like those of loaded packages.
    HxBase::initClass();
    HxObject::initClass();
    HxData::initClass();
    HxModule::initClass();
    HxEditor::initClass();
    addCommand("create", createCmd, "create CLASS ?NAME?  -- make an object of a class; returns its name");
    addCommand("remove", removeCmd, "remove NAME ?NAME ...? | remove -all  -- delete objects");
    addCommand("all", allCmd, "all ?CLASS?  -- names of all objects, or of those of a class");
    addCommand("load", loadCmd, "load FILE  -- read a data file; returns the new object's name");
    addCommand("dso", dsoCmd,
               "dso declare LIBSTEM CLASS ?CLASS ...? | dso open LIBSTEM | dso loaded | dso classes"
               "  -- plug-in libraries and the classes they hold");
    addCommand("help", helpCmd, "help ?COMMAND?  -- list the commands with their usage");
    HxViewerCommand::install();
}
