#pragma once
// HxSurfacePathSet: the data object that holds a surface path set. It owns its `pathSet` by
// value and lies on the surface connected to its `surface` port (an HxSurface, not owned).
//
// The set follows its connection: connected to another surface, its nodes move onto that
// surface if they fit it, and are removed (with a message) if not or when the surface goes
// away; nodes never point to a surface that is gone.
//
// Tcl commands for scripts, besides those of every data object (`save FILE`, ports):
//   getNumPaths, getNumNodes, getPath I, getNode I, isClosed I, getLength I, getSelection,
//   addPath NODE..., connect PATH FROM TO CONNECTOR, removeDuplicateNodes TOL,
//   isConsistent, export FILE.obj|FILE.vtk,
//   show (finds or makes the set's display and returns its name; also shows the surface if it
//   has no display, so that the paths are seen on it), hide (removes the set's display).

#include "HxConnection.h"
#include "HxData.h"
#include "SurfacePathSet.h"

#include <map>
#include <memory>
#include <string>

class HxDisplaySurfacePathSet;
class HxSurface;
class PathConnector;

class HxSurfacePathSet : public HxData {
    MC_TYPED_HEADER(HxSurfacePathSet)
    MC_TYPED_CREATABLE
  public:
    HxSurfacePathSet();
    ~HxSurfacePathSet() override;

    HxConnection surface;
    SurfacePathSet pathSet;

    // The connected surface object, or null.
    HxSurface* getSurface() const;
    // Connects the surface (null disconnects) and brings the path set onto it.
    bool connectSurface(HxSurface* surfaceObject);
    // The display module reading this set; with `create`, one is made (labelled
    // "<label>-display", in the object pool, shown) when there is none. Else null.
    HxDisplaySurfacePathSet* getDisplaySurfacePathSet(bool create);

    void update() override;
    bool saveFile(char const* fileName, McString& error) override;
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

    // The reader behind `load` for path set files: also loads the surface file the set refers
    // to unless an object already holds it. Null with the reason in `error`; then nothing is
    // added to the object pool.
    static HxData* readFile(char const* fileName, McString& error);
    // Registers the reader for .json and the class (for `create`). Safe to call repeatedly.
    static void registerFileFormats();

  private:
    // Brings the path set onto the connected surface after the connection changed.
    void followSurface();
    // True when every node has a counterpart on `target`; else names the first that has not.
    bool nodesFit(Surface* target, int& badNode, McString& problem) const;
    // Moves the nodes onto a private copy of their surface, which is about to go.
    void keepOnCopyOfSurface();
    // A connector of the given name for this set, made on first use and kept.
    PathConnector* getConnector(char const* name, McString& error);
    void changed();

    int parseQuery(Tcl_Interp* interp, int argc, char** argv, bool& handled);
    int parseEdit(Tcl_Interp* interp, int argc, char** argv, bool& handled);
    int addPathCmd(Tcl_Interp* interp, int argc, char** argv);
    int connectCmd(Tcl_Interp* interp, int argc, char** argv);
    int getNodeCmd(Tcl_Interp* interp, int node);
    int getSelectionCmd(Tcl_Interp* interp);
    int showCmd(Tcl_Interp* interp);
    int indexArg(Tcl_Interp* interp, char const* what, char const* text, int count, int& index) const;
    int needSurface(Tcl_Interp* interp) const;
    static int usageError(Tcl_Interp* interp, char const* name, char const* usage);

    std::map<std::string, std::unique_ptr<PathConnector>> mConnectors;
    // The copy the paths lie on after their surface was removed (null otherwise).
    std::unique_ptr<Surface> mKeptSurface;
};
