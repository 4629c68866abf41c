#include "HxController.h"
#include "HxInterpreter.h"
#include "HxModule.h"
#include "HxObjectPool.h"
#include "HxPngFile.h"
#include "HxViewer.h"

#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoHandleEventAction.h>
#include <Inventor/events/SoKeyboardEvent.h>
#include <Inventor/events/SoMouseButtonEvent.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoCube.h>
#include <Inventor/nodes/SoEventCallback.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTranslation.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

HxController* controller() { return HxController::getTheController(); }

// A module showing an unlit red cube of side 2 at `z`.
class CubeModule : public HxModule {
  public:
    explicit CubeModule(float z) {
        root = new SoSeparator;
        root->ref();
        auto* lightModel = new SoLightModel;
        lightModel->model = SoLightModel::BASE_COLOR;
        auto* colour = new SoBaseColor;
        colour->rgb.setValue(1, 0, 0);
        auto* offset = new SoTranslation;
        offset->translation.setValue(0, 0, z);
        root->addChild(lightModel);
        root->addChild(colour);
        root->addChild(offset);
        root->addChild(new SoCube);
        showGeom(root);
    }
    ~CubeModule() override { root->unref(); }
    SoSeparator* root;
};

// What the callbacks saw, in call order.
struct Log {
    std::vector<std::string> calls;
    int consumeAt = -1;  // the event callback with this tag consumes
    SoPath* firstPickPath = nullptr;
};

struct Tagged {
    Log* log;
    int tag;
};

int eventCB(SoEvent const* event, HxViewer*, void* data) {
    auto* t = static_cast<Tagged*>(data);
    t->log->calls.push_back("event" + std::to_string(t->tag));
    return t->tag == t->log->consumeAt;
}

void pickCB(void* data, SoEventCallback* node) {
    auto* log = static_cast<Log*>(data);
    log->calls.push_back("pick");
    SoPickedPoint const* picked = node->getPickedPoint();
    if (picked && !log->firstPickPath) {
        log->firstPickPath = picked->getPath()->copy();
        log->firstPickPath->ref();
    }
    node->getAction()->setHandled();
}

class HxViewerTest : public testing::Test {
  protected:
    void SetUp() override {
        viewer = controller()->viewer(0, 1);
        McString error;
        ASSERT_TRUE(viewer->setSize(200, 150, error));
        viewer->setViewing(false);
        cube = new CubeModule(0);
        HxObjectPool::getTheObjectPool().addObject(cube);
        viewer->viewAll();
        for (Tagged& t : tags) t.log = &log;
    }
    void TearDown() override {
        for (Tagged& t : tags) controller()->removeEventCallback(eventCB, &t);
        controller()->removePickCallback(pickCB, &log);
        if (log.firstPickPath) log.firstPickPath->unref();
        HxObjectPool::getTheObjectPool().removeAll();
    }

    bool click(float sx, float sy, SoButtonEvent::State state = SoButtonEvent::UP) {
        SoMouseButtonEvent event;
        event.setButton(SoMouseButtonEvent::BUTTON1);
        event.setState(state);
        event.setPosition(SbVec2s(short(sx), short(sy)));
        return viewer->processEvent(&event);
    }

    HxViewer* viewer = nullptr;
    CubeModule* cube = nullptr;
    Log log;
    Tagged tags[3] = {{nullptr, 0}, {nullptr, 1}, {nullptr, 2}};
};

TEST_F(HxViewerTest, EventCallbacksRunInOrderUntilOneConsumesAndThenNoPickHappens) {
    for (Tagged& t : tags) controller()->addEventCallback(eventCB, &t);
    controller()->addPickCallback(pickCB, &log);
    log.consumeAt = 1;
    EXPECT_TRUE(click(100, 75));
    EXPECT_EQ(log.calls, (std::vector<std::string>{"event0", "event1"}));

    log.calls.clear();
    log.consumeAt = -1;
    EXPECT_TRUE(click(100, 75));
    EXPECT_EQ(log.calls, (std::vector<std::string>{"event0", "event1", "event2", "pick"}));
}

