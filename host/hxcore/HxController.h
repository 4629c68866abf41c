#pragma once
// HxController: the host's viewers and the callbacks that editors register for viewer events.
//
// Event flow, the same for the GUI and for scripted events: a viewer event goes to the event
// callbacks in registration order until one returns non-zero (consumed); a mouse-button event
// that nobody consumed and that arrives outside viewing mode is then handed to the viewer's
// scene as an SoHandleEventAction, whose SoEventCallback node calls every pick callback.
//
// The controller owns its viewers and the scene geometry they all show (one shared
// separator); modules add and remove their nodes through HxModule::showGeom/hideGeom.

#include "McDArray.h"

class HxModule;
class HxViewer;
class QWidget;
class SoEvent;
class SoEventCallback;
class SoNode;
class SoPath;
class SoSeparator;

class HxController {
  public:
    using PickCallback = void (*)(void* data, SoEventCallback* cb);
    using EventCallback = int (*)(SoEvent const* e, HxViewer* v, void* data);

    // Initialises the scene-graph library (with offscreen rendering) on first use.
    static HxController* getTheController();

    // === Callbacks (a pair registered twice is called twice; removal drops one registration)
    void addPickCallback(PickCallback f, void* data);
    void removePickCallback(PickCallback f, void* data);
    void addEventCallback(EventCallback f, void* data);
    void removeEventCallback(EventCallback f, void* data);

    // === Viewers
    // Viewer `id` (0..kMaxViewers-1); made if missing and `create` is non-zero, else null.
    // `parent` is the window that will hold it in the GUI (null: offscreen only).
    HxViewer* viewer(int id, int create = 1, QWidget* parent = nullptr);
    static constexpr int kMaxViewers = 16;
    // Redraws every existing viewer.
    void redrawAll();

    // === Scene geometry shown in every viewer
    SoSeparator* getGeometryRoot() const { return mGeometry; }
    // Both return true when they changed the scene (a node is shown once per owner).
    // Nodes added `inFront` go before the others: among hits at the same depth (a line
    // lying on a surface), picks report them first.
    bool addGeometry(HxModule* owner, SoNode* node, bool inFront = false);
    bool removeGeometry(HxModule* owner, SoNode* node);
    void removeAllGeometry(HxModule* owner);
    // The module whose geometry the path runs through (the last one, nearest the picked
    // shape), or null.
    HxModule* findGeometryOwner(SoPath const* path) const;

    // === Dispatch (called by HxViewer::processEvent)
    // Calls the event callbacks in registration order; true when one consumed the event.
    bool callEventCallbacks(SoEvent const* event, HxViewer* viewer);
    // Calls every pick callback with the scene's event callback node.
    void callPickCallbacks(SoEventCallback* node);

  private:
    HxController();
    ~HxController();
    HxController(HxController const&) = delete;
    HxController& operator=(HxController const&) = delete;

    struct PickEntry {
        PickCallback f;
        void* data;
    };
    struct EventEntry {
        EventCallback f;
        void* data;
    };
    struct GeometryEntry {
        HxModule* owner;
        SoNode* node;
    };

    template <class Entry>
    static bool isRegistered(McDArray<Entry> const& list, Entry const& entry) {
        for (Entry const& e : list)
            if (e.f == entry.f && e.data == entry.data) return true;
        return false;
    }

    McDArray<PickEntry> mPickCallbacks;
    McDArray<EventEntry> mEventCallbacks;
    HxViewer* mViewers[kMaxViewers] = {};
    SoSeparator* mGeometry = nullptr;
    McDArray<GeometryEntry> mGeometryEntries;
};
