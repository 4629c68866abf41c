#include "SurfaceVertexPathEditor.h"

#include "FreeHandDrawer.h"
#include "HxDisplaySurfacePathSet.h"
#include "HxInterpreter.h"
#include "HxMessage.h"
#include "HxPortButtonList.h"
#include "HxPortInfo.h"
#include "HxPortIntSlider.h"
#include "HxPortMultiMenu.h"
#include "HxPortRadioBox.h"
#include "HxPortSeparator.h"
#include "HxPortToggleList.h"
#include "HxSurface.h"
#include "HxSurfacePathEditor.h"
#include "HxSurfacePathSet.h"
#include "PathConnector.h"
#include "PathConnectorFactory.h"
#include "PathEditAddCP.h"
#include "PathEditAddPath.h"
#include "PathEditClosePath.h"
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
#include "PathEditReversePath.h"
#include "PathEditSelection.h"
#include "PathEditUntangle.h"
#include "SelectionInfo.h"

#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoEventCallback.h>

#include <cstdlib>
#include <cstring>

MC_TYPED_IMPL_CREATABLE(SurfaceVertexPathEditor, SurfacePathEditorGUIBase)

namespace {
char const* const kVertexConnectors = "hxsurfacepathedit::vertexEditorConnectors";
// Paths closer than this fraction of a triangle count as crossing.
constexpr float kEntangleTolerance = 0.001f;
}

SurfaceVertexPathEditor::SurfaceVertexPathEditor() : connectorVariable(kVertexConnectors) {}

SurfaceVertexPathEditor::SurfaceVertexPathEditor(HxSurfacePathSet* ps)
    : SurfacePathEditorGUIBase(ps), connectorVariable(kVertexConnectors) {
    modeKey = '0';
    freeHandDrawer = new FreeHandDrawer(surface, pathSet);
}

SurfaceVertexPathEditor::~SurfaceVertexPathEditor() {
    // A drawer still registered for motions must not outlive its editor's stroke.
    for (FreeHandDrawer* drawer : mRetiredDrawers) {
        drawer->deactivate();
        delete drawer;
    }
    if (freeHandDrawer) {
        freeHandDrawer->deactivate();
        delete freeHandDrawer;
    }
}

// === Editor operations

bool SurfaceVertexPathEditor::canEditPathSet(HxSurfacePathSet* ps) {
    if (ps->pathSet.isPureSurfaceVertexPath()) return true;
    HxMessage::getTheMsg()->printf(
        "Cannot attach a SurfaceVertexPathEditor to this SurfacePathSet, because it does not only contain "
        "vertex-nodes.");
    return false;
}

void SurfaceVertexPathEditor::setPathSet(HxSurfacePathSet* ps) {
    SurfacePathEditorGUIBase::setPathSet(ps);
    if (freeHandDrawer) mRetiredDrawers.append(freeHandDrawer);
    freeHandDrawer = new FreeHandDrawer(surface, pathSet);
}

void SurfaceVertexPathEditor::updateData() {
    if (surface) {
        surface->touch(~0u);
        surface->fire(1);
    }
    initConnectors();
}

void SurfaceVertexPathEditor::initConnectors() {
    for (PathConnector* cached : connectorCache)
        if (cached) cached->init(&pathSet->pathSet, nullptr);
}

bool SurfaceVertexPathEditor::askForSelection() {
    return HxMessage::getTheMsg()->question(
               "Do you want to perform this operation on the selected paths or on all paths?", "all",
               "only selected", nullptr, -1, -1) != 0;
}

void SurfaceVertexPathEditor::touchAndFire() {
    pathSet->touch(~0u);
    pathSet->fire(1);
}

void SurfaceVertexPathEditor::callEditorCallback() {
    if (editorCallback) editorCallback(editorCallbackData);
}

// === Ports

