#include "HxModule.h"

#include "HxController.h"

MC_TYPED_IMPL(HxModule, HxObject)

HxModule::HxModule(McTypeInfo const* dataType) : portData(this, "data", dataType) {}

// Modules that never showed anything do not start the scene-graph library.
HxModule::~HxModule() {
    if (mNumShownGeometry > 0) HxController::getTheController()->removeAllGeometry(this);
}

void HxModule::showGeom(SoNode* node) {
    if (HxController::getTheController()->addGeometry(this, node)) ++mNumShownGeometry;
}

void HxModule::showGeomInFront(SoNode* node) {
    if (HxController::getTheController()->addGeometry(this, node, true)) ++mNumShownGeometry;
}

void HxModule::hideGeom(SoNode* node) {
    if (mNumShownGeometry > 0 && HxController::getTheController()->removeGeometry(this, node)) --mNumShownGeometry;
}
