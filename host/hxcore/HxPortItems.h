#pragma once
// HxPortItems: the labels of a port's items: the buttons of a button list, the toggles of a
// toggle list, the buttons of a radio box or the entries of one menu. The port around it
// keeps what the items mean (values, selection, sensitivity).
//
// Calls with an index outside the list are ignored (getLabel answers with an empty label),
// as a GUI would ignore a widget that does not exist; scripts get an error from the port.

#include "McDArray.h"
#include "McString.h"

class HxPortItems {
  public:
    explicit HxPortItems(int count = 0);

    int getNum() const { return static_cast<int>(mLabels.size()); }
    bool contains(int i) const { return i >= 0 && i < getNum(); }
    char const* getLabel(int i) const;

    // Items that remain keep their labels; new ones start with an empty label.
    void setNum(int count);
    void setLabel(int i, char const* text);

  private:
    McDArray<McString> mLabels;
};