void SurfaceVertexPathEditor::initButtons(HxSurfacePathEditor* module) {
    if (!module) return;
    info = new HxPortInfo(module, "info");
    info->show();

    advancedOptions = new HxPortToggleList(module, "advancedOptions", 1);
    advancedOptions->setLabel("Advanced options");
    advancedOptions->setLabel(0, "show");
    advancedOptions->setValue(0, 0);
    advancedOptions->show();

    connector = new HxPortMultiMenu(module, "connector", 0);
    resetConnectorCache();

    controlPointType = new HxPortRadioBox(module, "controlPointType", 3);
    controlPointType->setLabel("Control point type");
    controlPointType->setLabel(0, "Vertex");
    controlPointType->setLabel(1, "Edge");
    controlPointType->setLabel(2, "Triangle");
    controlPointType->setValue(2);
    controlPointType->hide();

    action = new HxPortButtonList(module, "action", 4);
    char const* const actions[] = {"Undo", "Redo", "Delete Path(s)", "Delete Vertex"};
    for (int i = 0; i < 4; ++i) {
        action->setLabel(i, actions[i]);
        action->setSensitivity(i, false);
    }
    action->show();

    pathOperations1 = new HxPortButtonList(module, "pathOperations1", 3);
    pathOperations1->setLabel("Path operations (1)");
    char const* const operations1[] = {"Close", "Open", "Reverse"};
    for (int i = 0; i < 3; ++i) {
        pathOperations1->setLabel(i, operations1[i]);
        pathOperations1->setSensitivity(i, false);
    }
    pathOperations1->show();

    pathOperations2 = new HxPortButtonList(module, "pathOperations2", 4);
    pathOperations2->setLabel("Path operations (2)");
    char const* const operations2[] = {"Merge", "Split at Intersections", "Entangle", "Untangle"};
    for (int i = 0; i < 4; ++i) {
        pathOperations2->setLabel(i, operations2[i]);
        pathOperations2->setSensitivity(i, false);
    }
    pathOperations2->show();

    // Left as if its button had just been pressed: the first update() switches drawing on.
    freeHandDrawing = new HxPortButtonList(module, "freeHandDrawing", 1);
    freeHandDrawing->setLabel("Free hand drawing:");
    freeHandDrawing->setLabel(0, "Enable");
    freeHandDrawing->hide();
    freeHandDrawing->setIndex(0);
    freeHandDrawing->touch();

    surfaceOperations = new HxPortButtonList(module, "surfaceOperations", 2);
    surfaceOperations->setLabel("Surface operations");
    surfaceOperations->setLabel(0, "Import Surface Contours");
    surfaceOperations->setLabel(1, "Patchify Surface");
    surfaceOperations->setSensitivity(0, true);
    surfaceOperations->setSensitivity(1, true);
    surfaceOperations->show();

    hitGeometry = new HxPortInfo(module, "hitGeometry");
    hitGeometry->setLabel("Hit geometry");
    hitGeometry->hide();

    sep = new HxPortSeparator(module, "sep", false);
    sep->show();

    pathSelection = new HxPortButtonList(module, "pathSelection", 2);
    pathSelection->setLabel("Path selection");
    pathSelection->setLabel(0, "Select all");
    pathSelection->setLabel(1, "Deselect all");
    pathSelection->show();

    module->setLabel("SurfacePathEditor");

    selectPath = new HxPortIntSlider(module, "selectPath");
    selectPath->setLabel("Select path");
    selectPath->setMinMax(-1, -1);
    selectPath->show();

    selectCP = new HxPortIntSlider(module, "selectCP");
    selectCP->setLabel("Select CP");
    selectCP->setMinMax(-1, -1);
    selectCP->show();
}

// Fills the menu from the connector list; cached connectors are forgotten (not destroyed).
void SurfaceVertexPathEditor::resetConnectorCache() {
    PathConnectorFactory::initPortConnector(connector, connectorVariable);
    connectorCache.resize(connector->getNum(0) > 0 ? connector->getNum(0) : 0);
    for (PathConnector*& cached : connectorCache) cached = nullptr;
}

PathConnector* SurfaceVertexPathEditor::makeConnector(int i) {
    mMadeConnectors.emplace_back(PathConnectorFactory::createConnector(connector->getLabel(0, i), pathSet));
    connectorCache[i] = mMadeConnectors.back().get();
    return connectorCache[i];
}

void SurfaceVertexPathEditor::init() {
    resetConnectorCache();
    const int i = connector->getIndex(0);
    if (i == -1) {
        HxMessage::getTheMsg()->printf("Warning: no path connector available");
        return;
    }
    currentConnector = makeConnector(i);
}

