#pragma once
// HxSeparatorWidget: the gap of an HxPortSeparator, with a horizontal line or blank. It shows
// no label: a separator's label is its script name, which means nothing to a user.

#include "HxPortSeparator.h"
#include "HxPortWidget.h"

class HxSeparatorWidget : public HxPortWidget {
    Q_OBJECT
  public:
    HxSeparatorWidget(HxObject* object, HxPortSeparator const& port);

  private:
    void showPort(HxPort&) override {}
};
