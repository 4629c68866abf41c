#pragma once
// HxPortButtonList: a row of push buttons. A press lasts one update: hit(i) records the index
// of the pressed button and sets the new-value flag, the owner's update() sees both, and
// untouch() (after the update) forgets the press again.
//
// Each button can be made insensitive; a script cannot press an insensitive button (the
// program can, to leave the port in the "just pressed" state on purpose).

#include "HxPortItemList.h"

class HxPortButtonList : public HxPortItemList {
  public:
    HxPortButtonList(HxObject* owner, char const* name, int numButtons);

    // === Queries
    bool isSensitive(int i) const { return hasItem(i) && mSensitive[i]; }
    // Index of the button pressed for the current update, -1 for none.
    int getIndex() const { return mHitIndex; }
    // True when button i was pressed for the current update.
    bool wasHit(int i) const { return isNew() && mHitIndex == i; }

    // === Mutators
    void setSensitivity(int i, bool on);
    // Records the pressed button without marking the port new (-1: none).
    void setIndex(int i) { mHitIndex = hasItem(i) ? i : -1; }
    // Presses button i as a user click would: hit index and new-value flag. Returns false,
    // changing nothing, when there is no such button.
    bool hit(int i);
    void untouch() override;

    // === Tcl
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    int parseHit(Tcl_Interp* interp, int argc, char** argv);
    int parseSetSensitivity(Tcl_Interp* interp, int argc, char** argv);

    McDArray<bool> mSensitive;
    int mHitIndex = -1;
};
