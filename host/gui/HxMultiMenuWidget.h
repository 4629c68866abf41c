#pragma once
// HxMultiMenuWidget: a combo box per menu of an HxPortMultiMenu, disabled while it is empty.

#include "HxPortMultiMenu.h"
#include "HxPortWidget.h"

class HxMultiMenuWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxMultiMenuWidget(HxObject* object, HxPortMultiMenu const& port);

  private:
    void showPort(HxPort& port) override;
    void choose(int menu, int entry);

    QList<QComboBox*> mMenus;
};
