#include "HxPropertiesPanel.h"

#include "HxPort.h"
#include "HxPortWidget.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <typeinfo>

HxPropertiesPanel::HxPropertiesPanel(QWidget* parent) : QScrollArea(parent) {
    auto* form = new QWidget;
    mRows = new QVBoxLayout(form);
    mRows->addStretch(1);
    setWidget(form);
    setWidgetResizable(true);
}

void HxPropertiesPanel::showObject(HxObject* object) {
    if (object == mObject.ptr()) {
        refresh();
        return;
    }
    mObject = object;
    rebuild();
}

void HxPropertiesPanel::rebuild() {
    retireWidgets();
    mBuiltFor = currentPorts();
    if (mObject) {
        for (HxPort* port : mObject->getPorts()) {
            HxPortWidget* widget = HxPortWidget::create(mObject, *port);
            if (!widget) continue;
            mRows->insertWidget(mRows->count() - 1, widget);  // before the closing stretch
            mWidgets.append(widget);
        }
    }
    refreshWidgets();
}

void HxPropertiesPanel::refresh() {
    if (currentPorts() != mBuiltFor)
        rebuild();
    else
        refreshWidgets();
}

QWidget* HxPropertiesPanel::findPortWidget(char const* portName) const {
    const QString name = QString::fromUtf8(portName);
    for (HxPortWidget* widget : mWidgets)
        if (widget->objectName() == name) return widget;
    return nullptr;
}

HxPropertiesPanel::PortList HxPropertiesPanel::currentPorts() const {
    PortList ports;
    if (mObject)
        for (HxPort* port : mObject->getPorts()) ports.emplace_back(port->getName(), typeid(*port));
    return ports;
}

// A retired widget may be running the slot that caused the rebuild, so it is only hidden and
// detached now; Qt deletes it once control is back in the event loop.
void HxPropertiesPanel::retireWidgets() {
    for (HxPortWidget* widget : mWidgets) {
        mRows->removeWidget(widget);
        widget->hide();
        widget->detach();
        widget->deleteLater();
    }
    mWidgets.clear();
}

void HxPropertiesPanel::refreshWidgets() {
    for (HxPortWidget* widget : mWidgets) widget->refresh();
    alignLabels();
}

// One label column for all rows, as wide as the widest label shown.
void HxPropertiesPanel::alignLabels() {
    int width = 0;
    for (HxPortWidget* widget : mWidgets)
        if (!widget->isHidden() && !widget->label()->isHidden())
            width = std::max(width, widget->label()->sizeHint().width());
    for (HxPortWidget* widget : mWidgets) widget->label()->setMinimumWidth(width);
}
