#include "SurfacePathEditor.h"

#include "HxDisplaySurfacePathSet.h"
#include "HxInterpreter.h"
#include "HxPortButtonList.h"
#include "HxPortFloatTextN.h"
#include "HxPortRadioBox.h"
#include "HxPortSeparator.h"
#include "HxPortToggleList.h"
#include "HxSurface.h"
#include "HxSurfacePathEditor.h"
#include "HxSurfacePathSet.h"
#include "HxWorkArea.h"
#include "PathEditEntangle.h"
#include "PathEditRetriangulate.h"
#include "PathEditSmooth.h"
#include "PathEditSnapNodes.h"
#include "PathTriangulatorFactory.h"
#include "SelectionInfo.h"

#include <cstdlib>
#include <cstring>

MC_TYPED_IMPL_CREATABLE(SurfacePathEditor, SurfaceVertexPathEditor)

namespace {
char const* const kGenericConnectors = "hxsurfacepathedit::genericEditorConnectors";
char kRefineDefault[] = "pzQ";
char kRefineConformingDefault[] = "pqzS10Q";

// The radio box counts "world" first; the snapping operation's modes count the other way.
enum { kWorldTolerance = 0, kBarycentricTolerance = 1 };
constexpr float kBarycentricMax = 0.5f;

void setAllSensitive(HxPortButtonList* port, bool sensitive) {
    for (int i = 0; i < port->getNum(); ++i) port->setSensitivity(i, sensitive);
}

// Links a C string setting to a Tcl variable; Tcl then owns (and replaces) the string.
void linkString(Tcl_Interp* interp, char const* name, char*& setting) {
    char* owned = Tcl_Alloc(unsigned(strlen(setting) + 1));
    strcpy(owned, setting);
    setting = owned;
    Tcl_LinkVar(interp, name, reinterpret_cast<char*>(&setting), TCL_LINK_STRING);
}
}  // namespace

char* SurfacePathEditor::refine = kRefineDefault;
char* SurfacePathEditor::refineConforming = kRefineConformingDefault;

void SurfacePathEditor::linkSettings(Tcl_Interp* interp) {
    Tcl_Eval(interp, "namespace eval ::hxsurfacepathedit {}");
    linkString(interp, "::hxsurfacepathedit::refine", refine);
    linkString(interp, "::hxsurfacepathedit::refineConforming", refineConforming);
}

SurfacePathEditor::SurfacePathEditor() { connectorVariable = kGenericConnectors; }

SurfacePathEditor::SurfacePathEditor(HxSurfacePathSet* ps) : SurfaceVertexPathEditor(ps) {
    connectorVariable = kGenericConnectors;
}

// === Ports

void SurfacePathEditor::initButtons(HxSurfacePathEditor* module) {
    if (!surface) return;
    SurfaceVertexPathEditor::initButtons(module);
    if (!module) return;

    separator = new HxPortSeparator(module, "sep", false);
    separator->show();
    controlPointType->show();

    McDArray<McString> const names = PathTriangulatorFactory::getNames();
    retriangulate = new HxPortButtonList(module, "retriangulate", int(names.size()));
    for (int i = 0; i < names.size(); ++i) {
        retriangulate->setLabel(i, names[i].c_str());
        retriangulate->setSensitivity(i, false);
    }
    showRetriangulateIfAnyTriangulator();

    pathOperations3 = new HxPortButtonList(module, "pathOperations3", 2);
    pathOperations3->setLabel("Path operations (3)");
    pathOperations3->setLabel(0, "Smooth path");
    pathOperations3->setLabel(1, "Snap path to edges");
    setAllSensitive(pathOperations3, false);
    pathOperations3->show();

    SnapEpsilon = new HxPortFloatTextN(module, "SnapEpsilon", 1);
    SnapEpsilon->setLabel("Snap epsilon");
    SnapEpsilon->setMinMax(0, 50);
    SnapEpsilon->setValue(0, 0.5f);
    SnapEpsilon->show();

    snapEpsilonMode = new HxPortRadioBox(module, "snapEpsilonMode", 2);
    snapEpsilonMode->setLabel("Snap epsilon mode");
    snapEpsilonMode->setLabel(kWorldTolerance, "world");
    snapEpsilonMode->setLabel(kBarycentricTolerance, "barycentric");
    snapEpsilonMode->setValue(kBarycentricTolerance);
    snapEpsilonMode->show();
}

void SurfacePathEditor::init() {
    if (!surface) return;
    SurfaceVertexPathEditor::init();
    newNodeType = controlPointType->getValue();
}

