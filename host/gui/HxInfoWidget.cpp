#include "HxInfoWidget.h"

#include <QLabel>

HxInfoWidget::HxInfoWidget(HxObject* object, HxPortInfo const& port) : HxPortWidget(object, port), mText(new QLabel) {
    mText->setTextInteractionFlags(Qt::TextSelectableByMouse);
    mText->setWordWrap(true);
    addControl(mText);
}

void HxInfoWidget::showPort(HxPort& port) {
    mText->setText(QString::fromUtf8(static_cast<HxPortInfo&>(port).getText()));
}
