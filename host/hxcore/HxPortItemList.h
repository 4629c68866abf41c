#pragma once
// HxPortItemList: the base of ports made of a fixed row of labelled items (button list,
// toggle list, radio box). It keeps the item labels and answers the item subcommands
// `getNum`, `getLabel I` and `setLabel I TEXT`; without an index the label is the port's own.

#include "HxPort.h"
#include "HxPortItems.h"

class HxPortItemList : public HxPort {
  public:
    HxPortItemList(HxObject* owner, char const* name, int numItems);

    int getNum() const { return mItems.getNum(); }
    using HxPort::getLabel;
    char const* getLabel(int i) const { return mItems.getLabel(i); }
    using HxPort::setLabel;
    void setLabel(int i, char const* text) { mItems.setLabel(i, text); }

    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  protected:
    bool hasItem(int i) const { return mItems.contains(i); }

  private:
    HxPortItems mItems;
};
