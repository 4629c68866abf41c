#pragma once
// HxPortMultiMenu: one or more option menus side by side; each menu has labelled entries of
// which one is selected (-1 while the menu is empty).
//
// A port always has at least one menu: a count below one makes one, so that a port filled
// later (for example from a list known only at run time) has a menu to fill. Program calls
// naming a menu or entry that does not exist are ignored; getNum and getIndex answer -1 then.

#include "HxPort.h"
#include "HxPortItems.h"

class HxPortMultiMenu : public HxPort {
  public:
    HxPortMultiMenu(HxObject* owner, char const* name, int numMenus);

    // === Queries
    int getNumMenus() const { return static_cast<int>(mMenus.size()); }
    // Number of entries of the menu.
    int getNum(int menu) const { return hasMenu(menu) ? mMenus[menu].entries.getNum() : -1; }
    // The selected entry of the menu.
    int getIndex(int menu) const { return hasMenu(menu) ? mMenus[menu].index : -1; }
    using HxPort::getLabel;
    char const* getLabel(int menu, int i) const { return hasMenu(menu) ? mMenus[menu].entries.getLabel(i) : ""; }

    // === Mutators
    // Resizes the menu; the selection stays where it was if it still exists, else it moves
    // to the nearest entry.
    void setNum(int menu, int n);
    using HxPort::setLabel;
    void setLabel(int menu, int i, char const* text);
    // Selects entry i without marking the port new.
    void setIndex(int menu, int i);

    // === Tcl
    int parse(Tcl_Interp* interp, int argc, char** argv) override;
    McString usage() const override;

  private:
    struct Menu {
        HxPortItems entries;
        int index = -1;
    };

    bool hasMenu(int menu) const { return menu >= 0 && menu < getNumMenus(); }
    // `getNum ?MENU?` and `getIndex ?MENU?`: the answer of `query` for the menu.
    int parseMenuQuery(Tcl_Interp* interp, int argc, char** argv, int (HxPortMultiMenu::*query)(int) const,
                       char const* usageText) const;
    int parseSetNum(Tcl_Interp* interp, int argc, char** argv);
    int parseSetIndex(Tcl_Interp* interp, int argc, char** argv);
    int parseGetLabel(Tcl_Interp* interp, int argc, char** argv) const;
    int parseSetLabel(Tcl_Interp* interp, int argc, char** argv);
    // The menu of a `SUBCMD ?MENU? ARG...` command with `tail` fixed arguments.
    bool parseMenu(Tcl_Interp* interp, int argc, char** argv, int tail, int& menu, char const* usageText) const;
    bool parseEntry(Tcl_Interp* interp, int menu, char const* text, int& i) const;

    McDArray<Menu> mMenus;
};
