#pragma once
// McHandable: the reference count behind McHandle. A new object starts at count 0, so the
// first handle takes it to 1; when the count falls below 1 the object is handed to
// notifyDelete(), which destroys it unless a subclass decides otherwise.

#include <cstdint>

class McHandable {
  public:
    McHandable() = default;
    // A copy is a new object: it does not inherit the original's references.
    McHandable(McHandable const&) : mRefCount(0) {}
    McHandable& operator=(McHandable const&) { return *this; }
    virtual ~McHandable() = default;

    void ref() { ++mRefCount; }
    void unref() {
        if (--mRefCount < 1) notifyDelete();
    }
    // Drops a reference without ever destroying the object.
    void unrefNoDelete() { --mRefCount; }
    int32_t refCount() const { return mRefCount; }

  protected:
    // Out of line: destroys through the virtual destructor, whatever the base order.
    virtual void notifyDelete();

  private:
    int32_t mRefCount = 0;
};
