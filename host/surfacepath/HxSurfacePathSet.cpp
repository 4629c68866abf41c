#include "HxSurfacePathSet.h"

#include "HxDisplayModules.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxFileFormats.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "PathConnector.h"
#include "PathConnectorFactory.h"
#include "PathSetExport.h"
#include "PathSetFile.h"
#include "SurfaceIO.h"
#include "SurfaceNodeWord.h"

#include <cstring>
#include <filesystem>
#include <utility>

MC_TYPED_IMPL_CREATABLE(HxSurfacePathSet, HxData)

namespace {

char const* baseName(char const* path) {
    char const* slash = strrchr(path, '/');
    return slash ? slash + 1 : path;
}

bool isSameFile(char const* a, char const* b) {
    if (!strcmp(a, b)) return true;
    std::error_code error;
    return *a && *b && std::filesystem::equivalent(a, b, error) && !error;
}

HxSurface* findSurfaceOfFile(char const* fileName) {
    for (HxObject* object : HxObjectPool::getTheObjectPool().getObjectsOfType(HxSurface::getClassTypeId())) {
        auto* surface = static_cast<HxSurface*>(object);
        if (isSameFile(surface->getFileName(), fileName)) return surface;
    }
    return nullptr;
}

}  // namespace

HxSurfacePathSet::HxSurfacePathSet() : surface(this, "surface", HxSurface::getClassTypeId()) {}

HxSurfacePathSet::~HxSurfacePathSet() = default;

HxSurface* HxSurfacePathSet::getSurface() const { return surface.source<HxSurface>(); }

bool HxSurfacePathSet::connectSurface(HxSurface* surfaceObject) {
    const bool connected = surface.connect(surfaceObject);
    followSurface();
    return connected;
}

HxDisplaySurfacePathSet* HxSurfacePathSet::getDisplaySurfacePathSet(bool create) {
    return HxDisplayModules::findOrAdd<HxDisplaySurfacePathSet>(this, create);
}

void HxSurfacePathSet::update() { followSurface(); }

// Paths are never dropped for a surface change: when the surface goes they stay on a copy
// of it, and a surface they do not fit is not taken.
void HxSurfacePathSet::followSurface() {
    HxSurface* source = getSurface();
    Surface* target = source ? source->getSurface() : nullptr;
    Surface* current = pathSet.getSurface();
    if (target == current || (!target && current && current == mKeptSurface.get())) return;
    mConnectors.clear();
    if (pathSet.getNumNodes() == 0 || !current) {
        pathSet.setSurface(target);
        mKeptSurface.reset();
        return;
    }
    if (!target) return keepOnCopyOfSurface();
    int badNode = -1;
    McString problem;
    if (!nodesFit(target, badNode, problem)) {
        HxSurface* previous = HxSurface::findHolder(current);
        HxMessage::getTheMsg()->printf("%s: its paths do not fit surface %s (node %d: %s); it stays on %s", getLabel(),
                                       source->getLabel(), badNode, problem.c_str(),
                                       previous ? previous->getLabel() : "the copy of its former surface");
        surface.connect(previous);
        return;
    }
    pathSet.copyData(pathSet, target);  // moves the nodes onto the new surface
    mKeptSurface.reset();
}

bool HxSurfacePathSet::nodesFit(Surface* target, int& badNode, McString& problem) const {
    SurfaceNodeFactory::prepareSurface(target);
    for (int i = 0; i < pathSet.getNumNodes(); ++i) {
        McHandle<SurfaceNode> moved = pathSet.nodes[i] ? pathSet.nodes[i]->copy(target) : nullptr;
        problem = "it is missing";
        if (!moved || !moved->validate(problem)) {
            badNode = i;
            return false;
        }
    }
    return true;
}

