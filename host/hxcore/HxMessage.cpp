#include "HxMessage.h"

#include "HxInterpreter.h"

#include <cstdio>
#include <cstdlib>

HxMessage* HxMessage::getTheMsg() {
    static HxMessage message;
    return &message;
}

void HxMessage::printf(char const* format, ...) {
    va_list args;
    va_start(args, format);
    vprintf(format, args);
    va_end(args);
}

void HxMessage::vprintf(char const* format, va_list args) {
    McString text;
    text.vprintf(format, args);
    writeLine(text, false);
}

int HxMessage::error(char const* text, char const* button0, char const* button1, char const* button2,
                     int defaultButton, int escapeButton) {
    // The console keeps a record of every error, also of those shown in a dialog.
    writeLine(McString::format("Error: %s", text), true);
    return mDialogs ? mDialogs->error(text, button0, button1, button2, defaultButton, escapeButton) : 0;
}

int HxMessage::question(char const* text, char const* button0, char const* button1, char const* button2,
                        int defaultButton, int escapeButton) {
    if (mDialogs) return mDialogs->question(text, button0, button1, button2, defaultButton, escapeButton);
    // Headless: a script decides the answer beforehand through hx::questionAnswer.
    int answer = 0;
    if (char const* value = HxInterpreter::getTheInterpreter().getVar("hx::questionAnswer")) answer = std::atoi(value);
    char const* buttons[] = {button0, button1, button2};
    char const* chosen = answer >= 0 && answer < 3 && buttons[answer] ? buttons[answer] : "?";
    writeLine(McString::format("Question: %s -> %s", text, chosen), false);
    return answer;
}

void HxMessage::startCapture() {
    mCapturing = true;
    mCaptured.clear();
}

McString HxMessage::stopCapture() {
    mCapturing = false;
    McString text;
    text.swap(mCaptured);
    return text;
}

void HxMessage::writeLine(McString const& text, bool isError) {
    McString line = text;
    if (line.empty() || line.back() != '\n') line += '\n';
    if (mCapturing) {
        mCaptured += line;
        return;
    }
    if (mConsole) mConsole->print(line.c_str(), isError);
    std::FILE* stream = isError ? stderr : stdout;
    std::fputs(line.c_str(), stream);
    std::fflush(stream);
}
