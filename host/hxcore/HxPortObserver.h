#pragma once
// HxPortObserver: the hook through which a GUI learns that a module's set of ports changed
// and its widgets must be rebuilt. Headless, nobody listens.

class HxObject;

class HxPortObserver {
  public:
    virtual ~HxPortObserver() = default;
    virtual void portsChanged(HxObject* object) = 0;

    // Installs the observer (null removes it); the caller keeps ownership.
    static void setObserver(HxPortObserver* observer);
    static void notifyPortsChanged(HxObject* object);
};
