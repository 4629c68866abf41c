#include "HxTestPluginModule.h"

MC_TYPED_IMPL_CREATABLE(HxTestPluginModule, HxModule)

namespace {
// Registers the class when the library is loaded, as a package's entry does.
struct Registration {
    Registration() { HxTestPluginModule::initClass(); }
} registration;
}  // namespace
