#include "HxSurface.h"

#include "HxDisplayModules.h"
#include "HxDisplaySurface.h"
#include "HxFileFormats.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxObjectPool.h"
#include "HxWorkArea.h"
#include "SurfaceIO.h"

#include <cstring>
#include <set>

MC_TYPED_IMPL_CREATABLE(HxSurface, HxData)

namespace {

char const* baseName(char const* path) {
    char const* slash = strrchr(path, '/');
    return slash ? slash + 1 : path;
}

void setDoublesResult(Tcl_Interp* interp, std::initializer_list<double> values) {
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    for (double v : values) Tcl_ListObjAppendElement(interp, list, Tcl_NewDoubleObj(v));
    Tcl_SetObjResult(interp, list);
}

}  // namespace

bool HxSurface::saveFile(char const* fileName, McString& error) { return SurfaceIO::write(surface, fileName, error); }

HxData* HxSurface::readFile(char const* fileName, McString& error) {
    HxWorkArea::getTheWorkArea()->startWorking("Reading %s", baseName(fileName));
    auto* data = new HxSurface;
    McString warnings;
    const bool ok = SurfaceIO::read(fileName, data->surface, error, warnings);
    HxWorkArea::getTheWorkArea()->stopWorking();
    if (!ok) {
        delete data;
        return nullptr;
    }
    if (!warnings.empty()) HxMessage::getTheMsg()->printf("Warning: %s: %s", baseName(fileName), warnings.c_str());
    return data;
}

void HxSurface::registerFileFormats() {
    initClass();
    HxDisplaySurface::initClass();
    for (SurfaceIO::Format const& format : SurfaceIO::getFormats())
        HxFileFormats::registerReader(format.extension, format.description, &HxSurface::readFile);
}

HxDisplaySurface* HxSurface::getDisplaySurface(bool create) {
    return HxDisplayModules::findOrAdd<HxDisplaySurface>(this, create);
}

int HxSurface::getIndexArg(Tcl_Interp* interp, char const* what, char const* text, int count, int& index) const {
    if (Tcl_GetInt(interp, text, &index) != TCL_OK) return TCL_ERROR;
    if (index < 0 || index >= count) {
        McString message = McString::format("%s index %d is out of range: %s has %d %ss", what, index, getLabel(), count, what);
        return cmdError(interp, HX_CMD_BAD_VALUE, message.c_str());
    }
    return TCL_OK;
}

int HxSurface::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc >= 2 ? argv[1] : "";
    char const* const withoutArguments[] = {"getNumPoints", "getNumTriangles", "getNumEdges",
                                            "getNumPatches", "getBoundingBox", "show", "hide"};
    for (char const* query : withoutArguments)
        if (!strcmp(cmd, query) && argc != 2)
            return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s %s", argv[0], query).c_str());
    if (!strcmp(cmd, "getNumPoints")) {
        Tcl_SetObjResult(interp, Tcl_NewIntObj(surface.getNumPoints()));
        return TCL_OK;
    }
    if (!strcmp(cmd, "getNumTriangles")) {
        Tcl_SetObjResult(interp, Tcl_NewIntObj(surface.getNumTriangles()));
        return TCL_OK;
    }
    if (!strcmp(cmd, "getNumEdges")) {
        surface.createAllEdges(0);
        Tcl_SetObjResult(interp, Tcl_NewIntObj(surface.getNumEdges()));
        return TCL_OK;
    }
    if (!strcmp(cmd, "getNumPatches")) {
        std::set<int> patches;
        for (Surface::Triangle const& t : surface.triangles) patches.insert(t.patch);
        Tcl_SetObjResult(interp, Tcl_NewIntObj(int(patches.size())));
        return TCL_OK;
    }
    if (!strcmp(cmd, "getBoundingBox")) {
        McVec3f min, max;
        surface.getBoundingBox(min, max);
        setDoublesResult(interp, {min.x, min.y, min.z, max.x, max.y, max.z});
        return TCL_OK;
    }
    if (!strcmp(cmd, "show")) {
        Tcl_SetResult(interp, const_cast<char*>(getDisplaySurface(true)->getLabel()), TCL_VOLATILE);
        return TCL_OK;
    }
    if (!strcmp(cmd, "hide")) {
        HxDisplayModules::remove(this, HxDisplaySurface::getClassTypeId());
        return TCL_OK;
    }
    if (!strcmp(cmd, "getPoint")) {
        int i = 0;
        if (argc != 3) return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s getPoint INDEX", argv[0]).c_str());
        if (getIndexArg(interp, "point", argv[2], surface.getNumPoints(), i) != TCL_OK) return TCL_ERROR;
        McVec3f const& p = surface.points[i];
        setDoublesResult(interp, {p.x, p.y, p.z});
        return TCL_OK;
    }
    if (!strcmp(cmd, "getTriangle")) {
        int i = 0;
        if (argc != 3) return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s getTriangle INDEX", argv[0]).c_str());
        if (getIndexArg(interp, "triangle", argv[2], surface.getNumTriangles(), i) != TCL_OK) return TCL_ERROR;
        int const* p = surface.triangles[i].points;
        Tcl_VaSetResult(interp, "%d %d %d", p[0], p[1], p[2]);
        return TCL_OK;
    }
    return HxData::parse(interp, argc, argv);
}

HxSurface* HxSurface::findHolder(Surface const* surfaceData) {
    for (HxObject* object : HxObjectPool::getTheObjectPool().getObjectsOfType(getClassTypeId())) {
        auto* candidate = static_cast<HxSurface*>(object);
        if (candidate->getSurface() == surfaceData) return candidate;
    }
    return nullptr;
}
