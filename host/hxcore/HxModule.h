#pragma once
// HxModule: an object that computes or edits; it reads its input through `portData`.

#include "HxConnection.h"
#include "HxObject.h"

class HxModule : public HxObject {
    MC_TYPED_HEADER(HxModule)
  public:
    // `dataType`: the class of data the module reads (null: any object).
    explicit HxModule(McTypeInfo const* dataType = nullptr);

    // True when `object` may be connected to portData.
    bool typeCheck(HxObject* object) const { return portData.accepts(object); }

    HxConnection portData;
};
