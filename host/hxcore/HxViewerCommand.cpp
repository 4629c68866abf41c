#include "HxViewerCommand.h"

#include "HxController.h"
#include "HxInterpreter.h"
#include "HxModule.h"
#include "HxViewer.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoLocation2Event.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoCamera.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>

#include <cctype>
#include <cmath>
#include <cstring>
#include <map>
#include <string>

namespace {

using Argv = char const**;

char const* const kUsage =
    "viewer ID SUBCOMMAND ...  -- a 3D viewer (ID 0 is the main one); subcommands:\n"
    "  setSize W H | getSize | viewAll | redraw | snapshot FILE.png\n"
    "  project X Y Z  -- screen position SX SY of a world point (origin bottom left)\n"
    "  pick SX SY  -- what lies under a screen point: object NAME point {X Y Z} and what the object adds\n"
    "  mouse press|release BUTTON SX SY ?-shift? ?-ctrl?  -- BUTTON 1 left, 2 middle, 3 right; returns 1 if handled\n"
    "  mouseMove SX SY ?-shift? ?-ctrl?\n"
    "  key press|release KEY ?-shift? ?-ctrl?  -- KEY a letter or digit, or a name such as DELETE, ESCAPE, RETURN\n"
    "  setViewing 0|1 | isViewing  -- viewing: the mouse moves the camera and picks nothing\n"
    "  camera  -- position {X Y Z} orientation {AX AY AZ ANGLE} heightAngle A focalDistance D\n"
    "  camera position X Y Z | camera orientation AX AY AZ ANGLE | camera pointAt X Y Z |"
    " camera heightAngle RADIANS | camera focalDistance D";

// The usage line of one subcommand, for its error message.
std::string subUsage(char const* id, char const* sub, char const* args) {
    return std::string("viewer ") + id + " " + sub + (args[0] ? " " : "") + args;
}

int wrongArgs(Tcl_Interp* interp, char const* id, char const* sub, char const* args) {
    return cmdError(interp, HX_CMD_WRONG_ARGS, subUsage(id, sub, args).c_str());
}

bool parseFloats(Tcl_Interp* interp, Argv argv, int n, float* values) {
    for (int i = 0; i < n; ++i) {
        double value;
        if (Tcl_GetDouble(interp, argv[i], &value) != TCL_OK || !std::isfinite(value)) {
            Tcl_ResetResult(interp);
            Tcl_VaSetResult(interp, "expected a number but got \"%s\"", argv[i]);
            return false;
        }
        values[i] = float(value);
    }
    return true;
}

void appendFloats(Tcl_Interp* interp, Tcl_Obj* list, float const* values, int n) {
    Tcl_Obj* sub = Tcl_NewListObj(0, nullptr);
    for (int i = 0; i < n; ++i) Tcl_ListObjAppendElement(interp, sub, Tcl_NewDoubleObj(values[i]));
    Tcl_ListObjAppendElement(interp, list, sub);
}

void appendWord(Tcl_Interp* interp, Tcl_Obj* list, char const* word) {
    Tcl_ListObjAppendElement(interp, list, Tcl_NewStringObj(word, -1));
}

// === Events

struct Modifiers {
    bool shift = false;
    bool ctrl = false;
};

// Reads trailing -shift / -ctrl words; false on anything else.
bool parseModifiers(Tcl_Interp* interp, int argc, Argv argv, Modifiers& modifiers) {
    for (int i = 0; i < argc; ++i) {
        if (!strcmp(argv[i], "-shift"))
            modifiers.shift = true;
        else if (!strcmp(argv[i], "-ctrl"))
            modifiers.ctrl = true;
        else {
            Tcl_VaSetResult(interp, "unknown option \"%s\": expected -shift or -ctrl", argv[i]);
            return false;
        }
    }
    return true;
}

void prepareEvent(SoEvent& event, float sx, float sy, Modifiers const& modifiers) {
    event.setTime(SbTime::getTimeOfDay());
    event.setPosition(SbVec2s(short(std::lround(sx)), short(std::lround(sy))));
    event.setShiftDown(modifiers.shift);
    event.setCtrlDown(modifiers.ctrl);
}

bool parseState(Tcl_Interp* interp, char const* word, SoButtonEvent::State& state) {
    if (!strcmp(word, "press")) state = SoButtonEvent::DOWN;
    else if (!strcmp(word, "release")) state = SoButtonEvent::UP;
    else {
        Tcl_VaSetResult(interp, "expected press or release but got \"%s\"", word);
        return false;
    }
    return true;
}

// Screen positions are kept inside the range an Inventor event can carry.
bool checkPosition(Tcl_Interp* interp, float const* xy) {
    if (std::fabs(xy[0]) > 32000 || std::fabs(xy[1]) > 32000) {
        Tcl_VaSetResult(interp, "screen position %g %g is out of range", xy[0], xy[1]);
        return false;
    }
    return true;
}

int mouseCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    char const* args = "press|release BUTTON SX SY ?-shift? ?-ctrl?";
    if (argc < 4) return wrongArgs(interp, id, "mouse", args);
    SoButtonEvent::State state;
    int button;
    float xy[2];
    Modifiers modifiers;
    if (!parseState(interp, argv[0], state)) return TCL_ERROR;
    if (Tcl_GetInt(interp, argv[1], &button) != TCL_OK || button < 1 || button > 5) {
        Tcl_ResetResult(interp);
        Tcl_VaSetResult(interp, "mouse button must be 1 (left), 2 (middle), 3 (right), 4 or 5, not \"%s\"", argv[1]);
        return TCL_ERROR;
    }
    if (!parseFloats(interp, argv + 2, 2, xy) || !checkPosition(interp, xy) ||
        !parseModifiers(interp, argc - 4, argv + 4, modifiers))
        return TCL_ERROR;
    SoMouseButtonEvent event;
    prepareEvent(event, xy[0], xy[1], modifiers);
    event.setButton(SoMouseButtonEvent::Button(SoMouseButtonEvent::BUTTON1 + button - 1));
    event.setState(state);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(viewer->processEvent(&event) ? 1 : 0));
    return TCL_OK;
}

int mouseMoveCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    if (argc < 2) return wrongArgs(interp, id, "mouseMove", "SX SY ?-shift? ?-ctrl?");
    float xy[2];
    Modifiers modifiers;
    if (!parseFloats(interp, argv, 2, xy) || !checkPosition(interp, xy) ||
        !parseModifiers(interp, argc - 2, argv + 2, modifiers))
        return TCL_ERROR;
    SoLocation2Event event;
    prepareEvent(event, xy[0], xy[1], modifiers);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(viewer->processEvent(&event) ? 1 : 0));
    return TCL_OK;
}

// Inventor's key names (DELETE, ESCAPE, PAGE_UP, ...), looked up once.
std::map<std::string, SoKeyboardEvent::Key> const& keyNames() {
    static std::map<std::string, SoKeyboardEvent::Key> names = [] {
        std::map<std::string, SoKeyboardEvent::Key> map;
        for (int code = 1; code <= 0xffff; ++code) {
            SbString name;
            if (SoKeyboardEvent::enumToString(SoKeyboardEvent::Key(code), name)) map.emplace(name.getString(), SoKeyboardEvent::Key(code));
        }
        return map;
    }();
    return names;
}

// A single printable character is that key (letters as their lower case key); longer words
// are Inventor key names.
bool parseKey(char const* word, SoKeyboardEvent::Key& key, char& printable) {
    printable = 0;
    if (word[0] && !word[1] && isprint(static_cast<unsigned char>(word[0])) && !isspace(static_cast<unsigned char>(word[0]))) {
        printable = word[0];
        key = SoKeyboardEvent::Key(tolower(static_cast<unsigned char>(word[0])));
        return true;
    }
    auto found = keyNames().find(word);
    if (found == keyNames().end()) return false;
    key = found->second;
    if (key == SoKeyboardEvent::SPACE) printable = ' ';
    return true;
}

int keyCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    if (argc < 2) return wrongArgs(interp, id, "key", "press|release KEY ?-shift? ?-ctrl?");
    SoButtonEvent::State state;
    SoKeyboardEvent::Key key;
    char printable;
    Modifiers modifiers;
    if (!parseState(interp, argv[0], state)) return TCL_ERROR;
    if (!parseKey(argv[1], key, printable)) {
        Tcl_VaSetResult(interp, "unknown key \"%s\": give one character or a key name such as DELETE, ESCAPE, RETURN, SPACE, LEFT_ARROW", argv[1]);
        return TCL_ERROR;
    }
    if (!parseModifiers(interp, argc - 2, argv + 2, modifiers)) return TCL_ERROR;
    SoKeyboardEvent event;
    prepareEvent(event, 0, 0, modifiers);
    event.setKey(key);
    if (printable) event.setPrintableCharacter(printable);
    event.setState(state);
    Tcl_SetObjResult(interp, Tcl_NewIntObj(viewer->processEvent(&event) ? 1 : 0));
    return TCL_OK;
}

// === Camera

