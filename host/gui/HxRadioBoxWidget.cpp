#include "HxRadioBoxWidget.h"

#include <QButtonGroup>
#include <QRadioButton>

HxRadioBoxWidget::HxRadioBoxWidget(HxObject* object, HxPortRadioBox const& port)
    : HxPortWidget(object, port), mGroup(new QButtonGroup(this)) {}

bool HxRadioBoxWidget::choose(HxPortRadioBox& port, int i) {
    if (i == port.getValue() || i < 0 || i >= port.getNum()) return false;
    port.setValue(i);
    port.touch();
    return true;
}

void HxRadioBoxWidget::showPort(HxPort& port) {
    auto& radio = static_cast<HxPortRadioBox&>(port);
    resizeControls(mButtons, radio.getNum(), [this](int i) {
        auto* button = new QRadioButton;
        mGroup->addButton(button);
        connect(button, &QRadioButton::clicked, this,
                [this, i] { edit<HxPortRadioBox>([i](HxPortRadioBox& p) { return choose(p, i); }); });
        return button;
    });
    for (int i = 0; i < mButtons.size(); ++i) {
        mButtons[i]->setText(QString::fromUtf8(radio.getLabel(i)));
        if (i == radio.getValue()) mButtons[i]->setChecked(true);
    }
}
