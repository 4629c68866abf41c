#pragma once
// PathConnectorFactory: makes path connectors by name. A connector named N is the registered
// class "NConnector" derived from PathConnector (built in: "Dijkstra", "Geodesic",
// "TriangleStrip"); classes declared by a plug-in's resource script are found too, loading
// their library on first use.

#include "McDArray.h"
#include "McString.h"

class HxPortMultiMenu;
class HxSurfacePathSet;
class PathConnector;

class PathConnectorFactory {
  public:
    // A new connector, owned by the caller and initialised for the path set (not bound to
    // any when `pathSet` is null); null for an unknown name.
    static PathConnector* createConnector(char const* name, HxSurfacePathSet* pathSet);
    // The same, explaining a failure in `error`.
    static PathConnector* createConnector(char const* name, HxSurfacePathSet* pathSet, McString& error);
    // Fills menu 0 of the port with the connector names of a Tcl list variable (an unset
    // variable empties the menu).
    static void initPortConnector(HxPortMultiMenu* port, McString const& variableName);
};
