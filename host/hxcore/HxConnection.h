#pragma once
// HxConnection: a port through which its owner reads another object (the source). The
// connection registers itself on the source so that the source can fire its owner and
// disconnect it when the source goes away.

#include "HxObject.h"
#include "HxPort.h"

class McTypeInfo;

class HxConnection : public HxPort {
  public:
    // `type`: the class a source must be of (null accepts any object).
    HxConnection(HxObject* owner, char const* name, McTypeInfo const* type);
    ~HxConnection() override;

    HxObject* getSource() const { return mSource; }
    // The source if it is of class T, else null.
    template <class T>
    T* source() const {
        return mSource && mSource->isOfType(T::getClassTypeId()) ? static_cast<T*>(mSource) : nullptr;
    }
    McTypeInfo const* getType() const { return mType; }
    bool accepts(HxObject* object) const;

    // Connects to `object` (null disconnects). Returns false, changing nothing, when the
    // object is of the wrong type.
    bool connect(HxObject* object);
    void disconnect();

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    McTypeInfo const* mType;
    HxObject* mSource = nullptr;
};
