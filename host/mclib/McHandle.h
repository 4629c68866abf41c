#pragma once
// McHandle<T>: a counted reference to a McHandable. Null handles are allowed.

#include <utility>

template <class T>
class McHandle {
  public:
    McHandle() = default;
    McHandle(T* object) : mObject(object) { acquire(); }
    McHandle(McHandle const& other) : mObject(other.mObject) { acquire(); }
    McHandle(McHandle&& other) noexcept : mObject(other.mObject) { other.mObject = nullptr; }
    template <class U>
    McHandle(McHandle<U> const& other) : mObject(other.ptr()) { acquire(); }
    ~McHandle() { release(); }

    McHandle& operator=(McHandle const& other) { return assign(other.mObject); }
    McHandle& operator=(McHandle&& other) noexcept {
        if (this != &other) {
            release();
            mObject = other.mObject;
            other.mObject = nullptr;
        }
        return *this;
    }
    McHandle& operator=(T* object) { return assign(object); }

    T* ptr() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }
    operator T*() const { return mObject; }
    explicit operator bool() const { return mObject != nullptr; }

  private:
    McHandle& assign(T* object) {
        if (object != mObject) {
            T* old = mObject;
            mObject = object;
            acquire();
            if (old) old->unref();  // after acquiring: the old object may own the new one
        }
        return *this;
    }
    void acquire() {
        if (mObject) mObject->ref();
    }
    void release() {
        if (mObject) mObject->unref();
        mObject = nullptr;
    }

    T* mObject = nullptr;
};
