#include "HxConnectionWidget.h"

#include "HxObjectPool.h"

#include <QComboBox>

namespace {
char const* const noSource = "(none)";
}

HxConnectionWidget::HxConnectionWidget(HxObject* object, HxConnection const& port)
    : HxPortWidget(object, port), mSources(new QComboBox) {
    addControl(mSources);
    connect(mSources, QOverload<int>::of(&QComboBox::activated), this, &HxConnectionWidget::choose);
}

void HxConnectionWidget::showPort(HxPort& port) {
    auto& connection = static_cast<HxConnection&>(port);
    HxObject* source = connection.getSource();
    QStringList entries{noSource};
    int current = 0;
    for (HxObject* object : HxObjectPool::getTheObjectPool().getObjects()) {
        if (!connection.accepts(object)) continue;
        if (object == source) current = entries.size();
        entries << QString::fromUtf8(object->getLabel());
    }
    // A source outside the pool is still the source.
    if (source && current == 0) {
        current = entries.size();
        entries << QString::fromUtf8(source->getLabel());
    }
    setEntries(mSources, entries, current);
}

// As `PORT connect OBJECT` (or `disconnect`) followed by a fire. The pool may have changed
// since the entries were made: an object no longer found is no change.
void HxConnectionWidget::choose(int entry) {
    HxObject* object = nullptr;
    if (entry > 0) object = HxObjectPool::getTheObjectPool().findObject(mSources->itemText(entry).toUtf8().constData());
    edit<HxConnection>([entry, object](HxConnection& port) {
        if ((entry > 0 && !object) || object == port.getSource()) return false;
        return port.connect(object);
    });
}
