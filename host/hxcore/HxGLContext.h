#pragma once
// HxGLContext: an offscreen OpenGL context with an RGBA colour buffer and a depth buffer,
// rendered in software without any display (an EGL pbuffer on Mesa's surfaceless platform).
// EGL, unlike a private software GL library, dispatches through the same vendor-neutral GL
// as the window system, so an offscreen viewer and a window's viewer share one process.
//
// Coin's own offscreen rendering (SoOffscreenRenderer) is routed to contexts of this class
// too (installOffscreenCallbacks), so that it works headless as well.

#include <vector>

class HxGLContext {
  public:
    HxGLContext();
    ~HxGLContext();
    HxGLContext(HxGLContext const&) = delete;
    HxGLContext& operator=(HxGLContext const&) = delete;

    bool isValid() const { return mContext != nullptr; }
    // Resizes the buffer (its contents become undefined).
    void setSize(int width, int height);
    int getWidth() const { return mWidth; }
    int getHeight() const { return mHeight; }
    // Makes this context current.
    bool makeCurrent();
    // Releases the context if it is current.
    void release();
    // Waits until everything drawn so far is done and frees the GL context; the object
    // stays, no longer valid.
    void discard();
    // The colour buffer read back from GL: width x height RGBA pixels, bottom row first.
    unsigned char const* getPixels();
    // The largest window side we allow (a 256 MB buffer).
    static constexpr int kMaxSize = 8192;

    // Lets Coin's offscreen renderer use contexts of this class. Idempotent.
    static void installOffscreenCallbacks();

  private:
    void* mContext = nullptr;  // EGLContext
    void* mSurface = nullptr;  // EGLSurface
    void* mConfig = nullptr;   // EGLConfig
    std::vector<unsigned char> mPixels;
    int mWidth = 0;
    int mHeight = 0;
};
