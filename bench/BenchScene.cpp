#include "BenchScene.h"

#include "HxGlobalCommands.h"
#include "HxInterpreter.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "BenchMeshes.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace BenchScene {

double seconds(Clock::time_point start) { return std::chrono::duration<double>(Clock::now() - start).count(); }

HxSurface* loadDragon(char const* label) {
    HxGlobalCommands::install();
    HxSurface::registerFileFormats();
    HxSurfacePathSet::registerFileFormats();
    auto* surface = new HxSurface;
    BenchMeshes::readDragon(surface->surface);
    surface->HxBase::setLabel(label);
    HxObjectPool::getTheObjectPool().addObject(surface);
    return surface;
}

void tcl(std::string const& command) {
    HxInterpreter& interp = HxInterpreter::getTheInterpreter();
    interp.eval("%s", command.c_str());
    if (interp.lastCode() != TCL_OK) {
        std::fprintf(stderr, "benchmark set-up failed: %s\n", interp.eval("set errorInfo"));
        std::exit(1);
    }
}

double medianRenderSeconds(HxViewer* viewer) {
    std::vector<double> times;
    for (int run = 0; run < 5; ++run) {
        const auto start = Clock::now();
        viewer->redraw();
        times.push_back(seconds(start));
    }
    std::sort(times.begin(), times.end());
    return times[2];
}

}  // namespace BenchScene
