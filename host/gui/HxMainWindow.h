#pragma once
// HxMainWindow: the program's window: the 3D viewer in the middle, the object list and the
// selected object's ports beside it, the console below and the busy indicator in the status
// bar. It follows the host through the port observer; every action it offers runs as the Tcl
// command a script would use, shown in the console, so that what a user clicks can be
// written down and replayed.

#include "HxPortObserver.h"

#include <QMainWindow>
#include <QStringList>

#include <memory>

class HxBusyBar;
class HxConsole;
class HxMessageBoxes;
class HxObject;
class HxObjectList;
class HxPropertiesPanel;
class HxViewerWidget;

class HxMainWindow : public QMainWindow, public HxPortObserver {
    Q_OBJECT
  public:
    HxMainWindow();
    ~HxMainWindow() override;

    // Puts viewer 0 into the window; the window toolkit must be set up first.
    void createViewer();
    // Loads surfaces and path sets (shown at once) and runs Tcl scripts, in the given order.
    void openFiles(QStringList const& files);

    HxViewerWidget* getViewerWidget() const { return mViewer; }
    HxConsole* getConsole() const { return mConsole; }
    HxObjectList* getObjectList() const { return mObjects; }
    HxPropertiesPanel* getPropertiesPanel() const { return mProperties; }
    HxBusyBar* getBusyBar() const { return mBusy; }

    // HxPortObserver
    void portsChanged(HxObject* object) override;
    void objectFired(HxObject* object) override;
    void poolChanged() override;

  private:
    void createMenus();
    void createDocks();
    // Runs a command through the console; returns its result, or an empty string on error.
    QString run(QString const& command);
    void showObject(HxObject* object);
    void openFile(QString const& file);
    void chooseFile();
    void newPathSet(HxObject* surface);
    void attachEditor(HxObject* pathSet);
    void removeObject(HxObject* object);
    void refreshAll();

    HxViewerWidget* mViewer = nullptr;
    HxConsole* mConsole;
    HxObjectList* mObjects;
    HxPropertiesPanel* mProperties;
    HxBusyBar* mBusy;
    std::unique_ptr<HxMessageBoxes> mDialogs;
    bool mPoolRefreshPending = false;
};
