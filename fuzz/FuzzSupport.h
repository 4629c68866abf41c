#pragma once
// FuzzSupport: what the fuzz targets and their seed maker share: a scratch folder per
// process, the fixed surface and path set that path set files and commands are tried on, and
// a check that stops the run with a message when a loaded object breaks its own invariants.

#include "Surface.h"
#include "TestSurfaces.h"
#include "SurfacePathSet.h"

#include <cstddef>
#include <cstdint>
#include <string>

// A fresh folder under $TMPDIR (or /tmp), made on first use and removed at exit.
std::string scratchFolder();

// Writes `size` bytes to `fileName` in the scratch folder; returns the file's full name.
std::string writeScratchFile(char const* fileName, uint8_t const* data, size_t size);

// Nodes of every kind on `cube` (the tests' makeCube()) and a few paths through them: an open one, a closed one, an
// empty one.
void fillPathSet(SurfacePathSet& set, Surface* cube);

// Reads a surface file through the same function `load` uses and aborts if the surface it
// accepts has a triangle outside its points or a coordinate that is not finite.
void readSurfaceFile(char const* extension, uint8_t const* data, size_t size);

// Prints the message and aborts, so that libFuzzer keeps the input.
[[noreturn]] void fuzzFailure(char const* format, ...) __attribute__((format(printf, 1, 2)));