void HxSurfacePathSet::keepOnCopyOfSurface() {
    auto copy = std::make_unique<Surface>();
    copy->copyData(*pathSet.getSurface());
    pathSet.copyData(pathSet, copy.get());
    mKeptSurface = std::move(copy);
    HxMessage::getTheMsg()->printf(
        "%s: its surface is gone; its paths are kept on a copy of it (connect a surface to move them there)",
        getLabel());
}

PathConnector* HxSurfacePathSet::getConnector(char const* name, McString& error) {
    std::unique_ptr<PathConnector>& connector = mConnectors[name];
    if (!connector) connector.reset(PathConnectorFactory::createConnector(name, this, error));
    if (!connector) mConnectors.erase(name);
    return mConnectors.count(name) ? mConnectors[name].get() : nullptr;
}

void HxSurfacePathSet::changed() {
    touch();
    fire();
}

// === Files

bool HxSurfacePathSet::saveFile(char const* fileName, McString& error) {
    HxSurface* source = getSurface();
    if (!source) {
        error = mKeptSurface ? "its surface was removed; load it again and connect it before saving"
                             : "it has no surface";
        return false;
    }
    if (!*source->getFileName()) {
        error.printf("its surface %s was never loaded from or saved to a file; save the surface first", source->getLabel());
        return false;
    }
    return PathSetFile::write(pathSet, source->getFileName(), fileName, error);
}

namespace {

// Only a surface file may carry the paths: a path set naming a path set could name itself or
// a chain of them back to itself, and loading it would recurse without end.
bool checkSurfaceReference(char const* fileName, char const* surfaceFile, McString& error) {
    if (SurfaceIO::isSupported(surfaceFile)) return true;
    McString extensions;
    for (SurfaceIO::Format const& format : SurfaceIO::getFormats())
        extensions += McString(extensions.empty() ? "." : ", .") + format.extension;
    if (isSameFile(fileName, surfaceFile))
        error.printf("its \"surface\" names the path set file itself; it must name a surface file (%s)",
                     extensions.c_str());
    else
        error.printf("its \"surface\" names \"%s\", which is not a surface file (%s)", surfaceFile, extensions.c_str());
    return false;
}

}  // namespace

HxData* HxSurfacePathSet::readFile(char const* fileName, McString& error) {
    PathSetFile file;
    if (!file.read(fileName, error) || !checkSurfaceReference(fileName, file.surfaceFile.c_str(), error)) return nullptr;
    HxSurface* source = findSurfaceOfFile(file.surfaceFile.c_str());
    std::unique_ptr<HxSurface> loaded;
    if (!source) {
        McString surfaceError;
        HxData* data = HxFileFormats::read(file.surfaceFile.c_str(), surfaceError);
        if (data && !data->isOfType(HxSurface::getClassTypeId())) {
            delete data;
            data = nullptr;
            surfaceError = "it is not a surface file";
        }
        if (!data) {
            error.printf("its surface file \"%s\" cannot be loaded: %s", file.surfaceFile.c_str(), surfaceError.c_str());
            return nullptr;
        }
        loaded.reset(static_cast<HxSurface*>(data));
        source = loaded.get();
    }
    auto result = std::make_unique<HxSurfacePathSet>();
    if (!file.build(source->getSurface(), result->pathSet, error)) return nullptr;
    if (loaded) {
        loaded->HxBase::setLabel(baseName(file.surfaceFile.c_str()));
        loaded->setFileName(file.surfaceFile.c_str());
        HxObjectPool::getTheObjectPool().addObject(loaded.release());
    }
    result->connectSurface(source);
    return result.release();
}

void HxSurfacePathSet::registerFileFormats() {
    initClass();
    HxDisplaySurfacePathSet::initClass();
    HxFileFormats::registerReader("json", "surface path set", &HxSurfacePathSet::readFile);
}

// === Tcl

