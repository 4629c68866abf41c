// The window as a person uses it, on a real X display (the test runs under Xvfb): the
// elephant loaded, a path set made and its editor attached with the window's buttons, a
// Shift+click on the viewer draws a path, the editor's Undo button takes it back.

#include "HxBusyBar.h"
#include "HxConsole.h"
#include "HxController.h"
#include "HxInterpreter.h"
#include "HxMainWindow.h"
#include "HxObjectList.h"
#include "HxObjectPool.h"
#include "HxPropertiesPanel.h"
#include "HxResources.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"
#include "HxViewer.h"
#include "HxViewerWidget.h"
#include "HxWorkArea.h"
#include "TestSurfaces.h"

#include <Inventor/Qt/SoQt.h>

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace {

// Pixels of the free-hand trace's orange in a band around row y between columns x0 and x1.
int orangePixels(QImage const& image, int x0, int x1, int y) {
    int orange = 0;
    for (int x = x0; x < x1; ++x)
        for (int dy = -15; dy <= 15; ++dy) {
            QColor c = image.pixelColor(x, y + dy);
            orange += c.red() > 200 && c.green() > 90 && c.green() < 170 && c.blue() < 60;
        }
    return orange;
}

std::string eval(std::string const& script) {
    McString result;
    EXPECT_EQ(HxInterpreter::getTheInterpreter().evalScript(script.c_str(), result), TCL_OK) << script << ": " << result;
    return result.c_str();
}

QPushButton* buttonLabelled(QWidget* parent, char const* text) {
    for (QPushButton* button : parent->findChildren<QPushButton*>())
        if (button->text() == text) return button;
    return nullptr;
}

class MainWindowTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "MainWindowTest";
        static char* argv[] = {name, nullptr};
        qputenv("QT_QPA_PLATFORM", "xcb");
        application = new QApplication(argc, argv);
        HxSurface::registerFileFormats();
        HxSurfacePathSet::registerFileFormats();
        HxResources::loadAll();
        window = new HxMainWindow;
        SoQt::init(window);
        window->createViewer();
        window->resize(1280, 860);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }

    static void TearDownTestSuite() {
        HxObjectPool::getTheObjectPool().removeAll();
        delete window;
        delete application;
    }

    static void clickButton(QWidget* parent, char const* text) {
        QPushButton* button = buttonLabelled(parent, text);
        ASSERT_NE(button, nullptr) << "no button " << text;
        ASSERT_TRUE(button->isVisible() && button->isEnabled()) << text;
        QTest::mouseClick(button, Qt::LeftButton);
        QApplication::processEvents();
    }

    static QApplication* application;
    static HxMainWindow* window;
};

QApplication* MainWindowTest::application = nullptr;
HxMainWindow* MainWindowTest::window = nullptr;

