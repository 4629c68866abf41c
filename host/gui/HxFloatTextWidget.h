#pragma once
// HxFloatTextWidget: a text field per field of an HxPortFloatTextN. An entered number is
// clamped into the port's range (shown in the tooltip), as `PORT setValue` clamps it; text
// that is no finite float is refused and the field shows the port's value again.

#include "HxPortFloatTextN.h"
#include "HxPortWidget.h"

class QLineEdit;

class HxFloatTextWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxFloatTextWidget(HxObject* object, HxPortFloatTextN const& port);

  private:
    void showPort(HxPort& port) override;
    void enter(int field);

    QList<QLineEdit*> mFields;
};
