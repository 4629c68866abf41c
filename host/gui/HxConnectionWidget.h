#pragma once
// HxConnectionWidget: a combo box of the objects in the pool that an HxConnection accepts,
// and "(none)"; choosing one connects to it (or disconnects) and fires the owner.

#include "HxConnection.h"
#include "HxPortWidget.h"

class HxConnectionWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxConnectionWidget(HxObject* object, HxConnection const& port);

  private:
    void showPort(HxPort& port) override;
    void choose(int entry);

    QComboBox* mSources;
};