void describeCamera(Tcl_Interp* interp, SoCamera* camera) {
    Tcl_Obj* words = Tcl_NewListObj(0, nullptr);
    appendWord(interp, words, "position");
    appendFloats(interp, words, camera->position.getValue().getValue(), 3);
    SbVec3f axis;
    float angle;
    camera->orientation.getValue().getValue(axis, angle);
    const float rotation[4] = {axis[0], axis[1], axis[2], angle};
    appendWord(interp, words, "orientation");
    appendFloats(interp, words, rotation, 4);
    if (camera->isOfType(SoPerspectiveCamera::getClassTypeId())) {
        appendWord(interp, words, "heightAngle");
        Tcl_ListObjAppendElement(interp, words, Tcl_NewDoubleObj(static_cast<SoPerspectiveCamera*>(camera)->heightAngle.getValue()));
    }
    appendWord(interp, words, "focalDistance");
    Tcl_ListObjAppendElement(interp, words, Tcl_NewDoubleObj(camera->focalDistance.getValue()));
    Tcl_SetObjResult(interp, words);
}

int cameraCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    SoCamera* camera = viewer->getCamera();
    if (argc == 0) {
        describeCamera(interp, camera);
        return TCL_OK;
    }
    char const* what = argv[0];
    float v[4];
    auto expect = [&](int n, char const* args) {
        if (argc != n + 1) {
            wrongArgs(interp, id, (std::string("camera ") + what).c_str(), args);
            return false;
        }
        return parseFloats(interp, argv + 1, n, v);
    };
    if (!strcmp(what, "position")) {
        if (!expect(3, "X Y Z")) return TCL_ERROR;
        camera->position.setValue(v[0], v[1], v[2]);
    } else if (!strcmp(what, "orientation")) {
        if (!expect(4, "AX AY AZ ANGLE")) return TCL_ERROR;
        if (v[0] == 0 && v[1] == 0 && v[2] == 0) {
            Tcl_SetResult(interp, const_cast<char*>("the rotation axis must not be zero"), TCL_STATIC);
            return TCL_ERROR;
        }
        camera->orientation.setValue(SbRotation(SbVec3f(v[0], v[1], v[2]), v[3]));
    } else if (!strcmp(what, "pointAt")) {
        if (!expect(3, "X Y Z")) return TCL_ERROR;
        camera->pointAt(SbVec3f(v[0], v[1], v[2]));
        camera->focalDistance = (SbVec3f(v[0], v[1], v[2]) - camera->position.getValue()).length();
    } else if (!strcmp(what, "heightAngle")) {
        if (!expect(1, "RADIANS")) return TCL_ERROR;
        if (!(v[0] > 0 && v[0] < 3.1f)) {
            Tcl_SetResult(interp, const_cast<char*>("the height angle must lie between 0 and pi radians"), TCL_STATIC);
            return TCL_ERROR;
        }
        if (camera->isOfType(SoPerspectiveCamera::getClassTypeId()))
            static_cast<SoPerspectiveCamera*>(camera)->heightAngle = v[0];
    } else if (!strcmp(what, "focalDistance")) {
        if (!expect(1, "D")) return TCL_ERROR;
        camera->focalDistance = v[0];
    } else {
        Tcl_VaSetResult(interp, "unknown camera setting \"%s\": expected position, orientation, pointAt, heightAngle or focalDistance", what);
        return TCL_ERROR;
    }
    return TCL_OK;
}

// === Picking

int pickCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    float xy[2];
    if (argc != 2) return wrongArgs(interp, id, "pick", "SX SY");
    if (!parseFloats(interp, argv, 2, xy)) return TCL_ERROR;
    SoPickedPoint const* picked = viewer->pick(xy[0], xy[1]);
    if (!picked) return TCL_OK;
    Tcl_Obj* words = Tcl_NewListObj(0, nullptr);
    HxModule* owner = HxController::getTheController()->findGeometryOwner(picked->getPath());
    appendWord(interp, words, "object");
    appendWord(interp, words, owner ? owner->getLabel() : "");
    appendWord(interp, words, "point");
    appendFloats(interp, words, picked->getPoint().getValue(), 3);
    if (owner) owner->describePick(*picked, interp, words);
    Tcl_SetObjResult(interp, words);
    return TCL_OK;
}

int projectCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    float p[3], sx, sy;
    if (argc != 3) return wrongArgs(interp, id, "project", "X Y Z");
    if (!parseFloats(interp, argv, 3, p)) return TCL_ERROR;
    if (!viewer->project(McVec3f(p[0], p[1], p[2]), sx, sy)) {
        Tcl_VaSetResult(interp, "the point %g %g %g lies behind the camera", p[0], p[1], p[2]);
        return TCL_ERROR;
    }
    Tcl_Obj* result = Tcl_NewListObj(0, nullptr);
    Tcl_ListObjAppendElement(interp, result, Tcl_NewDoubleObj(sx));
    Tcl_ListObjAppendElement(interp, result, Tcl_NewDoubleObj(sy));
    Tcl_SetObjResult(interp, result);
    return TCL_OK;
}

