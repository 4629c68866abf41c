#include "HxIntSliderWidget.h"

#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

HxIntSliderWidget::HxIntSliderWidget(HxObject* object, HxPortIntSlider const& port)
    : HxPortWidget(object, port), mSlider(new QSlider(Qt::Horizontal)), mSpinBox(new QSpinBox) {
    mSlider->setTracking(false);
    mSpinBox->setKeyboardTracking(false);
    addControl(mSlider);
    addControl(mSpinBox);
    // While dragging, the spin box follows the slider without changing the port.
    connect(mSlider, &QSlider::sliderMoved, mSpinBox, [this](int value) {
        QSignalBlocker quiet(mSpinBox);
        mSpinBox->setValue(value);
    });
    connect(mSlider, &QSlider::valueChanged, this, &HxIntSliderWidget::setValue);
    connect(mSpinBox, QOverload<int>::of(&QSpinBox::valueChanged), this, &HxIntSliderWidget::setValue);
}

void HxIntSliderWidget::showPort(HxPort& port) {
    auto& slider = static_cast<HxPortIntSlider&>(port);
    mSlider->setRange(slider.getMinValue(), slider.getMaxValue());
    mSpinBox->setRange(slider.getMinValue(), slider.getMaxValue());
    mSlider->setValue(slider.getValue());
    mSpinBox->setValue(slider.getValue());
}

void HxIntSliderWidget::setValue(int value) {
    edit<HxPortIntSlider>([value](HxPortIntSlider& port) {
        port.setValue(value);
        port.touch();
        return true;
    });
}