void SurfaceVertexPathEditor::checkButtons() {
    if (!pathSet) return;
    HxDisplaySurfacePathSet* display = pathSet->getDisplaySurfacePathSet(false);
    if (!display) return;
    SelectionInfo const& selection = display->getSelectionInfo();
    SurfacePathSet const& set = pathSet->pathSet;
    const int active = selection.getActivePath();
    const int numPaths = set.getNumPaths();

    selectPath->setMinMax(-1, numPaths - 1);
    selectPath->setValue(active);
    if (selectPath->getValue() >= 0) {
        selectCP->setMinMax(-1, set.getNumControlPointsOnPath(selectPath->getValue()) - 1);
        selectCP->setValue(set.getCPIndexOnPath(selection.getActiveCP(), active));
    } else {
        selectCP->setValue(-1);
    }
    action->setSensitivity(0, undoBuffer.current >= 0);
    action->setSensitivity(1, undoBuffer.operations.size() > undoBuffer.current + 1);
    setPathButtonSensitivity(selection);
    setInfoLines(selection);

    if (!freeHandToggled) {
        enableAll();
        if (freeHandToggled) disableAll();
    } else {
        disableAll();
    }
    pathSelection->setSensitivity(0, numPaths > 0);
    pathSelection->setSensitivity(1, numPaths > 0);
    surfaceOperations->setSensitivity(1, numPaths > 0);
    showAdvancedPorts();
    freeHandDrawing->hide();
    hitGeometry->hide();
    controlPointType->hide();
}

void SurfaceVertexPathEditor::setPathButtonSensitivity(SelectionInfo const& selection) {
    SurfacePathSet const& set = pathSet->pathSet;
    const int active = selection.getActivePath();
    const int nodes = active >= 0 ? set.getNumNodesOnPath(active) : 0;
    const int controlPoints = active >= 0 ? set.getNumControlPointsOnPath(active) : 0;
    pathOperations1->setSensitivity(0, nodes > 2);   // Close
    pathOperations1->setSensitivity(2, nodes > 0);   // Reverse
    action->setSensitivity(3, nodes > 0);            // Delete Vertex
    const bool anySelected = !selection.noPathSelected();
    action->setSensitivity(2, anySelected);
    for (int i = 0; i < 4; ++i) pathOperations2->setSensitivity(i, anySelected);
    pathOperations1->setSensitivity(1, controlPoints > 2);  // Open
}

void SurfaceVertexPathEditor::setInfoLines(SelectionInfo const& selection) {
    SurfacePathSet const& set = pathSet->pathSet;
    const int active = selection.getActivePath();
    if (active >= 0)
        info->printf("Active %d: nPoints %d, length %f, nCPs %d %s", active, set.getNumNodesOnPath(active),
                     double(set.getPathLength(active)), set.getNumControlPointsOnPath(active),
                     set.isPathClosed(active) ? "(closed)" : "");
    else if (set.getNumPaths() > 0)
        info->printf("No active path: To select a path, click onto the path.");
    else
        info->printf("To create a new path, Shift+Click onto the surface.");
    char const* hit = lastHitKind == 1 ? "a path" : lastHitKind == 0 ? "the surface" : lastHitKind == 2 ? "a controlpoint" : "nothing";
    hitGeometry->printf("You hit %s", hit);
}

void SurfaceVertexPathEditor::showAdvancedPorts() {
    HxPort* const advanced[] = {pathOperations2, surfaceOperations, selectPath, selectCP};
    for (HxPort* port : advanced) {
        if (advancedOptions->getValue(0))
            port->show();
        else
            port->hide();
    }
}

// === Button actions

// The cached connector of the menu's current entry, read without making it (null when it
// was never chosen, or when the menu has no entry selected).
PathConnector* SurfaceVertexPathEditor::connectorOfMenuIndex() const {
    const int i = connector->getIndex(0);
    return i >= 0 && i < connectorCache.size() ? connectorCache[i] : nullptr;
}

void SurfaceVertexPathEditor::update() {
    HxDisplaySurfacePathSet* display = pathSet ? pathSet->getDisplaySurfacePathSet(false) : nullptr;
    if (!display) return;
    SelectionInfo* selection = &display->getSelectionInfo();
    PathConnector* connectorOfMenu = connectorOfMenuIndex();
    handleActionButtons(selection, connectorOfMenu);
    handlePathOperations(selection, connectorOfMenu);
    handleSurfaceOperations(selection);
    if (!handleConnectorMenu()) return;
    handleSliders(selection);
    handleFreeHandToggle();
}

