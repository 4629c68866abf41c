#pragma once
// HxButtonListWidget: a push button per button of an HxPortButtonList, enabled while the
// button is sensitive. A click presses the button for one update of the owner.

#include "HxPortButtonList.h"
#include "HxPortWidget.h"

class QPushButton;

class HxButtonListWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxButtonListWidget(HxObject* object, HxPortButtonList const& port);

  private:
    void showPort(HxPort& port) override;
    void press(int button);

    QList<QPushButton*> mButtons;
};
