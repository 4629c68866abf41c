#include "SurfacePathEditorGUIBase.h"

MC_TYPED_IMPL(SurfacePathEditorGUIBase, SurfacePathEditorViewerBase)

SurfacePathEditorGUIBase::SurfacePathEditorGUIBase() { setEditorCallback(editorCallBack, this); }

SurfacePathEditorGUIBase::SurfacePathEditorGUIBase(HxSurfacePathSet* ps) : SurfacePathEditorViewerBase(ps) {
    setEditorCallback(editorCallBack, this);
}

void editorCallBack(void* data) {
    if (data) static_cast<SurfacePathEditorGUIBase*>(data)->checkButtons();
}
