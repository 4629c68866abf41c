#pragma once
// HxConsole: the host's message console in the window, with a Tcl command line that
// evaluates in the program's interpreter. Up and Down walk through the commands given so
// far; a command that is not yet complete (an open brace) waits for more lines.

#include "HxMessage.h"

#include <QStringList>
#include <QWidget>

class QLineEdit;
class QPlainTextEdit;

class HxConsole : public QWidget, public HxConsoleOutput {
    Q_OBJECT
  public:
    explicit HxConsole(QWidget* parent = nullptr);
    ~HxConsole() override;

    // HxConsoleOutput
    void print(char const* text, bool isError) override;

    // Evaluates one command as if it had been typed and shows it with its result; true on success,
    // with the result text in `result` if given.
    bool evaluate(QString const& command, QString* result = nullptr);
    QLineEdit* getCommandLine() const { return mInput; }
    QString getText() const;

  signals:
    // After every command: ports or objects may have changed without any update.
    void commandEvaluated();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void submit();
    bool execute(QString const& command, QString* result);
    void showHistoryEntry(int index);
    void append(QString const& text, QColor const& colour);

    QPlainTextEdit* mOutput;
    QLineEdit* mInput;
    QStringList mHistory;
    int mHistoryIndex = 0;
    QString mPending;  // lines of a command not complete yet
};
