#pragma once
// HxEditor: a module that edits one data object in place. The host calls startEditing when
// the editor is attached to data and stopEditing when it is detached or the data goes away.

#include "HxModule.h"

class HxData;

class HxEditor : public HxModule {
    MC_TYPED_HEADER(HxEditor)
  public:
    explicit HxEditor(McTypeInfo const* dataType);
    ~HxEditor() override;

    virtual void startEditing(HxData* data);
    virtual void stopEditing();
    HxData* getEditedData() const { return mEditedData; }

    // Builds the GUI widgets of the ports created so far (the GUI observes this call).
    virtual void createPortWidgets(HxData* data);

    // Attaches to `data` (connect, then startEditing); false if the data has the wrong type.
    bool attach(HxData* data);
    // Detaches from the edited data (stopEditing, then disconnect).
    void detach();

    void fire(int arg = 0) override;
    // `EDITOR attach DATA`, `EDITOR detach`, then the object's own subcommands.
    int parse(Tcl_Interp* interp, int argc, char** argv) override;

  private:
    HxData* mEditedData = nullptr;
};
