#pragma once
// HxInfoWidget: the read-only text line of an HxPortInfo.

#include "HxPortInfo.h"
#include "HxPortWidget.h"

class HxInfoWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxInfoWidget(HxObject* object, HxPortInfo const& port);

  private:
    void showPort(HxPort& port) override;

    QLabel* mText;
};
