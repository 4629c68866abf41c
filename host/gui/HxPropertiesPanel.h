#pragma once
// HxPropertiesPanel: the ports of one object, a row per port in port order, each a widget of
// its port's kind (see HxPortWidget::create).
//
// The panel holds a reference on the object it shows, so the object stays valid while shown
// even after it left the pool. The widgets are made from the object's port list by rebuild()
// and brought up to date with the ports by refresh(); whoever follows the host (the main
// window, through HxPortObserver) decides when to call which.

#include "HxObject.h"
#include "McHandle.h"

#include <QList>
#include <QScrollArea>

#include <string>
#include <typeindex>
#include <utility>
#include <vector>

class HxPortWidget;
class QVBoxLayout;

class HxPropertiesPanel : public QScrollArea {
    Q_OBJECT
  public:
    explicit HxPropertiesPanel(QWidget* parent = nullptr);

    // Shows the ports of `object` (null: none). Showing the object already shown refreshes it.
    void showObject(HxObject* object);
    HxObject* shownObject() const { return mObject.ptr(); }

    // Makes the widgets anew from the object's current ports. Safe to call from a slot of one
    // of the panel's own widgets: the old widgets are hidden at once and deleted later.
    void rebuild();
    // Brings every widget up to date with its port; never fires. Rebuilds when the object's
    // port list is no longer the one the widgets were made for.
    void refresh();

    // The row of the port with this name, null when it has none.
    QWidget* findPortWidget(char const* portName) const;

  private:
    using PortList = std::vector<std::pair<std::string, std::type_index>>;
    PortList currentPorts() const;
    void retireWidgets();
    void refreshWidgets();
    void alignLabels();

    McHandle<HxObject> mObject;
    QVBoxLayout* mRows;
    QList<HxPortWidget*> mWidgets;
    // The names and kinds of the ports the widgets were made for.
    PortList mBuiltFor;
};
