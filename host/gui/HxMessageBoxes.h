#pragma once
// HxMessageBoxes: the host's error and question dialogs as modal Qt message boxes.

#include "HxMessage.h"

class QWidget;

class HxMessageBoxes : public HxDialogProvider {
  public:
    explicit HxMessageBoxes(QWidget* parent) : mParent(parent) {}
    int error(char const* text, char const* button0, char const* button1, char const* button2, int defaultButton,
              int escapeButton) override;
    int question(char const* text, char const* button0, char const* button1, char const* button2, int defaultButton,
                 int escapeButton) override;

  private:
    QWidget* mParent;
};
