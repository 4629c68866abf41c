#pragma once
// HxMessage: the host's message console and dialogs.
//
// Headless, printf() writes to standard output, error() to standard error, and question()
// answers with the button index held in the Tcl variable hx::questionAnswer (default 0).
// A GUI installs a HxDialogProvider to show real dialogs and a HxConsoleOutput to show the
// console's lines in its window. Tests capture the console.

#include "McString.h"

#include <cstdarg>

class HxDialogProvider {
  public:
    virtual ~HxDialogProvider() = default;
    // Both return the index of the chosen button; null button texts are left out (an error
    // without any shows a single OK button).
    virtual int error(char const* text, char const* button0, char const* button1, char const* button2,
                      int defaultButton, int escapeButton) = 0;
    virtual int question(char const* text, char const* button0, char const* button1, char const* button2,
                         int defaultButton, int escapeButton) = 0;
};

class HxConsoleOutput {
  public:
    virtual ~HxConsoleOutput() = default;
    // One or more lines, each ending in a newline.
    virtual void print(char const* text, bool isError) = 0;
};

class HxMessage {
  public:
    static HxMessage* getTheMsg();

    // Prints a line on the console (a missing final newline is added).
    void printf(char const* format, ...) __attribute__((format(printf, 2, 3)));
    void vprintf(char const* format, va_list args);

    // Shows an error; returns the index of the button pressed (0 headless).
    int error(char const* text, char const* button0 = nullptr, char const* button1 = nullptr,
              char const* button2 = nullptr, int defaultButton = -1, int escapeButton = -1);
    // Asks a question; returns the index of the chosen button (0 for the first).
    int question(char const* text, char const* button0, char const* button1 = nullptr,
                 char const* button2 = nullptr, int defaultButton = -1, int escapeButton = -1);

    // Installs the dialogs of a GUI (null: headless); the caller keeps ownership.
    void setDialogProvider(HxDialogProvider* provider) { mDialogs = provider; }
    // Shows the console in a GUI as well as on the terminal (null: terminal only); the
    // caller keeps ownership.
    void setConsoleOutput(HxConsoleOutput* output) { mConsole = output; }

    // While capturing, console and error text go to a buffer instead of the terminal.
    void startCapture();
    McString stopCapture();
    bool isCapturing() const { return mCapturing; }

  private:
    HxMessage() = default;
    void writeLine(McString const& text, bool isError);

    HxDialogProvider* mDialogs = nullptr;
    HxConsoleOutput* mConsole = nullptr;
    bool mCapturing = false;
    McString mCaptured;
};
