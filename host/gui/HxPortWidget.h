#pragma once
// HxPortWidget: one row of the properties panel: a port's label and the controls of its kind.
//
// The port is the only state. The widget keeps the port's name, never a pointer to it, and
// looks it up on its object whenever it shows or changes it, so a port that the object
// deleted in the meantime is never touched. The widget holds a reference on the object until
// the panel detaches it.

#include "HxObject.h"
#include "McHandle.h"

#include <QByteArray>
#include <QList>
#include <QWidget>

#include <typeindex>

class HxPort;
class QComboBox;
class QGridLayout;
class QLabel;

class HxPortWidget : public QWidget {
    Q_OBJECT
  public:
    // The widget for the port's kind, or null for a kind that has none.
    static HxPortWidget* create(HxObject* object, HxPort& port);

    // Shows the port's current state without ever changing the port. The row is hidden while
    // the port is hidden, gone, or replaced by a port of another kind.
    void refresh();
    // The panel is done with this widget: it lets go of the object and shows nothing any more.
    void detach();
    QLabel* label() const { return mLabel; }

  protected:
    HxPortWidget(HxObject* object, HxPort const& port);

    // Brings the controls up to date; `port` is of the kind this widget was made for.
    virtual void showPort(HxPort& port) = 0;

    // A user's edit. `change` applies it to the port as the port's Tcl subcommand does (value
    // and new-value flag) and returns false when there is nothing to apply; then the owner
    // fires, as `OBJ fire` does after the subcommand. Signals that controls emit while the
    // widget shows the port are no edits, so showing never fires.
    template <class Port, class Change>
    void edit(Change change) {
        if (mShowingPort) return;
        Port* port = dynamic_cast<Port*>(currentPort());
        if (port && change(*port))
            fireOwner();
        else
            refresh();  // a refused edit leaves the controls showing the port as it is
    }

    // Keeps `controls` at `count`, adding controls made by make(i) to the end of the row.
    // Extra ones are deleted later: one of them may be running the slot that got us here.
    template <class Control, class Make>
    void resizeControls(QList<Control*>& controls, int count, Make make) {
        while (controls.size() > count) retire(controls.takeLast());
        while (controls.size() < count) {
            controls.append(make(controls.size()));
            addControl(controls.last());
        }
    }
    void addControl(QWidget* control);
    // Replaces the combo's entries only when they differ, so an open menu is not disturbed.
    static void setEntries(QComboBox* combo, QStringList const& entries, int current);

  private:
    HxPort* currentPort() const;
    void fireOwner();
    static void retire(QWidget* control);

    McHandle<HxObject> mObject;
    QByteArray mPortName;
    std::type_index mPortType;
    QLabel* mLabel;
    QGridLayout* mControls;  // a port's buttons wrap after kColumns, so rows stay narrow
    bool mShowingPort = false;
};
