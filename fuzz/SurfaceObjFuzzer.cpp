// Any bytes in a .obj file: `load` refuses them with a reason or returns a sound surface.

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    readSurfaceFile("obj", data, size);
    return 0;
}
