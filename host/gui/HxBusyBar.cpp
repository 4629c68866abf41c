#include "HxBusyBar.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

HxBusyBar::HxBusyBar(QWidget* parent) : QWidget(parent), mText(new QLabel), mBar(new QProgressBar) {
    setObjectName("busyBar");
    mBar->setRange(0, 100);
    mBar->setMaximumWidth(240);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(mText);
    layout->addWidget(mBar);
    QWidget::hide();
    HxWorkArea::getTheWorkArea()->setBusyDisplay(this);
}

HxBusyBar::~HxBusyBar() { HxWorkArea::getTheWorkArea()->setBusyDisplay(nullptr); }

void HxBusyBar::show(char const* text, float fraction) {
    mText->setText(QString::fromUtf8(text));
    mBar->setValue(static_cast<int>(fraction * 100 + 0.5f));
    QWidget::show();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void HxBusyBar::hide() { QWidget::hide(); }

QString HxBusyBar::getText() const { return mText->text(); }

int HxBusyBar::getPercent() const { return mBar->value(); }
