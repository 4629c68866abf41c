// Any bytes in a .off file: `load` refuses them with a reason or returns a sound surface.

#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, size_t size) {
    readSurfaceFile("off", data, size);
    return 0;
}
