#include "HxEditor.h"

#include "HxData.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxPortObserver.h"

#include <cstring>

MC_TYPED_IMPL(HxEditor, HxModule)

HxEditor::HxEditor(McTypeInfo const* dataType) : HxModule(dataType) {}

HxEditor::~HxEditor() {
    if (mEditedData) mEditedData->setEditorActive(false);
}

void HxEditor::startEditing(HxData* data) {
    mEditedData = data;
    if (data) data->setEditorActive(true);
}

void HxEditor::stopEditing() {
    if (mEditedData) mEditedData->setEditorActive(false);
    mEditedData = nullptr;
}

void HxEditor::createPortWidgets(HxData* data) { HxPortObserver::notifyPortsChanged(this); }

bool HxEditor::attach(HxData* data) {
    if (!typeCheck(data)) return false;
    if (mEditedData) detach();
    portData.connect(data);
    startEditing(data);
    return true;
}

void HxEditor::detach() {
    if (mEditedData) stopEditing();
    portData.disconnect();
}

void HxEditor::fire(int arg) {
    // The edited data was removed: stop editing before the module sees the change.
    if (mEditedData && portData.getSource() != mEditedData) stopEditing();
    HxModule::fire(arg);
}

int HxEditor::parse(Tcl_Interp* interp, int argc, char** argv) {
    if (argc >= 2 && !strcmp(argv[1], "attach")) {
        if (argc != 3) return cmdError(interp, HX_CMD_WRONG_ARGS, McString::format("%s attach DATA", argv[0]).c_str());
        HxObject* object = HxObjectPool::getTheObjectPool().findObject(argv[2]);
        HxData* data = object && object->isOfType(HxData::getClassTypeId()) ? static_cast<HxData*>(object) : nullptr;
        if (!data || !attach(data)) {
            Tcl_VaSetResult(interp, "%s cannot edit \"%s\": it needs a data object of class %s", getLabel(), argv[2],
                            portData.getType() ? portData.getType()->getName() : "HxData");
            return TCL_ERROR;
        }
        return TCL_OK;
    }
    if (argc == 2 && !strcmp(argv[1], "detach")) {
        detach();
        return TCL_OK;
    }
    return HxModule::parse(interp, argc, argv);
}
