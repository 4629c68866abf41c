#pragma once
// HxIntSliderWidget: a slider and a spin box over the range of an HxPortIntSlider. The owner
// updates once per finished change (a drag released, a number entered), not per step of it.

#include "HxPortIntSlider.h"
#include "HxPortWidget.h"

class QSlider;
class QSpinBox;

class HxIntSliderWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxIntSliderWidget(HxObject* object, HxPortIntSlider const& port);

  private:
    void showPort(HxPort& port) override;
    void setValue(int value);

    QSlider* mSlider;
    QSpinBox* mSpinBox;
};
