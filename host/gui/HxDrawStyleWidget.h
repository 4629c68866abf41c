#pragma once
// HxDrawStyleWidget: a combo box of the styles an HxPortDrawStyle offers.

#include "HxPortDrawStyle.h"
#include "HxPortWidget.h"

class HxDrawStyleWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxDrawStyleWidget(HxObject* object, HxPortDrawStyle const& port);

  private:
    void showPort(HxPort& port) override;

    QComboBox* mStyles;
};