namespace {

char const* const kCommands =
    "getNumPaths, getNumNodes, getPath I, getNode I, isClosed I, getLength I, getSelection, addPath NODE..., "
    "connect PATH FROM TO CONNECTOR, removeDuplicateNodes TOL, isConsistent, export FILE, show, hide, save FILE, "
    "getLabel, "
    "setLabel, fire, getTypeId, getPorts, or a port name";

bool isBaseCommand(char const* cmd) {
    for (char const* base : {"getLabel", "setLabel", "fire", "getTypeId", "getPorts", "save"})
        if (!strcmp(cmd, base)) return true;
    return false;
}

}  // namespace

int HxSurfacePathSet::indexArg(Tcl_Interp* interp, char const* what, char const* text, int count, int& index) const {
    if (Tcl_GetInt(interp, text, &index) != TCL_OK) return TCL_ERROR;
    if (index < 0 || index >= count) {
        McString message =
            McString::format("%s index %d is out of range: %s has %d %ss", what, index, getLabel(), count, what);
        return cmdError(interp, HX_CMD_BAD_VALUE, message.c_str());
    }
    return TCL_OK;
}

int HxSurfacePathSet::usageError(Tcl_Interp* interp, char const* name, char const* usage) {
    return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s %s", name, usage).c_str());
}

int HxSurfacePathSet::needSurface(Tcl_Interp* interp) const {
    if (pathSet.getSurface()) return TCL_OK;
    Tcl_VaSetResult(interp, "%s has no surface: connect one with \"%s surface connect SURFACE\"", getLabel(),
                    getLabel());
    return TCL_ERROR;
}

int HxSurfacePathSet::parse(Tcl_Interp* interp, int argc, char** argv) {
    followSurface();  // a script may have changed the connection since the last update
    bool handled = false;
    int code = parseQuery(interp, argc, argv, handled);
    if (!handled) code = parseEdit(interp, argc, argv, handled);
    if (handled) return code;
    if (argc >= 2 && !isBaseCommand(argv[1]) && !getPort(argv[1])) {
        McString text = McString::format("%s: unknown command or port \"%s\" (commands: %s)", argv[0], argv[1], kCommands);
        return cmdError(interp, HX_CMD_UNKNOWN, text.c_str());
    }
    code = HxData::parse(interp, argc, argv);
    followSurface();  // `surface connect OTHER` acts at once
    return code;
}

int HxSurfacePathSet::parseQuery(Tcl_Interp* interp, int argc, char** argv, bool& handled) {
    char const* cmd = argc >= 2 ? argv[1] : "";
    handled = true;
    auto usage = [&](char const* text) { return usageError(interp, argv[0], text); };
    int index = 0;
    if (!strcmp(cmd, "getNumPaths") || !strcmp(cmd, "getNumNodes")) {
        if (argc != 2) return usage(cmd);
        const bool paths = !strcmp(cmd, "getNumPaths");
        Tcl_SetObjResult(interp, Tcl_NewIntObj(paths ? pathSet.getNumPaths() : pathSet.getNumNodes()));
        return TCL_OK;
    }
    if (!strcmp(cmd, "getSelection")) return argc == 2 ? getSelectionCmd(interp) : usage(cmd);
    if (!strcmp(cmd, "getNode")) {
        if (argc != 3) return usage("getNode I");
        if (indexArg(interp, "node", argv[2], pathSet.getNumNodes(), index) != TCL_OK) return TCL_ERROR;
        return getNodeCmd(interp, index);
    }
    for (char const* pathQuery : {"getPath", "isClosed", "getLength"}) {
        if (strcmp(cmd, pathQuery) != 0) continue;
        if (argc != 3) return usage(McString::format("%s I", pathQuery).c_str());
        if (indexArg(interp, "path", argv[2], pathSet.getNumPaths(), index) != TCL_OK) return TCL_ERROR;
        if (!strcmp(cmd, "isClosed")) {
            Tcl_SetObjResult(interp, Tcl_NewBooleanObj(pathSet.isPathClosed(index)));
        } else if (!strcmp(cmd, "getLength")) {
            Tcl_SetObjResult(interp, Tcl_NewDoubleObj(pathSet.getPathLength(index)));
        } else {
            Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
            for (int node : std::as_const(pathSet.paths)[index].nodeIndices) Tcl_ListObjAppendElement(interp, list, Tcl_NewIntObj(node));
            Tcl_SetObjResult(interp, list);
        }
        return TCL_OK;
    }
    handled = false;
    return TCL_OK;
}

