#include "HxObjectList.h"

#include "HxObject.h"
#include "HxObjectPool.h"
#include "HxSurface.h"
#include "HxSurfacePathSet.h"

#include <QGridLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// Items remember their object, which survives a rename; an object no longer in the pool is
// never handed out.
HxObject* objectOf(QListWidgetItem const* item) {
    if (!item) return nullptr;
    auto* object = static_cast<HxObject*>(item->data(Qt::UserRole).value<void*>());
    return HxObjectPool::getTheObjectPool().contains(object) ? object : nullptr;
}
bool isA(HxObject* object, McTypeInfo const* type) { return object && object->isOfType(type); }
}  // namespace

HxObjectList::HxObjectList(QWidget* parent)
    : QWidget(parent),
      mList(new QListWidget),
      mLoad(new QPushButton("Load...")),
      mNewPathSet(new QPushButton("New path set")),
      mAttachEditor(new QPushButton("Attach editor")),
      mRemove(new QPushButton("Remove")) {
    mList->setObjectName("objects");
    mLoad->setToolTip("Read a surface, a path set or run a Tcl script");
    mNewPathSet->setToolTip("Make an empty path set on the selected surface");
    mAttachEditor->setToolTip("Edit the selected path set in the viewer");
    mRemove->setToolTip("Remove the selected object");
    auto* buttons = new QGridLayout;
    buttons->addWidget(mLoad, 0, 0);
    buttons->addWidget(mNewPathSet, 0, 1);
    buttons->addWidget(mAttachEditor, 1, 0);
    buttons->addWidget(mRemove, 1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(mList);
    layout->addLayout(buttons);

    connect(mList, &QListWidget::itemSelectionChanged, this, &HxObjectList::selectionMoved);
    connect(mLoad, &QPushButton::clicked, this, &HxObjectList::loadRequested);
    connect(mNewPathSet, &QPushButton::clicked, this, [this] { emit newPathSetRequested(getSelectedObject()); });
    connect(mAttachEditor, &QPushButton::clicked, this, [this] { emit attachEditorRequested(getSelectedObject()); });
    connect(mRemove, &QPushButton::clicked, this, [this] { emit removeRequested(getSelectedObject()); });
    refresh();
}

void HxObjectList::refresh() {
    HxObject* selected = getSelectedObject();
    const QSignalBlocker blocker(mList);
    mList->clear();
    for (HxObject* object : HxObjectPool::getTheObjectPool().getObjects()) {
        auto* item = new QListWidgetItem(QString::fromUtf8(object->getLabel()), mList);
        item->setToolTip(QString::fromUtf8(object->getTypeId()->getName()));
        item->setData(Qt::UserRole, QVariant::fromValue<void*>(object));
        if (object == selected) mList->setCurrentItem(item);
    }
    updateButtons();
    // The shown object may be gone or renamed: tell the panel either way.
    emit selectionChanged(getSelectedObject());
}

HxObject* HxObjectList::getSelectedObject() const { return objectOf(mList->currentItem()); }

void HxObjectList::select(char const* label) {
    QList<QListWidgetItem*> found = mList->findItems(QString::fromUtf8(label), Qt::MatchExactly);
    if (found.isEmpty()) {  // made just now: the list follows the pool only once commands are done
        refresh();
        found = mList->findItems(QString::fromUtf8(label), Qt::MatchExactly);
    }
    if (!found.isEmpty()) mList->setCurrentItem(found.first());
}

void HxObjectList::selectionMoved() {
    updateButtons();
    emit selectionChanged(getSelectedObject());
}

void HxObjectList::updateButtons() {
    HxObject* object = getSelectedObject();
    mNewPathSet->setEnabled(isA(object, HxSurface::getClassTypeId()));
    mAttachEditor->setEnabled(isA(object, HxSurfacePathSet::getClassTypeId()));
    mRemove->setEnabled(object != nullptr);
}
