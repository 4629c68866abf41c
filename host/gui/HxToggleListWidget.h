#pragma once
// HxToggleListWidget: a check box per toggle of an HxPortToggleList.

#include "HxPortToggleList.h"
#include "HxPortWidget.h"

class QCheckBox;

class HxToggleListWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxToggleListWidget(HxObject* object, HxPortToggleList const& port);

  private:
    void showPort(HxPort& port) override;
    void setToggle(int toggle, bool on);

    QList<QCheckBox*> mBoxes;
};
