#pragma once
// A module that lives in a plug-in library of its own, to test loading on first creation.

#include "HxModule.h"

class HxTestPluginModule : public HxModule {
    MC_TYPED_HEADER(HxTestPluginModule)
    MC_TYPED_CREATABLE
  public:
    HxTestPluginModule() = default;
};
