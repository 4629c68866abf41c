#pragma once
// HxWorkArea: the host's status area. It refreshes the views and shows a busy indicator
// while long work runs: a progress line on the terminal headless, a progress bar in the GUI
// (which installs itself as the display through setBusyDisplay).

#include "McProgressInterface.h"
#include "McString.h"

class HxBusyDisplay {
  public:
    virtual ~HxBusyDisplay() = default;
    virtual void show(char const* text, float fraction) = 0;
    virtual void hide() = 0;
};

class HxWorkArea : public McProgressInterface {
  public:
    static HxWorkArea* getTheWorkArea();

    // Processes pending events and redraws (the viewers register for idle redraws).
    virtual void update();

    void startWorking(char const* format, ...) override __attribute__((format(printf, 2, 3)));
    void stopWorking() override;
    void setProgressValue(float value) override;
    bool isWorking() const { return mDepth > 0; }
    char const* getBusyText() const { return mText.c_str(); }

    void setBusyDisplay(HxBusyDisplay* display) { mDisplay = display; }

  private:
    HxWorkArea() = default;
    void showLine(bool final);

    HxBusyDisplay* mDisplay = nullptr;
    McString mText;
    float mFraction = 0;
    int mDepth = 0;  // busy phases may nest; only the outermost is shown
    double mStartSeconds = 0;
};
