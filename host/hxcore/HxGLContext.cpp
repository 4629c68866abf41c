#include "HxGLContext.h"

#include <GL/osmesa.h>
#include <Inventor/C/glue/gl.h>

namespace {
OSMesaContext asContext(void* context) { return static_cast<OSMesaContext>(context); }

cc_glglue_offscreen_data createOffscreen(unsigned int width, unsigned int height) {
    auto* context = new HxGLContext;
    context->setSize(static_cast<int>(width), static_cast<int>(height));
    return context;
}
SbBool makeOffscreenCurrent(cc_glglue_offscreen_data data) { return static_cast<HxGLContext*>(data)->makeCurrent(); }
void reinstatePrevious(cc_glglue_offscreen_data data) { static_cast<HxGLContext*>(data)->release(); }
void destructOffscreen(cc_glglue_offscreen_data data) { delete static_cast<HxGLContext*>(data); }
}  // namespace

HxGLContext::HxGLContext() {
    // RGBA with a 24-bit depth buffer; no stencil or accumulation buffer is needed.
    mContext = OSMesaCreateContextExt(OSMESA_RGBA, 24, 0, 0, nullptr);
    setSize(1, 1);
}

HxGLContext::~HxGLContext() {
    release();
    if (mContext) OSMesaDestroyContext(asContext(mContext));
}

void HxGLContext::setSize(int width, int height) {
    mWidth = width < 1 ? 1 : width;
    mHeight = height < 1 ? 1 : height;
    mPixels.assign(static_cast<size_t>(mWidth) * mHeight * 4, 0);
    // A context current on the old buffer must be bound to the new one.
    if (mContext && OSMesaGetCurrentContext() == asContext(mContext))
        OSMesaMakeCurrent(asContext(mContext), mPixels.data(), GL_UNSIGNED_BYTE, mWidth, mHeight);
}

bool HxGLContext::makeCurrent() {
    return mContext && OSMesaMakeCurrent(asContext(mContext), mPixels.data(), GL_UNSIGNED_BYTE, mWidth, mHeight);
}

// OSMesa cannot hand the previous context back without its buffer; every drawer makes its
// own context current before it draws, so releasing is all that is needed.
void HxGLContext::release() {
    if (mContext && OSMesaGetCurrentContext() == asContext(mContext))
        OSMesaMakeCurrent(nullptr, nullptr, GL_UNSIGNED_BYTE, 0, 0);
}

void HxGLContext::installOffscreenCallbacks() {
    static cc_glglue_offscreen_cb_functions functions = {createOffscreen, makeOffscreenCurrent, reinstatePrevious,
                                                         destructOffscreen};
    cc_glglue_context_set_offscreen_cb_functions(&functions);
}
