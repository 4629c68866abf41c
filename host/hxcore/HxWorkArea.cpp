#include "HxWorkArea.h"

#include <tcl.h>

#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <unistd.h>

namespace {
double nowSeconds() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}
}  // namespace

HxWorkArea* HxWorkArea::getTheWorkArea() {
    static HxWorkArea workArea;
    return &workArea;
}

void HxWorkArea::update() {
    while (Tcl_DoOneEvent(TCL_DONT_WAIT | TCL_ALL_EVENTS)) {
    }
}

void HxWorkArea::startWorking(char const* format, ...) {
    if (mDepth++ > 0) return;
    va_list args;
    va_start(args, format);
    mText.vprintf(format, args);
    va_end(args);
    mFraction = 0;
    mStartSeconds = nowSeconds();
    showLine(false);
}

void HxWorkArea::stopWorking() {
    if (mDepth == 0 || --mDepth > 0) return;
    mFraction = 1;
    showLine(true);
    if (mDisplay) mDisplay->hide();
}

void HxWorkArea::setProgressValue(float value) {
    if (mDepth == 0) return;
    mFraction = value < 0 ? 0 : (value > 1 ? 1 : value);
    showLine(false);
}

// On a terminal the line is rewritten in place; into a pipe only start and end are written.
void HxWorkArea::showLine(bool final) {
    if (mDisplay) {
        mDisplay->show(mText.c_str(), mFraction);
        return;
    }
    const bool terminal = isatty(fileno(stderr));
    if (final)
        std::fprintf(stderr, "%s%s ... done (%.2f s)\n", terminal ? "\r" : "", mText.c_str(),
                     nowSeconds() - mStartSeconds);
    else if (terminal)
        std::fprintf(stderr, "\r%s ... %3d%%", mText.c_str(), static_cast<int>(mFraction * 100));
    else if (mFraction == 0)
        std::fprintf(stderr, "%s ...\n", mText.c_str());
    std::fflush(stderr);
}
