#include "HxPortWidget.h"

#include "HxButtonListWidget.h"
#include "HxConnectionWidget.h"
#include "HxDrawStyleWidget.h"
#include "HxFloatTextWidget.h"
#include "HxInfoWidget.h"
#include "HxIntSliderWidget.h"
#include "HxMultiMenuWidget.h"
#include "HxRadioBoxWidget.h"
#include "HxSeparatorWidget.h"
#include "HxToggleListWidget.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>

#include <typeinfo>

HxPortWidget* HxPortWidget::create(HxObject* object, HxPort& port) {
    // A draw style is a radio box too: the derived kind is tried first.
    if (auto* p = dynamic_cast<HxPortDrawStyle*>(&port)) return new HxDrawStyleWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortRadioBox*>(&port)) return new HxRadioBoxWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortButtonList*>(&port)) return new HxButtonListWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortToggleList*>(&port)) return new HxToggleListWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortMultiMenu*>(&port)) return new HxMultiMenuWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortIntSlider*>(&port)) return new HxIntSliderWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortFloatTextN*>(&port)) return new HxFloatTextWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortInfo*>(&port)) return new HxInfoWidget(object, *p);
    if (auto* p = dynamic_cast<HxPortSeparator*>(&port)) return new HxSeparatorWidget(object, *p);
    if (auto* p = dynamic_cast<HxConnection*>(&port)) return new HxConnectionWidget(object, *p);
    return nullptr;
}

HxPortWidget::HxPortWidget(HxObject* object, HxPort const& port)
    : mObject(object), mPortName(port.getName()), mPortType(typeid(port)), mLabel(new QLabel) {
    setObjectName(QString::fromUtf8(mPortName));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(mLabel, 0, Qt::AlignTop);
    mControls = new QGridLayout;
    row->addLayout(mControls, 1);
}

void HxPortWidget::refresh() {
    HxPort* port = currentPort();
    setVisible(port && port->isVisible());
    if (!port) return;
    mShowingPort = true;
    mLabel->setText(QString::fromUtf8(port->getLabel()));
    showPort(*port);
    mShowingPort = false;
}

void HxPortWidget::detach() { mObject = nullptr; }

HxPort* HxPortWidget::currentPort() const {
    HxPort* port = mObject ? mObject->getPort(mPortName.constData()) : nullptr;
    return port && std::type_index(typeid(*port)) == mPortType ? port : nullptr;
}

void HxPortWidget::fireOwner() {
    // The update may make the panel detach this widget; the object must outlive the call.
    McHandle<HxObject> owner = mObject;
    owner->fire();
}

namespace {
const int kColumns = 3;
}

void HxPortWidget::addControl(QWidget* control) {
    const int n = mControls->count();
    mControls->addWidget(control, n / kColumns, n % kColumns);
}

// Out of the layout at once (a new control takes its cell), deleted once its signals are done.
void HxPortWidget::retire(QWidget* control) {
    control->hide();
    control->setParent(nullptr);
    control->deleteLater();
}

void HxPortWidget::setEntries(QComboBox* combo, QStringList const& entries, int current) {
    bool same = combo->count() == entries.size();
    for (int i = 0; same && i < entries.size(); ++i) same = combo->itemText(i) == entries[i];
    if (!same) {
        combo->clear();
        combo->addItems(entries);
    }
    combo->setCurrentIndex(current);
    combo->setEnabled(!entries.isEmpty());
}