int HxSurfacePathSet::getNodeCmd(Tcl_Interp* interp, int index) {
    SurfaceNode* node = pathSet.getNode(index);
    if (!node) {
        Tcl_VaSetResult(interp, "node %d of %s is missing", index, getLabel());
        return TCL_ERROR;
    }
    float u, v;
    node->getParameters(u, v);
    const McVec3f p = node->getPosition();
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    Tcl_ListObjAppendElement(interp, list, Tcl_NewStringObj(node->getTypeName(), -1));
    Tcl_ListObjAppendElement(interp, list, Tcl_NewIntObj(node->getElement()));
    for (double value : {double(u), double(v)}) Tcl_ListObjAppendElement(interp, list, Tcl_NewDoubleObj(value));
    Tcl_ListObjAppendElement(interp, list, Tcl_NewIntObj(node->isControlPoint));
    for (double value : {double(p.x), double(p.y), double(p.z)})
        Tcl_ListObjAppendElement(interp, list, Tcl_NewDoubleObj(value));
    Tcl_SetObjResult(interp, list);
    return TCL_OK;
}

// The selection lives in the set's display module; without one nothing is selected.
int HxSurfacePathSet::getSelectionCmd(Tcl_Interp* interp) {
    HxDisplaySurfacePathSet* display = getDisplaySurfacePathSet(false);
    SelectionInfo const none;
    SelectionInfo const& selection = display ? display->getSelectionInfo() : none;
    Tcl_Obj* paths = Tcl_NewListObj(0, nullptr);
    for (int path : selection.getActivePaths()) Tcl_ListObjAppendElement(interp, paths, Tcl_NewIntObj(path));
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    Tcl_ListObjAppendElement(interp, list, paths);
    Tcl_ListObjAppendElement(interp, list, Tcl_NewIntObj(selection.getActiveCP()));
    Tcl_SetObjResult(interp, list);
    return TCL_OK;
}

int HxSurfacePathSet::showCmd(Tcl_Interp* interp) {
    if (HxSurface* source = getSurface()) source->getDisplaySurface(true);  // the paths are seen on it
    Tcl_SetResult(interp, const_cast<char*>(getDisplaySurfacePathSet(true)->getLabel()), TCL_VOLATILE);
    return TCL_OK;
}