void SurfaceVertexPathEditor::handleActionButtons(SelectionInfo* selection, PathConnector* connectorOfMenu) {
    if (!action->isNew()) return;
    SurfacePathSet* set = &pathSet->pathSet;
    switch (action->getIndex()) {
        case 0: undoBuffer.undo(); break;
        case 1: undoBuffer.redo(); break;
        case 2: exec(new PathEditDeletePaths(set, selection, selection->getActivePaths(), 0)); break;
        case 3: exec(new PathEditDeleteCP(set, selection, selection->getActiveCP(), connectorOfMenu, 0)); break;
        default: break;
    }
}

void SurfaceVertexPathEditor::handlePathOperations(SelectionInfo* selection, PathConnector* connectorOfMenu) {
    SurfacePathSet* set = &pathSet->pathSet;
    const int active = selection->getActivePath();
    if (pathOperations1->isNew()) {
        switch (pathOperations1->getIndex()) {
            case 0: exec(new PathEditClosePath(set, active, connectorOfMenu)); break;
            case 1:
                exec(new PathEditOpenPath(set, selection, active, set->getNodeIndexOnPath(active, selection->getActiveCP()),
                                          true));
                break;
            case 2: exec(new PathEditReversePath(set, selection, active)); break;
            default: break;
        }
    }
    if (pathOperations2->isNew()) {
        McDArray<int> const& chosen = getSelection()->getActivePaths();
        switch (pathOperations2->getIndex()) {
            case 0: exec(new PathEditMergePaths(set, selection, selection->getActivePaths())); break;
            case 1:
                if (!chosen.empty()) exec(new PathEditFixIntersections(set, selection, chosen, false));
                break;
            case 2: entangle(); break;
            case 3:
                if (!chosen.empty()) exec(new PathEditUntangle(set, getSelection(), chosen));
                break;
            default: break;
        }
    }
}

void SurfaceVertexPathEditor::handleSurfaceOperations(SelectionInfo* selection) {
    if (!surfaceOperations->isNew()) return;
    SurfacePathSet* set = &pathSet->pathSet;
    if (surfaceOperations->getIndex() == 0) {
        HxSurface* contours = pathSet->getSurface();
        exec(new PathEditImportContours(set, selection, contours ? contours->getSurface() : nullptr));
    } else if (surfaceOperations->getIndex() == 1) {
        PathEditPatchify* patchify = new PathEditPatchify(set);
        patchify->viewer = this;
        exec(patchify);
    }
}

void SurfaceVertexPathEditor::entangle() {
    SelectionInfo* chosen = getSelection();
    if (chosen->getActivePaths().empty()) return;
    exec(new PathEditEntangle(&pathSet->pathSet, chosen, chosen->getActivePaths(), kEntangleTolerance));
}

// False when the menu has no selection, which ends this update.
bool SurfaceVertexPathEditor::handleConnectorMenu() {
    if (!connector->isNew()) return true;
    const int i = connector->getIndex(0);
    if (i == -1) {
        HxMessage::getTheMsg()->printf("Warning: no path connector available");
        return false;
    }
    currentConnector = connectorCache[i] ? connectorCache[i] : makeConnector(i);
    return true;
}

void SurfaceVertexPathEditor::handleSliders(SelectionInfo* selection) {
    SurfacePathSet* set = &pathSet->pathSet;
    const int numPaths = set->getNumPaths();
    if (selectPath->isNew()) {
        const int v = selectPath->getValue();
        if (v <= numPaths - 1) {
            SelectionInfo single(set);
            single.setSinglePathActive(v);
            exec(new PathEditSelection(selection, single));
            const int controlPoints = set->getNumControlPointsOnPath(v);
            selectCP->setMinMax(-1, controlPoints > 0 ? controlPoints - 1 : -1);
        } else {
            selectPath->setMinMax(-1, numPaths - 1);
            selectPath->setValue(-1);
            selectCP->setMinMax(-1, -1);
        }
        selectCP->setValue(-1);
    }
    if (pathSelection->isNew()) {
        SelectionInfo all(set);
        all.deselectAll();
        const int hit = pathSelection->getIndex();
        if (hit == 0)
            for (int path = 0; path < numPaths; ++path) all.addToActivePaths(path);
        if (hit == 0 || hit == 1) exec(new PathEditSelection(selection, all));
    }
    if (selectCP->isNew()) {
        const int v = selectCP->getValue();
        const int active = selection->getActivePath();
        if (v <= set->getNumControlPointsOnPath(active) - 1) {
            SelectionInfo withCP = *selection;
            withCP.setActiveCP(set->getIndexOfIthCP(v, active));
            exec(new PathEditSelection(selection, withCP));
        } else {
            selectCP->setMinMax(-1, -1);
            selectCP->setValue(-1);
        }
    }
}

