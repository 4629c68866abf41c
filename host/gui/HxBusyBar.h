#pragma once
// HxBusyBar: the work area's busy indicator as a progress bar with its text, shown in the
// status bar while long work runs. The work runs on the GUI thread, so the bar repaints by
// processing pending paint events itself (user input waits until the work is done).

#include "HxWorkArea.h"

#include <QWidget>

class QLabel;
class QProgressBar;

class HxBusyBar : public QWidget, public HxBusyDisplay {
  public:
    explicit HxBusyBar(QWidget* parent = nullptr);
    ~HxBusyBar() override;

    void show(char const* text, float fraction) override;
    void hide() override;

    QString getText() const;
    int getPercent() const;

  private:
    QLabel* mText;
    QProgressBar* mBar;
};