// === Window and drawing

int sizeCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    int w, h;
    if (argc != 2) return wrongArgs(interp, id, "setSize", "W H");
    if (Tcl_GetInt(interp, argv[0], &w) != TCL_OK || Tcl_GetInt(interp, argv[1], &h) != TCL_OK) return TCL_ERROR;
    McString error;
    if (!viewer->setSize(w, h, error)) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj(error.c_str(), -1));
        return TCL_ERROR;
    }
    return TCL_OK;
}

int snapshotCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    if (argc != 1) return wrongArgs(interp, id, "snapshot", "FILE.png");
    const size_t n = strlen(argv[0]);
    if (n < 5 || strcasecmp(argv[0] + n - 4, ".png")) {
        Tcl_VaSetResult(interp, "cannot write \"%s\": snapshots are PNG images, so the file name must end in .png", argv[0]);
        return TCL_ERROR;
    }
    McString error;
    if (!viewer->snapshot(argv[0], error)) {
        Tcl_SetObjResult(interp, Tcl_NewStringObj(error.c_str(), -1));
        return TCL_ERROR;
    }
    return TCL_OK;
}

int viewingCmd(Tcl_Interp* interp, HxViewer* viewer, char const* id, int argc, Argv argv) {
    int on;
    if (argc != 1) return wrongArgs(interp, id, "setViewing", "0|1");
    if (Tcl_GetBoolean(interp, argv[0], &on) != TCL_OK) return TCL_ERROR;
    viewer->setViewing(on != 0);
    return TCL_OK;
}

using SubCommand = int (*)(Tcl_Interp*, HxViewer*, char const* id, int argc, Argv argv);

int noArgs(Tcl_Interp* interp, char const* id, char const* sub, int argc) {
    return argc == 0 ? TCL_OK : wrongArgs(interp, id, sub, "");
}

int viewerCmd(ClientData, Tcl_Interp* interp, int argc, Argv argv) {
    if (argc < 3) return cmdError(interp, HX_CMD_WRONG_ARGS, kUsage);
    int id;
    if (Tcl_GetInt(interp, argv[1], &id) != TCL_OK || id < 0 || id >= HxController::kMaxViewers) {
        Tcl_ResetResult(interp);
        Tcl_VaSetResult(interp, "viewer ID must be a number from 0 to %d, not \"%s\"", HxController::kMaxViewers - 1, argv[1]);
        return TCL_ERROR;
    }
    HxViewer* viewer = HxController::getTheController()->viewer(id, 1);
    char const* sub = argv[2];
    const int n = argc - 3;
    Argv rest = argv + 3;
    static const std::map<std::string, SubCommand> withArgs = {
        {"mouse", mouseCmd},   {"mouseMove", mouseMoveCmd}, {"key", keyCmd},           {"camera", cameraCmd},
        {"pick", pickCmd},     {"project", projectCmd},     {"setSize", sizeCmd},      {"snapshot", snapshotCmd},
        {"setViewing", viewingCmd},
    };
    auto found = withArgs.find(sub);
    if (found != withArgs.end()) return found->second(interp, viewer, argv[1], n, rest);
    if (!strcmp(sub, "viewAll")) {
        if (noArgs(interp, argv[1], sub, n) != TCL_OK) return TCL_ERROR;
        viewer->viewAll();
    } else if (!strcmp(sub, "redraw")) {
        if (noArgs(interp, argv[1], sub, n) != TCL_OK) return TCL_ERROR;
        viewer->redraw();
    } else if (!strcmp(sub, "isViewing")) {
        if (noArgs(interp, argv[1], sub, n) != TCL_OK) return TCL_ERROR;
        Tcl_SetObjResult(interp, Tcl_NewIntObj(viewer->isViewing() ? 1 : 0));
    } else if (!strcmp(sub, "getSize")) {
        if (noArgs(interp, argv[1], sub, n) != TCL_OK) return TCL_ERROR;
        Tcl_VaSetResult(interp, "%d %d", viewer->getGlxSize()[0], viewer->getGlxSize()[1]);
    } else {
        Tcl_VaSetResult(interp, "unknown viewer subcommand \"%s\"; usage:\n%s", sub, kUsage);
        return TCL_ERROR;
    }
    return TCL_OK;
}

}  // namespace

void HxViewerCommand::install() {
    HxInterpreter::getTheInterpreter().addCommand("viewer", viewerCmd, nullptr);
    for (HxCmdInfo const& info : getCmdInfo())
        if (info.name == "viewer") return;
    getCmdInfo().append(HxCmdInfo{"viewer", kUsage});
}
