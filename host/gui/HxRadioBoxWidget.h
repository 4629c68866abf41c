#pragma once
// HxRadioBoxWidget: a radio button per button of an HxPortRadioBox, exactly one checked.

#include "HxPortRadioBox.h"
#include "HxPortWidget.h"

class QButtonGroup;
class QRadioButton;

class HxRadioBoxWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxRadioBoxWidget(HxObject* object, HxPortRadioBox const& port);

    // Chooses button i as `PORT setValue I` does; false when it is chosen already or missing.
    static bool choose(HxPortRadioBox& port, int i);

  private:
    void showPort(HxPort& port) override;

    QButtonGroup* mGroup;
    QList<QRadioButton*> mButtons;
};
