#include "HxPortMultiMenu.h"

#include "HxInterpreter.h"

#include <algorithm>
#include <cstring>

HxPortMultiMenu::HxPortMultiMenu(HxObject* owner, char const* name, int numMenus) : HxPort(owner, name) {
    mMenus.resize(std::max(numMenus, 1));
}

void HxPortMultiMenu::setNum(int menu, int n) {
    if (!hasMenu(menu)) return;
    Menu& m = mMenus[menu];
    m.entries.setNum(n);
    const int count = m.entries.getNum();
    m.index = count == 0 ? -1 : std::clamp(m.index, 0, count - 1);
}

void HxPortMultiMenu::setLabel(int menu, int i, char const* text) {
    if (hasMenu(menu)) mMenus[menu].entries.setLabel(i, text);
}

void HxPortMultiMenu::setIndex(int menu, int i) {
    if (hasMenu(menu) && mMenus[menu].entries.contains(i)) mMenus[menu].index = i;
}

McString HxPortMultiMenu::usage() const {
    return "getNum ?MENU?, setNum ?MENU? N, getIndex ?MENU?, setIndex ?MENU? I, getLabel ?MENU? ?I?, "
           "setLabel ?MENU? ?I? TEXT, " +
           HxPort::usage();
}

int HxPortMultiMenu::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    if (!strcmp(cmd, "getNum")) return parseMenuQuery(interp, argc, argv, &HxPortMultiMenu::getNum, "getNum ?MENU?");
    if (!strcmp(cmd, "setNum")) return parseSetNum(interp, argc, argv);
    if (!strcmp(cmd, "getIndex"))
        return parseMenuQuery(interp, argc, argv, &HxPortMultiMenu::getIndex, "getIndex ?MENU?");
    if (!strcmp(cmd, "setIndex")) return parseSetIndex(interp, argc, argv);
    // Without an entry index the label is the port's own.
    if (!strcmp(cmd, "getLabel") && argc > 1) return parseGetLabel(interp, argc, argv);
    if (!strcmp(cmd, "setLabel") && argc > 2) return parseSetLabel(interp, argc, argv);
    return HxPort::parse(interp, argc, argv);
}

int HxPortMultiMenu::parseMenuQuery(Tcl_Interp* interp, int argc, char** argv,
                                    int (HxPortMultiMenu::*query)(int) const, char const* usageText) const {
    int menu = 0;
    if (!parseMenu(interp, argc, argv, 0, menu, usageText)) return TCL_ERROR;
    Tcl_VaSetResult(interp, "%d", (this->*query)(menu));
    return TCL_OK;
}

int HxPortMultiMenu::parseSetNum(Tcl_Interp* interp, int argc, char** argv) {
    int menu = 0;
    int n = 0;
    if (!parseMenu(interp, argc, argv, 1, menu, "setNum ?MENU? N")) return TCL_ERROR;
    if (!parseInt(interp, argv[argc - 1], n)) return TCL_ERROR;
    if (n < 0) {
        Tcl_VaSetResult(interp, "port \"%s\": a menu cannot have %d entries", getName(), n);
        return TCL_ERROR;
    }
    setNum(menu, n);
    return TCL_OK;
}

int HxPortMultiMenu::parseSetIndex(Tcl_Interp* interp, int argc, char** argv) {
    int menu = 0;
    int i = 0;
    if (!parseMenu(interp, argc, argv, 1, menu, "setIndex ?MENU? I")) return TCL_ERROR;
    if (!parseEntry(interp, menu, argv[argc - 1], i)) return TCL_ERROR;
    setIndex(menu, i);
    touch();
    return TCL_OK;
}

int HxPortMultiMenu::parseGetLabel(Tcl_Interp* interp, int argc, char** argv) const {
    int menu = 0;
    int i = 0;
    if (!parseMenu(interp, argc, argv, 1, menu, "getLabel ?MENU? ?I?")) return TCL_ERROR;
    if (!parseEntry(interp, menu, argv[argc - 1], i)) return TCL_ERROR;
    Tcl_SetResult(interp, const_cast<char*>(getLabel(menu, i)), TCL_VOLATILE);
    return TCL_OK;
}

int HxPortMultiMenu::parseSetLabel(Tcl_Interp* interp, int argc, char** argv) {
    int menu = 0;
    int i = 0;
    if (!parseMenu(interp, argc, argv, 2, menu, "setLabel ?MENU? ?I? TEXT")) return TCL_ERROR;
    if (!parseEntry(interp, menu, argv[argc - 2], i)) return TCL_ERROR;
    setLabel(menu, i, argv[argc - 1]);
    return TCL_OK;
}

bool HxPortMultiMenu::parseMenu(Tcl_Interp* interp, int argc, char** argv, int tail, int& menu,
                                char const* usageText) const {
    return parseOptionalIndex(interp, argc, argv, tail, getNumMenus(), menu, usageText);
}

bool HxPortMultiMenu::parseEntry(Tcl_Interp* interp, int menu, char const* text, int& i) const {
    if (!parseInt(interp, text, i)) return false;
    if (mMenus[menu].entries.contains(i)) return true;
    if (getNum(menu) == 0)
        Tcl_VaSetResult(interp, "port \"%s\": menu %d has no entries", getName(), menu);
    else
        Tcl_VaSetResult(interp, "port \"%s\": menu %d has no entry %d (0 to %d)", getName(), menu, i, getNum(menu) - 1);
    return false;
}
