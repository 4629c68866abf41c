#include "HxDrawStyleWidget.h"

#include "HxRadioBoxWidget.h"

#include <QComboBox>

HxDrawStyleWidget::HxDrawStyleWidget(HxObject* object, HxPortDrawStyle const& port)
    : HxPortWidget(object, port), mStyles(new QComboBox) {
    addControl(mStyles);
    connect(mStyles, QOverload<int>::of(&QComboBox::activated), this, [this](int i) {
        edit<HxPortDrawStyle>([i](HxPortDrawStyle& p) { return HxRadioBoxWidget::choose(p, i); });
    });
}

void HxDrawStyleWidget::showPort(HxPort& port) {
    auto& styles = static_cast<HxPortDrawStyle&>(port);
    QStringList names;
    for (int i = 0; i < styles.getNum(); ++i) names << QString::fromUtf8(styles.getLabel(i));
    setEntries(mStyles, names, styles.getValue());
}