TEST_F(MainWindowTest, AUserDrawsAPathWithShiftClicksAndUndoesIt) {
    window->openFiles({QString::fromStdString(meshFile("elephant.off"))});
    HxObjectList* objects = window->getObjectList();
    ASSERT_STREQ(objects->getSelectedObject()->getLabel(), "elephant.off");
    clickButton(objects, "New path set");
    HxObject* pathSet = objects->getSelectedObject();
    ASSERT_TRUE(pathSet && pathSet->isOfType(HxSurfacePathSet::getClassTypeId()));
    const std::string paths = pathSet->getLabel();
    clickButton(objects, "Attach editor");
    HxPropertiesPanel* panel = window->getPropertiesPanel();
    clickButton(panel, "start");
    QApplication::processEvents();

    // The editor's ports are shown; those it hid are not.
    ASSERT_NE(panel->shownObject(), nullptr);
    EXPECT_STREQ(panel->shownObject()->getLabel(), "SurfacePathEditor");
    QWidget* action = panel->findPortWidget("action");
    ASSERT_NE(action, nullptr);
    EXPECT_TRUE(action->isVisible());
    QWidget* start = panel->findPortWidget("portStartEditor");
    EXPECT_TRUE(!start || !start->isVisible());

    // Two Shift+clicks on points of the surface in front: a path between them.
    HxViewerWidget* viewer = window->getViewerWidget();
    eval("viewer 0 viewAll");
    QApplication::processEvents();
    QWidget* canvas = viewer->getGLWidget();
    // Two points on the surface far apart, found by picking as the editor will.
    QList<QPoint> onSurface;
    HxViewer* hx = viewer->getViewer();
    const int width = hx->getGlxSize()[0], height = hx->getGlxSize()[1];
    for (int y = height / 4; y < 3 * height / 4 && onSurface.size() < 2; y += 8)
        for (int x = width / 4; x < 3 * width / 4 && onSurface.size() < 2; x += 8)
            if (hx->pick(x, y) && (onSurface.isEmpty() || std::abs(y - (height - 1 - onSurface[0].y())) > 80))
                onSurface.append(QPoint(x, height - 1 - y));
    ASSERT_EQ(onSurface.size(), 2);
    EXPECT_EQ(QSize(width, height), canvas->size()) << "picks and clicks share one window size";
    for (QPoint const& at : onSurface) {
        QTest::mouseClick(canvas, Qt::LeftButton, Qt::ShiftModifier, at);
        QApplication::processEvents();
    }
    ASSERT_EQ(eval(paths + " getNumPaths"), "1");
    const int nodes = std::stoi(eval(paths + " getNumNodes"));
    EXPECT_GE(nodes, 2);

    clickButton(action, "Undo");
    EXPECT_LT(std::stoi(eval(paths + " getNumNodes")), nodes) << "Undo took the last point back";
    clickButton(action, "Redo");
    EXPECT_EQ(std::stoi(eval(paths + " getNumNodes")), nodes) << "Redo put it back";
    clickButton(action, "Undo");

    // The picture of the window shows the grey surface in the viewer (once it was redrawn).
    QTest::qWait(300);
    QPixmap picture = window->screen()->grabWindow(window->winId());
    ASSERT_FALSE(picture.isNull());
    const QPoint centre = canvas->mapTo(window, canvas->rect().center());
    QImage image = picture.toImage();
    int grey = 0;
    for (int dx = -60; dx <= 60; dx += 4) {
        QColor c = image.pixelColor(centre + QPoint(dx, 0));
        grey += c.red() > 90 && std::abs(c.red() - c.blue()) < 25;
    }
    EXPECT_GT(grey, 5) << "the surface is drawn in the window";
    if (char const* out = std::getenv("SURFPATH_GUI_SCREENSHOT")) picture.save(out);

    // A free-hand stroke (switched on from the console) shows its orange trace while the
    // button is held, and gives a path when it is released.
    window->getConsole()->evaluate("SurfacePathEditor freeHandDrawing hit 0; SurfacePathEditor fire");
    const int before = std::stoi(eval(paths + " getNumPaths"));
    const QPoint from = canvas->rect().center() + QPoint(-60, 40), to = from + QPoint(120, 0);
    QTest::qWait(300);  // a redraw still pending would wipe the trace
    QTest::mousePress(canvas, Qt::LeftButton, Qt::NoModifier, from);
    // Each motion draws at once; a redraw the loaded machine ran late could wipe what was
    // drawn before it, so the best of the pictures taken after each motion counts.
    QImage stroke;
    int orange = 0;
    for (int x = from.x(); x <= to.x(); x += 10) {
        QTest::mouseMove(canvas, QPoint(x, from.y()));
        QImage now = window->screen()->grabWindow(window->winId())
                         .toImage()
                         .copy(QRect(canvas->mapTo(window, QPoint(0, 0)), canvas->size()));
        const int count = orangePixels(now, from.x(), x, from.y());
        if (count >= orange) {
            orange = count;
            stroke = now;
        }
    }
    EXPECT_GT(orange, 20) << "the stroke's trace is drawn over the surface";
    if (char const* out = std::getenv("SURFPATH_GUI_STROKE")) stroke.save(out);
    QTest::mouseRelease(canvas, Qt::LeftButton, Qt::NoModifier, to);
    QApplication::processEvents();
    EXPECT_GT(std::stoi(eval(paths + " getNumPaths")), before);
}

}  // namespace

namespace {

// Esc in the viewer switches viewing and picking on both sides, as `viewer 0 setViewing` does.
TEST_F(MainWindowTest, EscAndScriptsSwitchTheViewerModeInStep) {
    HxViewerWidget* viewer = window->getViewerWidget();
    eval("viewer 0 setViewing 0");
    EXPECT_FALSE(viewer->isViewing());
    QTest::keyClick(viewer->getGLWidget(), Qt::Key_Escape);
    EXPECT_EQ(eval("viewer 0 isViewing"), "1");
    EXPECT_TRUE(viewer->isViewing());
    viewer->setViewing(FALSE);  // the viewer's own arrow button
    EXPECT_EQ(eval("viewer 0 isViewing"), "0");
}

// A question is a modal box; the index of the button pressed comes back.
TEST_F(MainWindowTest, QuestionsAreAnsweredInAModalBox) {
    QTimer::singleShot(200, [] {
        QWidget* box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        QTest::mouseClick(buttonLabelled(box, "No"), Qt::LeftButton);
    });
    EXPECT_EQ(HxMessage::getTheMsg()->question("Delete all paths?", "Yes", "No", nullptr, -1, -1), 1);
}

// Long work shows its text and progress in the status bar, and the bar goes when it ends.
TEST_F(MainWindowTest, TheBusyIndicatorFollowsTheWorkArea) {
    HxWorkArea* work = HxWorkArea::getTheWorkArea();
    work->startWorking("Smoothing %d paths", 3);
    work->setProgressValue(0.5f);
    HxBusyBar* bar = window->getBusyBar();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->getText(), "Smoothing 3 paths");
    EXPECT_EQ(bar->getPercent(), 50);
    work->stopWorking();
    EXPECT_FALSE(bar->isVisible());
}

}  // namespace
