#include "HxPortRadioBox.h"

#include "HxInterpreter.h"

#include <cstring>

HxPortRadioBox::HxPortRadioBox(HxObject* owner, char const* name, int numButtons)
    : HxPortItemList(owner, name, numButtons), mValue(getNum() > 0 ? 0 : -1) {}

void HxPortRadioBox::setValue(int i) {
    if (hasItem(i)) mValue = i;
}

McString HxPortRadioBox::usage() const { return "getValue, setValue I, " + HxPortItemList::usage(); }

int HxPortRadioBox::parse(Tcl_Interp* interp, int argc, char** argv) {
    char const* cmd = argc > 0 ? argv[0] : "";
    if (!strcmp(cmd, "setValue")) return parseSetValue(interp, argc, argv);
    if (!strcmp(cmd, "getValue")) {
        if (argc != 1) return wrongArgs(interp, "getValue");
        Tcl_VaSetResult(interp, "%d", mValue);
        return TCL_OK;
    }
    return HxPortItemList::parse(interp, argc, argv);
}

int HxPortRadioBox::parseSetValue(Tcl_Interp* interp, int argc, char** argv) {
    int i = 0;
    if (argc != 2) return wrongArgs(interp, "setValue I");
    if (!parseIndex(interp, argv[1], getNum(), i)) return TCL_ERROR;
    setValue(i);
    touch();
    return TCL_OK;
}
