#include "HxButtonListWidget.h"

#include <QPushButton>

HxButtonListWidget::HxButtonListWidget(HxObject* object, HxPortButtonList const& port) : HxPortWidget(object, port) {}

void HxButtonListWidget::showPort(HxPort& port) {
    auto& buttons = static_cast<HxPortButtonList&>(port);
    resizeControls(mButtons, buttons.getNum(), [this](int i) {
        auto* button = new QPushButton;
        connect(button, &QPushButton::clicked, this, [this, i] { press(i); });
        return button;
    });
    for (int i = 0; i < mButtons.size(); ++i) {
        mButtons[i]->setText(QString::fromUtf8(buttons.getLabel(i)));
        mButtons[i]->setEnabled(buttons.isSensitive(i));
    }
}

// As `PORT hit I`: a button that became insensitive since it was shown cannot be pressed.
void HxButtonListWidget::press(int button) {
    edit<HxPortButtonList>([button](HxPortButtonList& port) { return port.isSensitive(button) && port.hit(button); });
}
