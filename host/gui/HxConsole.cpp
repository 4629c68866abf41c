#include "HxConsole.h"

#include "HxInterpreter.h"
#include "HxTclConsoleChannel.h"

#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>

namespace {
const QColor kTextColour(20, 20, 20);
const QColor kErrorColour(180, 0, 0);
const QColor kCommandColour(0, 70, 160);
}  // namespace

HxConsole::HxConsole(QWidget* parent) : QWidget(parent), mOutput(new QPlainTextEdit), mInput(new QLineEdit) {
    mOutput->setReadOnly(true);
    mOutput->setMaximumBlockCount(10000);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    mOutput->setFont(fixed);
    mInput->setFont(fixed);
    mInput->setObjectName("commandLine");
    mInput->setPlaceholderText("Tcl command");
    mInput->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(mOutput);
    layout->addWidget(mInput);
    connect(mInput, &QLineEdit::returnPressed, this, &HxConsole::submit);
    HxMessage::getTheMsg()->setConsoleOutput(this);
    HxTclConsoleChannel::install(this);
}

HxConsole::~HxConsole() {
    HxTclConsoleChannel::uninstall();
    HxMessage::getTheMsg()->setConsoleOutput(nullptr);
}

void HxConsole::print(char const* text, bool isError) {
    QString line = QString::fromUtf8(text);
    if (line.endsWith('\n')) line.chop(1);
    append(line, isError ? kErrorColour : kTextColour);
}

QString HxConsole::getText() const { return mOutput->toPlainText(); }

void HxConsole::append(QString const& text, QColor const& colour) {
    QTextCharFormat format;
    format.setForeground(colour);
    QTextCursor cursor(mOutput->document());
    cursor.movePosition(QTextCursor::End);
    if (!mOutput->document()->isEmpty()) cursor.insertBlock();
    cursor.insertText(text, format);
    mOutput->verticalScrollBar()->setValue(mOutput->verticalScrollBar()->maximum());
}

void HxConsole::submit() {
    const QString line = mInput->text();
    mInput->clear();
    if (!line.trimmed().isEmpty() && (mHistory.isEmpty() || mHistory.last() != line)) mHistory.append(line);
    mHistoryIndex = mHistory.size();
    append((mPending.isEmpty() ? "surfpath> " : "> ") + line, kCommandColour);
    mPending += line + '\n';
    const QByteArray command = mPending.toUtf8();
    if (!Tcl_CommandComplete(command.constData())) return;
    mPending.clear();
    execute(QString::fromUtf8(command).trimmed(), nullptr);
}

bool HxConsole::evaluate(QString const& command, QString* result) {
    append("surfpath> " + command, kCommandColour);
    return execute(command, result);
}

bool HxConsole::execute(QString const& command, QString* result) {
    McString text;
    const bool ok = HxInterpreter::getTheInterpreter().evalScript(command.toUtf8().constData(), text) == TCL_OK;
    if (!ok)
        append("error: " + QString::fromUtf8(text.c_str()), kErrorColour);
    else if (!text.empty())
        append(QString::fromUtf8(text.c_str()), kTextColour);
    if (result) *result = QString::fromUtf8(text.c_str());
    emit commandEvaluated();
    return ok;
}

bool HxConsole::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mInput && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            showHistoryEntry(mHistoryIndex + (key == Qt::Key_Up ? -1 : 1));
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

// Past the newest entry the line is empty again, ready for a new command.
void HxConsole::showHistoryEntry(int index) {
    if (index < 0 || index > mHistory.size()) return;
    mHistoryIndex = index;
    mInput->setText(index < mHistory.size() ? mHistory[index] : QString());
}
