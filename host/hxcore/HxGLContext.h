#pragma once
// HxGLContext: an offscreen OpenGL context with its own RGBA colour buffer and a depth
// buffer, rendered by OSMesa in main memory, so that viewers draw without any display.
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
    // The colour buffer: width x height RGBA pixels, bottom row first.
    unsigned char const* getPixels() const { return mPixels.data(); }
    // The largest window side we allow (a 256 MB buffer).
    static constexpr int kMaxSize = 8192;

    // Lets Coin's offscreen renderer use contexts of this class. Idempotent.
    static void installOffscreenCallbacks();

  private:
    void* mContext = nullptr;  // OSMesaContext
    std::vector<unsigned char> mPixels;
    int mWidth = 0;
    int mHeight = 0;
};
