#include "HxFloatTextWidget.h"

#include <QLineEdit>
#include <QLocale>

#include <cfloat>
#include <cmath>

namespace {
QString formatted(float value) { return QString::fromStdString(HxPortRange<float>::format(value)); }

QString rangeText(float min, float max) {
    if (min == -FLT_MAX && max == FLT_MAX) return QString();
    return QString("%1 to %2").arg(formatted(min), formatted(max));
}

// The number a script could give: finite and within float's range.
bool parseFloat(QString const& text, float& value) {
    bool ok = false;
    const double number = QLocale::c().toDouble(text.trimmed(), &ok);
    if (!ok || !std::isfinite(number) || std::fabs(number) > FLT_MAX) return false;
    value = static_cast<float>(number);
    return true;
}
}  // namespace

HxFloatTextWidget::HxFloatTextWidget(HxObject* object, HxPortFloatTextN const& port) : HxPortWidget(object, port) {}

void HxFloatTextWidget::showPort(HxPort& port) {
    auto& fields = static_cast<HxPortFloatTextN&>(port);
    resizeControls(mFields, fields.getNum(), [this](int i) {
        auto* field = new QLineEdit;
        connect(field, &QLineEdit::editingFinished, this, [this, i] { enter(i); });
        return field;
    });
    const QString range = rangeText(fields.getMinValue(), fields.getMaxValue());
    for (int i = 0; i < mFields.size(); ++i) {
        const QString value = formatted(fields.getValue(i));
        if (mFields[i]->text() != value) mFields[i]->setText(value);
        mFields[i]->setToolTip(range);
    }
}

// Leaving a field that was not edited is no change.
void HxFloatTextWidget::enter(int field) {
    QLineEdit* line = mFields.value(field);
    if (!line || !line->isModified()) return;
    line->setModified(false);
    float value = 0;
    const bool valid = parseFloat(line->text(), value);
    edit<HxPortFloatTextN>([field, value, valid](HxPortFloatTextN& port) {
        if (!valid) return false;
        port.setValue(field, value);
        port.touch();
        return true;
    });
}
