#pragma once
// HxObject: a data object or module in the object pool. Its Tcl command is its label.
//
// Objects are reference counted: the object pool holds one reference, and anyone who must
// keep an object alive beyond its removal from the pool (an editor's display modules) holds
// an McHandle. The object keeps plain pointers to its ports (their creators own them) and to the
// connections of other objects that read from it (downstream). fire() runs this object's
// update() with the ports' new-value flags, clears them (also those of ports made during that
// update), and then fires every object downstream whose connection points here.

#include "HxBase.h"
#include "McDArray.h"
#include "McHandable.h"

#include <tcl.h>

class HxPort;
class HxConnection;

class HxObject : public HxBase, public McHandable {
    MC_TYPED_HEADER(HxObject)
  public:
    HxObject() = default;
    ~HxObject() override;
    HxObject(HxObject const&) = delete;
    HxObject& operator=(HxObject const&) = delete;

    // Renames the object; inside the pool the label stays unique and the Tcl command follows.
    void setLabel(char const* label) override;

    // === Ports
    McDArray<HxPort*> const& getPorts() const { return mPorts; }
    HxPort* getPort(char const* name) const;
    void addPort(HxPort* port);
    void removePort(HxPort* port);

    // === Change propagation
    // Marks the object as changed; the mask says what changed (all ones: everything).
    void touch(unsigned int mask = ~0u) { mTouchMask |= mask; }
    unsigned int getTouchMask() const { return mTouchMask; }
    bool isNew() const { return mTouchMask != 0; }
    // Runs update() with the ports' new-value flags, clears them and the touch mask, then
    // fires the objects connected downstream.
    virtual void fire(int arg = 0);
    // Reacts to changed ports; called by fire().
    virtual void update() {}
    McDArray<HxConnection*> const& getDownstreamConnections() const { return mDownstream; }

    // === Editing
    // True while an editor handles viewer events for this object.
    bool isEditorActive() const { return mEditorActive; }
    void setEditorActive(bool on) { mEditorActive = on; }

    // === Tcl
    // Handles `OBJ SUBCMD ...` (argv[0] is the object's name). Returns a Tcl code.
    virtual int parse(Tcl_Interp* interp, int argc, char** argv);

  protected:
    // Disconnects and fires the objects that read from this one. Data classes call it first
    // thing in their destructor, so that readers can still look at the data while letting go.
    void detachReaders();

  private:
    friend class HxConnection;
    void addDownstream(HxConnection* connection);
    void removeDownstream(HxConnection* connection);
    int parsePort(Tcl_Interp* interp, HxPort* port, int argc, char** argv);

    McDArray<HxPort*> mPorts;
    McDArray<HxConnection*> mDownstream;
    unsigned int mTouchMask = 0;
    bool mEditorActive = false;
    bool mFiring = false;
};
