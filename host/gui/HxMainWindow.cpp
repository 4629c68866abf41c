#include "HxMainWindow.h"

#include "HxBusyBar.h"
#include "HxConsole.h"
#include "HxController.h"
#include "HxObjectPool.h"
#include "HxMessageBoxes.h"
#include "HxObject.h"
#include "HxObjectList.h"
#include "HxPropertiesPanel.h"
#include "HxViewerWidget.h"

#include <QAction>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace {
// A Tcl word that stands for `text` exactly, whatever spaces or brackets it holds.
QString tclWord(QString const& text) {
    Tcl_Obj* list = Tcl_NewListObj(0, nullptr);
    Tcl_IncrRefCount(list);
    Tcl_ListObjAppendElement(nullptr, list, Tcl_NewStringObj(text.toUtf8().constData(), -1));
    QString word = QString::fromUtf8(Tcl_GetString(list));
    Tcl_DecrRefCount(list);
    return word;
}
QString tclWord(HxObject const* object) { return tclWord(QString::fromUtf8(object->getLabel())); }
}  // namespace

HxMainWindow::HxMainWindow()
    : mConsole(new HxConsole),
      mObjects(new HxObjectList),
      mProperties(new HxPropertiesPanel),
      mBusy(new HxBusyBar),
      mDialogs(std::make_unique<HxMessageBoxes>(this)) {
    setWindowTitle("surfpath");
    setObjectName("mainWindow");
    createDocks();
    createMenus();
    statusBar()->addPermanentWidget(mBusy);
    HxMessage::getTheMsg()->setDialogProvider(mDialogs.get());
    HxPortObserver::setObserver(this);
    connect(mObjects, &HxObjectList::selectionChanged, this, &HxMainWindow::showObject);
    connect(mObjects, &HxObjectList::loadRequested, this, &HxMainWindow::chooseFile);
    connect(mObjects, &HxObjectList::newPathSetRequested, this, &HxMainWindow::newPathSet);
    connect(mObjects, &HxObjectList::attachEditorRequested, this, &HxMainWindow::attachEditor);
    connect(mObjects, &HxObjectList::removeRequested, this, &HxMainWindow::removeObject);
    connect(mConsole, &HxConsole::commandEvaluated, this, &HxMainWindow::refreshAll);
}

HxMainWindow::~HxMainWindow() {
    HxPortObserver::setObserver(nullptr);
    HxMessage::getTheMsg()->setDialogProvider(nullptr);
}

void HxMainWindow::createDocks() {
    auto addDock = [this](char const* title, QWidget* content, Qt::DockWidgetArea area) {
        auto* dock = new QDockWidget(title, this);
        dock->setObjectName(QString(title) + "Dock");
        dock->setWidget(content);
        dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
        addDockWidget(area, dock);
        return dock;
    };
    // Beside the viewer, the ports get the room: an editor has many rows of buttons.
    QDockWidget* objects = addDock("Objects", mObjects, Qt::LeftDockWidgetArea);
    objects->setMinimumWidth(200);
    QDockWidget* properties = addDock("Properties", mProperties, Qt::RightDockWidgetArea);
    properties->setMinimumWidth(470);
    QDockWidget* console = addDock("Console", mConsole, Qt::BottomDockWidgetArea);
    resizeDocks({console}, {180}, Qt::Vertical);
}

void HxMainWindow::createMenus() {
    QMenu* file = menuBar()->addMenu("&File");
    file->addAction("&Open...", this, &HxMainWindow::chooseFile, QKeySequence::Open);
    file->addSeparator();
    file->addAction("&Quit", this, &QWidget::close, QKeySequence::Quit);
    QMenu* view = menuBar()->addMenu("&View");
    view->addAction("View &all", this, [this] { run("viewer 0 viewAll"); });
    view->addAction("Toggle viewing and picking (Esc)", this, [this] {
        if (mViewer) mViewer->setViewing(!mViewer->isViewing());
    });
}

void HxMainWindow::createViewer() {
    auto* frame = new QWidget;
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 0, 0);
    setCentralWidget(frame);
    mViewer = new HxViewerWidget(frame, HxController::getTheController()->viewer(0, 1));
    layout->addWidget(mViewer->getWidget());
}

QString HxMainWindow::run(QString const& command) {
    QString result;
    return mConsole->evaluate(command, &result) ? result : QString();
}

// Also called after every change of the pool: the shown object's connection menus list
// the pool's objects.
void HxMainWindow::showObject(HxObject* object) { mProperties->showObject(object); }

void HxMainWindow::openFiles(QStringList const& files) {
    for (QString const& file : files) openFile(file);
}

void HxMainWindow::openFile(QString const& file) {
    if (QFileInfo(file).suffix().toLower() == "tcl") {
        run("source " + tclWord(file));
        return;
    }
    const bool first = HxObjectPool::getTheObjectPool().getObjects().empty();
    const QString object = run("load " + tclWord(file));
    HxObject* loaded = HxObjectPool::getTheObjectPool().findObject(object.toUtf8().constData());
    if (!loaded) return;
    run(tclWord(loaded) + " show");
    if (first) run("viewer 0 viewAll");
    mObjects->select(loaded->getLabel());
}

void HxMainWindow::chooseFile() {
    const QString file = QFileDialog::getOpenFileName(
        this, "Open", QString(), "Surfaces and path sets (*.off *.ply *.obj *.stl *.json);;Tcl scripts (*.tcl);;All files (*)");
    if (!file.isEmpty()) openFile(file);
}

void HxMainWindow::newPathSet(HxObject* surface) {
    if (!surface) return;
    const QString pathSet = run("create HxSurfacePathSet");
    if (pathSet.isEmpty()) return;
    run(tclWord(pathSet) + " surface connect " + tclWord(surface));
    run(tclWord(pathSet) + " show");
    mObjects->select(pathSet.toUtf8().constData());
}

// The editor module starts with its editor menu and start button; selecting it shows them.
void HxMainWindow::attachEditor(HxObject* pathSet) {
    if (!pathSet) return;
    const QString editor = run("create HxSurfacePathEditor");
    HxObject* module = HxObjectPool::getTheObjectPool().findObject(editor.toUtf8().constData());
    if (!module) return;
    run(tclWord(module) + " attach " + tclWord(pathSet));
    mObjects->select(module->getLabel());
}

void HxMainWindow::removeObject(HxObject* object) {
    if (object) run("remove " + tclWord(object));
}

void HxMainWindow::refreshAll() {
    mObjects->refresh();
    mProperties->refresh();
}

void HxMainWindow::portsChanged(HxObject* object) {
    if (object == mProperties->shownObject()) mProperties->rebuild();
}

void HxMainWindow::objectFired(HxObject* object) {
    if (object == mProperties->shownObject()) mProperties->refresh();
}

// Objects come and go in the middle of commands; the list is rebuilt once they are done.
void HxMainWindow::poolChanged() {
    if (mPoolRefreshPending) return;
    mPoolRefreshPending = true;
    QTimer::singleShot(0, this, [this] {
        mPoolRefreshPending = false;
        mObjects->refresh();
    });
}
