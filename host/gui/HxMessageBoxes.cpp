#include "HxMessageBoxes.h"

#include <QMessageBox>
#include <QPushButton>

namespace {
// Shows a modal box with the given buttons (null ones left out, OK when there are none) and
// returns the index of the button pressed. Closing the box picks the escape button, or the
// last one when none is named.
int ask(QWidget* parent, QMessageBox::Icon icon, char const* title, char const* text, char const* const labels[3],
        int defaultButton, int escapeButton) {
    QMessageBox box(icon, title, QString::fromUtf8(text), QMessageBox::NoButton, parent);
    QPushButton* buttons[3] = {nullptr, nullptr, nullptr};
    int count = 0;
    for (int i = 0; i < 3; ++i)
        if (labels[i]) {
            buttons[i] = box.addButton(QString::fromUtf8(labels[i]), QMessageBox::ActionRole);
            ++count;
        }
    if (count == 0) buttons[0] = box.addButton(QMessageBox::Ok);
    const int last = count == 0 ? 0 : (labels[2] ? 2 : (labels[1] ? 1 : 0));
    if (defaultButton >= 0 && defaultButton < 3 && buttons[defaultButton])
        box.setDefaultButton(buttons[defaultButton]);
    const int escape = escapeButton >= 0 && escapeButton < 3 && buttons[escapeButton] ? escapeButton : last;
    box.setEscapeButton(buttons[escape]);
    box.exec();
    for (int i = 0; i < 3; ++i)
        if (buttons[i] && box.clickedButton() == buttons[i]) return i;
    return escape;
}
}  // namespace

int HxMessageBoxes::error(char const* text, char const* button0, char const* button1, char const* button2,
                          int defaultButton, int escapeButton) {
    char const* labels[3] = {button0, button1, button2};
    return ask(mParent, QMessageBox::Critical, "Error", text, labels, defaultButton, escapeButton);
}

int HxMessageBoxes::question(char const* text, char const* button0, char const* button1, char const* button2,
                             int defaultButton, int escapeButton) {
    char const* labels[3] = {button0, button1, button2};
    return ask(mParent, QMessageBox::Question, "Question", text, labels, defaultButton, escapeButton);
}