int HxSurfacePathSet::parseEdit(Tcl_Interp* interp, int argc, char** argv, bool& handled) {
    char const* cmd = argc >= 2 ? argv[1] : "";
    handled = true;
    auto usage = [&](char const* text) { return usageError(interp, argv[0], text); };
    if (!strcmp(cmd, "addPath")) return argc >= 3 ? addPathCmd(interp, argc, argv) : usage("addPath NODE ?NODE ...?");
    if (!strcmp(cmd, "connect"))
        return argc == 6 ? connectCmd(interp, argc, argv) : usage("connect PATH FROM TO CONNECTOR");
    if (!strcmp(cmd, "removeDuplicateNodes")) {
        double tolerance = 0;
        if (argc != 3) return usage("removeDuplicateNodes TOL");
        if (Tcl_GetDouble(interp, argv[2], &tolerance) != TCL_OK) return TCL_ERROR;
        if (!(tolerance >= 0))
            return cmdError(interp, HX_CMD_BAD_VALUE, "removeDuplicateNodes: the tolerance must not be negative");
        const int merged = pathSet.removeDuplicateNodes(float(tolerance), 1);
        changed();
        Tcl_SetObjResult(interp, Tcl_NewIntObj(merged));
        return TCL_OK;
    }
    if (!strcmp(cmd, "isConsistent")) {
        if (argc != 2) return usage(cmd);
        McString problem;
        const bool consistent = pathSet.isConsistent(true, nullptr, problem);
        if (!consistent) HxMessage::getTheMsg()->printf("%s is inconsistent: %s", getLabel(), problem.c_str());
        Tcl_SetObjResult(interp, Tcl_NewBooleanObj(consistent));
        return TCL_OK;
    }
    if (!strcmp(cmd, "show")) return argc == 2 ? showCmd(interp) : usage(cmd);
    if (!strcmp(cmd, "hide")) {
        if (argc != 2) return usage(cmd);
        HxDisplayModules::remove(this, HxDisplaySurfacePathSet::getClassTypeId());
        return TCL_OK;
    }
    if (!strcmp(cmd, "export")) {
        if (argc != 3) return usage("export FILE.obj|FILE.vtk");
        McString error;
        if (!PathSetExport::write(pathSet, argv[2], error)) {
            Tcl_VaSetResult(interp, "cannot export %s to \"%s\": %s", getLabel(), argv[2], error.c_str());
            return TCL_ERROR;
        }
        return TCL_OK;
    }
    handled = false;
    return TCL_OK;
}

int HxSurfacePathSet::addPathCmd(Tcl_Interp* interp, int argc, char** argv) {
    if (needSurface(interp) != TCL_OK) return TCL_ERROR;
    McDArray<McHandle<SurfaceNode>> nodes;
    for (int i = 2; i < argc; ++i) {
        McString error;
        SurfaceNode* node = SurfaceNodeWord::parse(argv[i], pathSet.nodeFactory, error);
        if (!node) return cmdError(interp, HX_CMD_BAD_VALUE, error.c_str());
        nodes.append(node);
    }
    nodes[0]->isControlPoint = 1;
    nodes.last()->isControlPoint = 1;
    McDArray<int> indices;
    for (SurfaceNode* node : nodes) indices.append(pathSet.addNode(node));
    const int path = pathSet.addPath(indices);
    changed();
    Tcl_SetObjResult(interp, Tcl_NewIntObj(path));
    return TCL_OK;
}

int HxSurfacePathSet::connectCmd(Tcl_Interp* interp, int, char** argv) {
    int path = 0, from = 0, to = 0;
    if (needSurface(interp) != TCL_OK) return TCL_ERROR;
    if (indexArg(interp, "path", argv[2], pathSet.getNumPaths(), path) != TCL_OK) return TCL_ERROR;
    const int n = pathSet.getNumNodesOnPath(path);
    if (indexArg(interp, "position", argv[3], n, from) != TCL_OK) return TCL_ERROR;
    if (indexArg(interp, "position", argv[4], n, to) != TCL_OK) return TCL_ERROR;
    if (from >= to)
        return cmdError(interp, HX_CMD_BAD_VALUE,
                        McString::format("connect: position FROM (%d) must lie before TO (%d)", from, to).c_str());
    McString error;
    PathConnector* connector = getConnector(argv[5], error);
    if (!connector) return cmdError(interp, HX_CMD_BAD_VALUE, ("connect: " + error).c_str());
    if (!pathSet.connectSurfaceNodes(path, from, to, connector)) {
        if (connector->getFailure().empty())
            Tcl_VaSetResult(interp, "connect: the %s connector found no connection between positions %d and %d of path %d",
                            argv[5], from, to, path);
        else
            Tcl_VaSetResult(interp, "connect: %s (connecting positions %d and %d of path %d)",
                            connector->getFailure().c_str(), from, to, path);
        return TCL_ERROR;
    }
    changed();
    Tcl_SetObjResult(interp, Tcl_NewIntObj(pathSet.getNumNodesOnPath(path)));
    return TCL_OK;
}
