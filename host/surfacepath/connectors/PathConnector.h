#pragma once
// PathConnector: a strategy that computes the nodes between two nodes of a path.
//
// A connector is bound to one path set's surface by init(); it may keep per-surface tables
// between calls and must be initialised again when the surface changes. It never owns the
// path set, the surface or the nodes it is given.

#include "McDArray.h"
#include "McHandle.h"
#include "McString.h"
#include "McTypedObject.h"
#include "SurfaceNode.h"

#include <tcl.h>

class McProgressInterface;
class Surface;
class SurfacePathSet;

class PathConnector : public McTypedObject {
    MC_TYPED_HEADER(PathConnector)
  public:
    PathConnector() = default;
    ~PathConnector() override = default;

    // Adapts the connector to the path set (its surface and node factory). `progress` may be
    // null.
    virtual void init(SurfacePathSet* pathSet, McProgressInterface* progress);
    // Fills `between` with new nodes from `from` to `to`, both excluded, and returns true; on
    // failure returns false and leaves `between` empty. Implementations clear getFailure() first.
    virtual bool computeConnection(SurfaceNode* from, SurfaceNode* to, McDArray<McHandle<SurfaceNode>>& between,
                                   McProgressInterface* progress) = 0;
    // Handles `... connector WORD ...` (argv[1] is "connector"). Returns TCL_OK with the result
    // set, or TCL_ERROR with an explanation.
    virtual int parse(Tcl_Interp* interp, int argc, char** argv);

    // Why the last computeConnection() failed, in a user's words, where the nodes it was given
    // are the cause (the wrong kind, another surface); empty where no connection exists.
    McString const& getFailure() const { return mFailure; }

    SurfacePathSet* getPathSet() const { return mPathSet; }
    // The name the factory knows the connector by: its class name without "Connector".
    McString getName() const;

  protected:
    // The words parse() understands, for its error message.
    virtual char const* getCommands() const { return "getName"; }
    // Keeps `reason` for getFailure() and returns false.
    bool fail(McString const& reason);
    // The start of every connection: clears `between` and the last failure, and returns the
    // surface both nodes lie on; null for a missing node or nodes on different surfaces.
    Surface* startConnection(SurfaceNode const* from, SurfaceNode const* to, McDArray<McHandle<SurfaceNode>>& between);
    // `connector getOPTION` and `connector setOPTION VALUE` for an option that counts
    // `things`, at least 1. Returns TCL_OK or TCL_ERROR when argv names the option, and -1
    // when it does not.
    static int parseCountOption(Tcl_Interp* interp, int argc, char** argv, char const* option, char const* valueName,
                                char const* things, int& value);

    SurfacePathSet* mPathSet = nullptr;
    McString mFailure;
};