// After the first toggle the labels are lower case, unlike the initial "Enable".
void SurfaceVertexPathEditor::handleFreeHandToggle() {
    if (!freeHandDrawing->isNew()) return;
    if (freeHandToggled) {
        freeHandDrawing->setLabel(0, "enable");
        setFreeHandDraw(false);
        freeHandToggled = false;
    } else {
        freeHandDrawing->setLabel(0, "disable");
        setFreeHandDraw(true);
        freeHandToggled = true;
    }
}

// === Mouse and keys

void SurfaceVertexPathEditor::mousePickCB(SoEventCallback* cb) {
    if (!pathSet || !pathSet->isEditorActive()) return;
    SoEvent const* event = cb->getEvent();
    if (!event->isOfType(SoMouseButtonEvent::getClassTypeId())) return;
    cb->getAction()->setGrabber(cb);
    const bool shift = event->wasShiftDown();
    SelectionInfo* selection = getSelection();
    if (freeHandDraw && SO_MOUSE_PRESS_EVENT(event, BUTTON1)) {
        freeHandDrawer->activate(newNodeType, currentConnector);
        return;
    }
    if (freeHandDraw && SO_MOUSE_RELEASE_EVENT(event, BUTTON1)) {
        handleStroke(cb, selection);
        return;
    }
    handleClick(cb, selection, shift);
}

void SurfaceVertexPathEditor::handleStroke(SoEventCallback* cb, SelectionInfo* selection) {
    freeHandDrawer->deactivate();
    McDArray<McDArray<McHandle<SurfaceNode>>> strokes;
    freeHandDrawer->handleDrag(strokes);
    for (McDArray<McHandle<SurfaceNode>> const& nodes : strokes) {
        exec(new PathEditAddPath(&pathSet->pathSet, selection, nodes));
        touchAndFire();
    }
    callEditorCallback();
    cb->setHandled();
}

void SurfaceVertexPathEditor::handleClick(SoEventCallback* cb, SelectionInfo* selection, bool shift) {
    McVec3f point(0, 0, 0);
    PathEditClickInfo click(point);
    initClickInfo(&click, cb, pathSet);
    lastHitKind = click.kind;

    const bool release1 = click.button == 1;
    bool toggle = false, select = false, insert = false, edit = false, newPath = false;
    if (shift) {
        edit = release1 && selection->isInEditMode();
        newPath = release1 && selection->noPathSelected();
    } else if (modeKey == 's') {
        toggle = release1;
    } else if (modeKey == 'i') {
        insert = release1 && selection->isInEditMode() && click.kind == 1 && click.path == selection->getActivePath();
    } else {
        select = release1;
    }
    const int active = selection->getActivePath();
    const int activeCP = selection->getActiveCP();
    SelectionInfo next;
    next = *selection;
    SurfacePathSet* set = &pathSet->pathSet;

    if (toggle) {
        if (click.kind == 1 || click.kind == 2) {
            if (selection->isPathActive(click.path))
                next.deselectPath(click.path);
            else
                next.addToActivePaths(click.path);
            next.setActiveCP(-1);
            exec(new PathEditSelection(selection, next));
        }
    } else if (select) {
        if (click.kind == 0) {
            next.deselectAll();
        } else if (click.kind == 1) {
            next.setSinglePathActive(click.path);
            next.setActiveCP(-1);
        } else if (click.kind == 2) {
            const int cp = click.controlPoint;
            if (!selection->isCPOnActivePath(cp)) {
                next.setSinglePathActive(click.path);
                next.setActiveCP(-1);
            } else if (cp == activeCP) {
                next.setActiveCP(-1);
            } else {
                // With several active paths this only narrows the selection to the control
                // point's path; a further click activates it.
                if (selection->getActivePaths().size() <= 1) next.setActiveCP(cp);
                next.setSinglePathActive(set->getPathForNode(cp));
            }
        }
        exec(new PathEditSelection(selection, next));
    } else if (edit || newPath || insert) {
        McHandle<SurfaceNode> node = createNewSurfaceNode(set, click, newNodeType);
        if (!node) return;
        if (edit && activeCP > -1)
            exec(new PathEditMoveCP(set, selection, activeCP, node.ptr(), currentConnector));
        else if (edit)
            exec(new PathEditAddCP(set, active, node.ptr(), currentConnector));
        else if (newPath)
            exec(new PathEditAddPath(set, selection, node.ptr()));
        else
            exec(new PathEditInsertCP(set, selection, active, click.segment, node.ptr()));
    } else if (click.button == 2) {
        undoBuffer.undo();
    }
    touchAndFire();
    callEditorCallback();
    cb->setHandled();
}

