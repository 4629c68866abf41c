#include "HxWorkArea.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct RecordingDisplay : HxBusyDisplay {
    std::vector<std::string> shown;
    int hidden = 0;
    void show(char const* text, float fraction) override {
        shown.push_back(std::string(text) + " " + std::to_string(static_cast<int>(fraction * 100)));
    }
    void hide() override { ++hidden; }
};

TEST(HxWorkArea, BusyIndicatorShowsTheOutermostPhaseOnlyAndClampsProgress) {
    HxWorkArea* area = HxWorkArea::getTheWorkArea();
    RecordingDisplay display;
    area->setBusyDisplay(&display);
    area->startWorking("Retriangulating %s", "paths");
    area->startWorking("inner step");  // nested: the user keeps seeing the outer text
    EXPECT_STREQ(area->getBusyText(), "Retriangulating paths");
    area->setProgressValue(1.7f);
    area->stopWorking();
    EXPECT_TRUE(area->isWorking());
    area->stopWorking();
    EXPECT_FALSE(area->isWorking());
    area->stopWorking();  // an unmatched end is harmless
    area->setBusyDisplay(nullptr);
    EXPECT_EQ(display.shown,
              (std::vector<std::string>{"Retriangulating paths 0", "Retriangulating paths 100",
                                        "Retriangulating paths 100"}));
    EXPECT_EQ(display.hidden, 1);
}

}  // namespace
