#include "PackageEntry.h"

#include "FreeHandDrawer.h"
#include "HxInterpreter.h"
#include "HxSurfacePathEditor.h"
#include "PathEditAddCP.h"
#include "PathEditAddPath.h"
#include "PathEditClosePath.h"
#include "PathEditDeleteAllPaths.h"
#include "PathEditDeleteCP.h"
#include "PathEditDeletePaths.h"
#include "PathEditEntangle.h"
#include "PathEditFixIntersections.h"
#include "PathEditImportContours.h"
#include "PathEditInsertCP.h"
#include "PathEditMergePaths.h"
#include "PathEditMoveCP.h"
#include "PathEditOpenPath.h"
#include "PathEditPatchify.h"
#include "PathEditRetriangulate.h"
#include "PathEditReversePath.h"
#include "PathEditSelection.h"
#include "PathEditSmooth.h"
#include "PathEditSnapNodes.h"
#include "PathEditUntangle.h"
#include "PathOperation.h"
#include "SinglePathOperation.h"
#include "SurfacePathEditorGUIBase.h"
#include "SurfacePathEditor.h"
#include "SurfacePathEditorViewerBase.h"
#include "SurfaceVertexPathEditor.h"

namespace velmopackage_hxsurfacepathedit {
char version[] = "hxsurfacepathedit 1.0, built " __DATE__ " " __TIME__;
}  // namespace velmopackage_hxsurfacepathedit

namespace {
bool initialised = false;
bool finished = false;

// Each registration registers its parents first, so the order below is free to name a class
// before its base.
void registerClasses() {
    SurfaceVertexPathEditor::initClass();
    SurfacePathEditorViewerBase::initClass();
    SurfacePathEditorGUIBase::initClass();
    SurfacePathEditor::initClass();
    SinglePathOperation::initClass();
    PathOperation::initClass();
    PathEditUntangle::initClass();
    PathEditSnapNodes::initClass();
    PathEditSmooth::initClass();
    PathEditSelection::initClass();
    PathEditReversePath::initClass();
    PathEditRetriangulate::initClass();
    PathEditPatchify::initClass();
    PathEditOpenPath::initClass();
    PathEditMoveCP::initClass();
    PathEditMergePaths::initClass();
    PathEditInsertCP::initClass();
    PathEditImportContours::initClass();
    PathEditFixIntersections::initClass();
    PathEditEntangle::initClass();
    PathEditDeletePaths::initClass();
    PathEditDeleteCP::initClass();
    PathEditDeleteAllPaths::initClass();
    PathEditClosePath::initClass();
    PathEditAddPath::initClass();
    PathEditAddCP::initClass();
    HxSurfacePathEditor::initClass();
    FreeHandDrawer::initClass();
}

__attribute__((constructor)) void onLoad() { hxsurfacepathedit_entry::velmopackage_hxsurfacepathedit_init(); }
__attribute__((destructor)) void onUnload() { hxsurfacepathedit_entry::velmopackage_hxsurfacepathedit_finish(); }
}  // namespace

namespace hxsurfacepathedit_entry {

void velmopackage_hxsurfacepathedit_init() {
    if (initialised) return;
    initialised = true;
    registerClasses();
    SurfacePathEditor::linkSettings(HxInterpreter::getTheInterpreter().getTclInterp());
}

void velmopackage_hxsurfacepathedit_finish() { finished = true; }

char const* velmopackage_hxsurfacepathedit() { return velmopackage_hxsurfacepathedit::version; }

}  // namespace hxsurfacepathedit_entry
