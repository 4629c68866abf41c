#include "HxToggleListWidget.h"

#include <QCheckBox>

HxToggleListWidget::HxToggleListWidget(HxObject* object, HxPortToggleList const& port) : HxPortWidget(object, port) {}

void HxToggleListWidget::showPort(HxPort& port) {
    auto& toggles = static_cast<HxPortToggleList&>(port);
    resizeControls(mBoxes, toggles.getNum(), [this](int i) {
        auto* box = new QCheckBox;
        connect(box, &QCheckBox::clicked, this, [this, i](bool on) { setToggle(i, on); });
        return box;
    });
    for (int i = 0; i < mBoxes.size(); ++i) {
        mBoxes[i]->setText(QString::fromUtf8(toggles.getLabel(i)));
        mBoxes[i]->setChecked(toggles.getValue(i) != 0);
    }
}

void HxToggleListWidget::setToggle(int toggle, bool on) {
    edit<HxPortToggleList>([toggle, on](HxPortToggleList& port) {
        port.setValue(toggle, on ? 1 : 0);
        port.touch();
        return true;
    });
}
