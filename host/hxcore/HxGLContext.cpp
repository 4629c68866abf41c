#include "HxGLContext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <Inventor/C/glue/gl.h>

#include <cstdlib>
#include <mutex>
#include <set>

namespace {
// One display for the whole process: surfaceless, so that no window system is needed.
EGLDisplay theDisplay() {
    static EGLDisplay display = [] {
        auto getPlatformDisplay =
            reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
        EGLDisplay d = getPlatformDisplay ? getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr)
                                          : EGL_NO_DISPLAY;
        if (d != EGL_NO_DISPLAY && !eglInitialize(d, nullptr, nullptr)) d = EGL_NO_DISPLAY;
        return d;
    }();
    return display;
}

// The contexts alive now. The software rasteriser draws on threads of its own; a process
// that exits while they still work on a flushed frame can crash in their teardown, and
// leak checkers that stop every thread at exit trip over them. So at exit every context
// finishes its work and is freed, which ends those threads before the exit handlers of the
// GL libraries run. The display stays open: closing it unloads the driver, whose own
// allocations then could not be told apart from ours.
std::set<HxGLContext*>& liveContexts() {
    static auto* contexts = new std::set<HxGLContext*>;
    return *contexts;
}

void discardAllAtExit() {
    const std::set<HxGLContext*> contexts = liveContexts();
    for (HxGLContext* context : contexts) context->discard();
}

void registerLive(HxGLContext* context) {
    static std::once_flag atExit;
    std::call_once(atExit, [] { std::atexit(discardAllAtExit); });
    liveContexts().insert(context);
}

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
    EGLDisplay display = theDisplay();
    if (display == EGL_NO_DISPLAY || !eglBindAPI(EGL_OPENGL_API)) return;
    // RGBA with a 24-bit depth buffer; no stencil or multisampling is needed.
    const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,     8,                EGL_GREEN_SIZE,      8,
                                 EGL_BLUE_SIZE,    8,                EGL_ALPHA_SIZE,      8,
                                 EGL_DEPTH_SIZE,   24,               EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (!eglChooseConfig(display, attributes, &config, 1, &count) || count < 1) return;
    EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT) return;
    mConfig = config;
    mContext = context;
    setSize(1, 1);
    registerLive(this);
}

HxGLContext::~HxGLContext() { discard(); }

void HxGLContext::discard() {
    liveContexts().erase(this);
    if (!mContext) return;
    if (makeCurrent()) glFinish();
    release();
    if (mSurface) eglDestroySurface(theDisplay(), static_cast<EGLSurface>(mSurface));
    eglDestroyContext(theDisplay(), static_cast<EGLContext>(mContext));
    mSurface = nullptr;
    mContext = nullptr;
}

void HxGLContext::setSize(int width, int height) {
    width = width < 1 ? 1 : width;
    height = height < 1 ? 1 : height;
    if (!mContext || (mSurface && width == mWidth && height == mHeight)) return;
    const bool wasCurrent = mSurface && eglGetCurrentContext() == static_cast<EGLContext>(mContext);
    EGLSurface old = static_cast<EGLSurface>(mSurface);
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    mSurface = eglCreatePbufferSurface(theDisplay(), static_cast<EGLConfig>(mConfig), size);
    if (mSurface == EGL_NO_SURFACE) {
        mSurface = old;
        return;
    }
    mWidth = width;
    mHeight = height;
    // A context current on the old buffer must be bound to the new one.
    if (wasCurrent) makeCurrent();
    if (old) eglDestroySurface(theDisplay(), old);
}

bool HxGLContext::makeCurrent() {
    if (!mContext || !mSurface) return false;
    EGLSurface surface = static_cast<EGLSurface>(mSurface);
    return eglMakeCurrent(theDisplay(), surface, surface, static_cast<EGLContext>(mContext));
}

// Every drawer makes its own context current before it draws, so releasing is all that is
// needed to hand the thread back.
void HxGLContext::release() {
    if (mContext && eglGetCurrentContext() == static_cast<EGLContext>(mContext))
        eglMakeCurrent(theDisplay(), EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
}

unsigned char const* HxGLContext::getPixels() {
    mPixels.assign(static_cast<size_t>(mWidth) * mHeight * 4, 0);
    if (!makeCurrent()) return mPixels.data();
    glFinish();
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, mWidth, mHeight, GL_RGBA, GL_UNSIGNED_BYTE, mPixels.data());
    return mPixels.data();
}

void HxGLContext::installOffscreenCallbacks() {
    static cc_glglue_offscreen_cb_functions functions = {createOffscreen, makeOffscreenCurrent, reinstatePrevious,
                                                         destructOffscreen};
    cc_glglue_context_set_offscreen_cb_functions(&functions);
}