void SurfacePathEditor::checkButtons() {
    if (!surface) return;
    SurfaceVertexPathEditor::checkButtons();
    const bool anyPath = pathSet->pathSet.getNumPaths() > 0;
    setAllSensitive(pathOperations3, anyPath);
    setAllSensitive(retriangulate, anyPath);
    // Once barycentric mode has been seen the narrow range stays, also in world mode.
    if (snapEpsilonMode->getValue() == kBarycentricTolerance) SnapEpsilon->setMinMax(0, kBarycentricMax);
    if (freeHandToggled) disableAll();
    if (advancedOptions->getValue(0)) {
        SnapEpsilon->show();
        snapEpsilonMode->show();
    } else {
        SnapEpsilon->hide();
        snapEpsilonMode->hide();
    }
    controlPointType->show();
}

void SurfacePathEditor::enableAll() {
    SurfaceVertexPathEditor::enableAll();
    pathOperations3->show();
    showRetriangulateIfAnyTriangulator();
    SnapEpsilon->show();
    action->show();
    surfaceOperations->show();
}

void SurfacePathEditor::disableAll() {
    SurfaceVertexPathEditor::disableAll();
    pathOperations3->hide();
    retriangulate->hide();
    SnapEpsilon->hide();
    action->hide();
    surfaceOperations->hide();
}

void SurfacePathEditor::showRetriangulateIfAnyTriangulator() {
    if (PathTriangulatorFactory::getNames().empty())
        retriangulate->hide();
    else
        retriangulate->show();
}

// === Button actions

void SurfacePathEditor::update() {
    if (!surface) return;
    SurfaceVertexPathEditor::update();
    handleSmoothAndSnap();
    handleRetriangulate();
    showRetriangulateIfAnyTriangulator();
    controlPointType->show();
    if (controlPointType->isNew()) newNodeType = controlPointType->getValue();
}

void SurfacePathEditor::handleSmoothAndSnap() {
    if (!pathOperations3->isNew() || !pathSet->getDisplaySurfacePathSet(false)) return;
    const float tolerance = SnapEpsilon->getValue(0);
    SurfacePathSet* set = &pathSet->pathSet;
    McDArray<int> const activePaths = getSelection()->getActivePaths();
    if (pathOperations3->getIndex() == 0) {
        HxWorkArea::getTheWorkArea()->startWorking("Smoothing");
        PathEditSmooth* smooth = new PathEditSmooth(set);
        smooth->pathList = activePaths;
        exec(smooth);
        HxWorkArea::getTheWorkArea()->stopWorking();
    } else if (pathOperations3->getIndex() == 1) {
        PathEditSnapNodes* snap = new PathEditSnapNodes(set);
        snap->mode = snapEpsilonMode->getValue() == kWorldTolerance ? 2 : 1;
        snap->tolerance = tolerance;
        snap->paths = activePaths;
        exec(snap);
    }
    // Snapping and smoothing may move nodes onto other elements: the surface display redraws.
    if (HxSurface* s = pathSet->getSurface()) {
        s->touch(~0u);
        s->fire(1);
    }
}

void SurfacePathEditor::handleRetriangulate() {
    if (!retriangulate->isNew() || retriangulate->getIndex() < 0) return;
    const float tolerance = SnapEpsilon->getValue(0);
    McString const name = retriangulate->getLabel(retriangulate->getIndex());
    HxWorkArea::getTheWorkArea()->startWorking("%s", name.c_str());
    PathEditRetriangulate* operation = new PathEditRetriangulate(&pathSet->pathSet, name.c_str(), tolerance, false);
    operation->viewer = this;
    exec(operation);
    HxWorkArea::getTheWorkArea()->stopWorking();
}

void SurfacePathEditor::entangle() {
    SelectionInfo* chosen = getSelection();
    if (chosen->getActivePaths().empty()) return;
    exec(new PathEditEntangle(&pathSet->pathSet, chosen, chosen->getActivePaths(), SnapEpsilon->getValue(0)));
}

// === Commands

int SurfacePathEditor::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc < 2) return 0;
    // Appended on every call, so the list grows with each command; kept that way on purpose.
    getCmdInfo().append(HxCmdInfo{"smooth", ""});
    if (strcmp(argv[1], "smooth") != 0) return SurfaceVertexPathEditor::parse(interp, argc, argv);
    return smoothCommand(interp, argc, argv);
}

// A batch step: it runs the operation itself, so nothing enters the undo history.
int SurfacePathEditor::smoothCommand(Tcl_Interp* interp, int argc, char** argv) {
    if (argc != 4) return cmdError(interp, HX_CMD_BAD_VALUE, "smooth");
    HxWorkArea::getTheWorkArea()->startWorking("Smoothing");
    PathEditSmooth smooth(&pathSet->pathSet);
    smooth.weight = float(strtod(argv[2], nullptr));
    smooth.iterations = int(strtol(argv[3], nullptr, 10));
    smooth.exec();
    HxWorkArea::getTheWorkArea()->stopWorking();
    touchAndFire();
    return 0;
}
