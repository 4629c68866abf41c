#pragma once
// The package's entry points, found by their unmangled names. The build text lives in the
// namespace velmopackage_hxsurfacepathedit; C++ forbids a function of the same name beside that
// namespace, so the functions are declared in a namespace of their own, which C linkage ignores.

namespace velmopackage_hxsurfacepathedit {
// Package name, version and build date; the host reads and shows it.
extern char version[];
}  // namespace velmopackage_hxsurfacepathedit

namespace hxsurfacepathedit_entry {
extern "C" {
// Registers every class of the package with the type registry; later calls do nothing.
void velmopackage_hxsurfacepathedit_init();
// Marks the package finished; it releases nothing.
void velmopackage_hxsurfacepathedit_finish();
// The build text.
char const* velmopackage_hxsurfacepathedit();
}
}  // namespace hxsurfacepathedit_entry
