#include "PathTriangulatorFactory.h"

#include "PathTriangulator.h"

#include <cstring>

namespace {

struct Registration {
    char const* name;
    char const* switches;
};

constexpr Registration kTriangulators[] = {
    {"Constrained Delaunay", "pzQ"},
    {"Quality Delaunay", "pqzS10Q"},
};

}  // namespace

McDArray<McString> PathTriangulatorFactory::getNames() {
    McDArray<McString> names;
    for (Registration const& r : kTriangulators) names.append(McString(r.name));
    return names;
}

PathTriangulator* PathTriangulatorFactory::createPathTriangulator(char const* name) {
    for (Registration const& r : kTriangulators)
        if (name && !std::strcmp(name, r.name)) return new PathTriangulator(r.switches);
    return nullptr;
}