int SurfaceVertexPathEditor::keyCB(SoEvent const* event) {
    if (!pathSet || !pathSet->isEditorActive()) return 0;
    auto const* key = static_cast<SoKeyboardEvent const*>(event);
    const bool press = key->getState() == SoButtonEvent::DOWN;
    if (press && key->getKey() == SoKeyboardEvent::S)
        modeKey = 's';
    else if (press && key->getKey() == SoKeyboardEvent::I)
        modeKey = 'i';
    else if (!press && modeKey != '0' && key->getKey() == SoKeyboardEvent::Key(modeKey))
        modeKey = '0';
    const bool deleteKey = key->getKey() == SoKeyboardEvent::D || key->getKey() == SoKeyboardEvent::DELETE;
    if (!deleteKey) return 0;
    if (press) return 0;  // deletion happens on release
    deleteOperations();
    return 1;
}

void SurfaceVertexPathEditor::deleteOperations() {
    HxDisplaySurfacePathSet* display = pathSet->getDisplaySurfacePathSet(false);
    if (!display) return;
    SelectionInfo* selection = &display->getSelectionInfo();
    SurfacePathSet* set = &pathSet->pathSet;
    if (selection->getActiveCP() >= 0)
        exec(new PathEditDeleteCP(set, selection, selection->getActiveCP(), currentConnector, 0));
    else if (!selection->getActivePaths().empty())
        exec(new PathEditDeletePaths(set, selection, selection->getActivePaths(), 0));
    touchAndFire();
}

// === Commands

int SurfaceVertexPathEditor::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc < 2) return 0;
    char const* const words[] = {"entangle", "untangle", "clearUndoStack", "addCP", "connector",
                                 "splitPathsAtIntersections"};
    int matched = -1;
    for (int i = 0; i < 6 && matched < 0; ++i) {
        getCmdInfo().append(HxCmdInfo{words[i], ""});
        if (!strcmp(argv[1], words[i])) matched = i;
    }
    SurfacePathSet* set = &pathSet->pathSet;
    switch (matched) {
        case 0: exec(new PathEditEntangle(set, getSelection(), kEntangleTolerance)); return 0;
        case 1: exec(new PathEditUntangle(set, getSelection())); return 0;
        case 2: undoBuffer.clear(); return 0;
        case 3: {
            if (argc < 4) {
                HxMessage::getTheMsg()->printf("usage: addCP pathID elemID [bary1] [bary2]");
                return 1;
            }
            const int path = int(strtol(argv[2], nullptr, 10));
            const int element = int(strtol(argv[3], nullptr, 10));
            const float b1 = argc > 4 ? float(strtod(argv[4], nullptr)) : 0.0f;
            const float b2 = argc > 5 ? float(strtod(argv[5], nullptr)) : 0.0f;
            SurfaceNode* node = argc == 4   ? set->nodeFactory.createVertexNode(element)
                                : argc == 5 ? set->nodeFactory.createEdgeNode(element, b1)
                                : argc == 6 ? set->nodeFactory.createTriangleNode(element, b1, b2)
                                            : nullptr;
            McHandle<SurfaceNode> keep(node);
            if (path < set->getNumPaths())
                exec(new PathEditAddCP(set, path, node, connectorOfMenuIndex()));
            else
                exec(new PathEditAddPath(set, nullptr, node));
            touchAndFire();
            return 0;
        }
        case 4:
            if (argc == 2) return 0;
            if (currentConnector) return currentConnector->parse(interp, argc, argv);
            Tcl_VaSetResult(interp, "No connector class instantiated");
            return 0;
        case 5: {
            if (argc > 3) return 0;
            PathEditFixIntersections* split = new PathEditFixIntersections(set, getSelection(), false);
            if (argc == 3) split->entangleTolerance = float(strtod(argv[2], nullptr));
            exec(split);
            touchAndFire();
            return 0;
        }
        default: return 1;
    }
}
