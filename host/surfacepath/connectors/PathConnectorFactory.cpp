#include "PathConnectorFactory.h"

#include "DijkstraConnector.h"
#include "GeodesicConnector.h"
#include "HxInterpreter.h"
#include "HxPortMultiMenu.h"
#include "HxResources.h"
#include "HxSurfacePathSet.h"
#include "TriangleStripConnector.h"

PathConnector* PathConnectorFactory::createConnector(char const* name, HxSurfacePathSet* pathSet) {
    McString error;
    return createConnector(name, pathSet, error);
}

PathConnector* PathConnectorFactory::createConnector(char const* name, HxSurfacePathSet* pathSet,
                                                     McString& error) {
    // Built-in connectors register on first use.
    DijkstraConnector::initClass();
    GeodesicConnector::initClass();
    TriangleStripConnector::initClass();
    const McString className = McString(name ? name : "") + "Connector";
    McString findError;
    McTypeInfo const* type = HxResources::findClass(className.c_str(), findError);
    if (!type || !type->canCreate() || !type->isOfType(PathConnector::getClassTypeId())) {
        error.printf("there is no path connector named \"%s\"", name ? name : "");
        return nullptr;
    }
    auto* connector = static_cast<PathConnector*>(type->createInstance());
    connector->init(pathSet ? &pathSet->pathSet : nullptr, nullptr);
    return connector;
}

void PathConnectorFactory::initPortConnector(HxPortMultiMenu* port, McString const& variableName) {
    if (!port) return;
    Tcl_Interp* interp = HxInterpreter::getTheInterpreter().getTclInterp();
    char const* value = HxInterpreter::getTheInterpreter().getVar(variableName.c_str());
    int count = 0;
    char const** names = nullptr;
    if (!value || Tcl_SplitList(interp, value, &count, &names) != TCL_OK) count = 0;
    port->setNum(0, count);
    for (int i = 0; i < count; ++i) port->setLabel(0, i, names[i]);
    if (names) Tcl_Free(reinterpret_cast<char*>(names));
}
