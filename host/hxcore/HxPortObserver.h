#pragma once
// HxPortObserver: the hook through which a GUI follows the host: a module's set of ports
// changed and its widgets must be rebuilt, an object's update ran and its widgets must show
// the ports' new values, or the object pool changed. Headless, nobody listens.

class HxObject;

class HxPortObserver {
  public:
    virtual ~HxPortObserver() = default;
    virtual void portsChanged(HxObject* object) = 0;
    // After fire() ran the object's update() and cleared its ports' new-value flags.
    virtual void objectFired(HxObject*) {}
    // An object entered or left the pool, or was renamed.
    virtual void poolChanged() {}

    // Installs the observer (null removes it); the caller keeps ownership.
    static void setObserver(HxPortObserver* observer);
    static void notifyPortsChanged(HxObject* object);
    static void notifyObjectFired(HxObject* object);
    static void notifyPoolChanged();
};
