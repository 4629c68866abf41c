#include "HxSeparatorWidget.h"

#include <QFrame>
#include <QLabel>

HxSeparatorWidget::HxSeparatorWidget(HxObject* object, HxPortSeparator const& port) : HxPortWidget(object, port) {
    label()->hide();
    auto* gap = new QFrame;
    gap->setFixedHeight(8);
    if (port.hasLine()) gap->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    addControl(gap);
}
