#pragma once
// BenchScene: what the viewer and editor benchmarks share: the host set up as the shell sets
// it up, the benchmark mesh (a real dragon subdivided to about 1.3M triangles) as a pooled
// surface, Tcl set-up commands that stop the run on failure, and the baseline of one render.

#include <chrono>
#include <string>

class HxSurface;
class HxViewer;

namespace BenchScene {

using Clock = std::chrono::steady_clock;
double seconds(Clock::time_point start);

// Installs the global commands and file formats, loads the subdivided dragon and adds it to
// the object pool under `label`.
HxSurface* loadDragon(char const* label);
// Evaluates a set-up command; a Tcl error ends the benchmark with the message.
void tcl(std::string const& command);
// The median of five full renders of the viewer's scene, in seconds.
double medianRenderSeconds(HxViewer* viewer);

}  // namespace BenchScene