TEST_F(HxViewerTest, ClickAtProjectedPointReachesPickCallbackOnTheShownGeometry) {
    controller()->addPickCallback(pickCB, &log);
    float sx, sy;
    ASSERT_TRUE(viewer->project(McVec3f(0.5f, -0.3f, 1.0f), sx, sy));  // on the cube's front face
    EXPECT_TRUE(click(sx, sy));
    ASSERT_NE(log.firstPickPath, nullptr);
    EXPECT_TRUE(log.firstPickPath->containsNode(cube->root));
    EXPECT_EQ(controller()->findGeometryOwner(log.firstPickPath), cube);

    SoPickedPoint const* picked = viewer->pick(sx, sy);
    ASSERT_NE(picked, nullptr);
    EXPECT_NEAR(picked->getPoint()[0], 0.5f, 0.03f);
    EXPECT_NEAR(picked->getPoint()[1], -0.3f, 0.03f);
    EXPECT_NEAR(picked->getPoint()[2], 1.0f, 1e-3f);
}

TEST_F(HxViewerTest, ViewingModeAndKeysNeverPick) {
    controller()->addPickCallback(pickCB, &log);
    viewer->setViewing(true);
    EXPECT_FALSE(click(100, 75));
    viewer->setViewing(false);

    SoKeyboardEvent key;
    key.setKey(SoKeyboardEvent::D);
    key.setState(SoButtonEvent::UP);
    viewer->processEvent(&key);
    EXPECT_TRUE(log.calls.empty());
}

// An editor switching off from inside its own callback removes the others' turn too.
int removingCB(SoEvent const*, HxViewer*, void* data) {
    auto* tags = static_cast<Tagged*>(data);
    tags->log->calls.push_back("remover");
    controller()->removeEventCallback(eventCB, &tags[1]);
    return 0;
}

TEST_F(HxViewerTest, CallbackRemovedDuringDispatchIsNotCalled) {
    controller()->addEventCallback(removingCB, tags);
    controller()->addEventCallback(eventCB, &tags[1]);
    click(100, 75);
    controller()->removeEventCallback(removingCB, tags);
    EXPECT_EQ(log.calls, (std::vector<std::string>{"remover"}));
}

TEST_F(HxViewerTest, RemovingTheModuleRemovesItsGeometry) {
    SoSeparator* root = controller()->getGeometryRoot();
    EXPECT_GE(root->findChild(cube->root), 0);
    SoSeparator* node = cube->root;
    node->ref();
    HxObjectPool::getTheObjectPool().removeObject(cube);
    EXPECT_LT(root->findChild(node), 0);
    node->unref();
    EXPECT_EQ(viewer->pick(100, 75), nullptr);
}

TEST_F(HxViewerTest, SnapshotShowsTheGeometry) {
    std::string file = testing::TempDir() + "viewer-test.png";
    McString error;
    ASSERT_TRUE(viewer->snapshot(file.c_str(), error)) << error.c_str();
    int w, h;
    std::vector<unsigned char> rgba;
    ASSERT_TRUE(HxPngFile::read(file.c_str(), w, h, rgba, error)) << error.c_str();
    EXPECT_EQ(w, 200);
    EXPECT_EQ(h, 150);
    float sx, sy;
    ASSERT_TRUE(viewer->project(McVec3f(0, 0, 1), sx, sy));
    unsigned char const* centre = &rgba[(size_t(sy) * w + size_t(sx)) * 4];
    EXPECT_EQ(centre[0], 255);
    EXPECT_EQ(centre[1], 0);
    unsigned char const* corner = &rgba[0];
    EXPECT_LT(corner[0], 100);  // background
    std::remove(file.c_str());
}

TEST_F(HxViewerTest, TclViewerCommandReportsBadArguments) {
    HxInterpreter& tcl = HxInterpreter::getTheInterpreter();
    for (char const* bad : {"viewer 99 redraw", "viewer 0 mouse press 7 1 1", "viewer 0 mouse press 1 1 1 -alt",
                            "viewer 0 key press NOKEY", "viewer 0 setSize 0 10", "viewer 0 snapshot x.jpg",
                            "viewer 0 camera orientation 0 0 0 1", "viewer 0 project 1 2"}) {
        tcl.eval("%s", bad);
        EXPECT_EQ(tcl.lastCode(), TCL_ERROR) << bad;
    }
    std::string picked = tcl.eval("viewer 0 pick 100 75");
    EXPECT_EQ(picked.rfind("object " + std::string(cube->getLabel()) + " point", 0), 0u) << picked;
}

}  // namespace
