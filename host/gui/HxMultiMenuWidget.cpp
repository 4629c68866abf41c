#include "HxMultiMenuWidget.h"

#include <QComboBox>

HxMultiMenuWidget::HxMultiMenuWidget(HxObject* object, HxPortMultiMenu const& port) : HxPortWidget(object, port) {}

void HxMultiMenuWidget::showPort(HxPort& port) {
    auto& menus = static_cast<HxPortMultiMenu&>(port);
    resizeControls(mMenus, menus.getNumMenus(), [this](int menu) {
        auto* combo = new QComboBox;
        connect(combo, QOverload<int>::of(&QComboBox::activated), this, [this, menu](int i) { choose(menu, i); });
        return combo;
    });
    for (int menu = 0; menu < mMenus.size(); ++menu) {
        QStringList entries;
        for (int i = 0; i < menus.getNum(menu); ++i) entries << QString::fromUtf8(menus.getLabel(menu, i));
        setEntries(mMenus[menu], entries, menus.getIndex(menu));
    }
}

// As `PORT setIndex MENU I`, which marks the port new; choosing the entry shown is no change.
void HxMultiMenuWidget::choose(int menu, int entry) {
    edit<HxPortMultiMenu>([menu, entry](HxPortMultiMenu& port) {
        if (entry == port.getIndex(menu) || entry < 0 || entry >= port.getNum(menu)) return false;
        port.setIndex(menu, entry);
        port.touch();
        return true;
    });
}
