#include "HxObjectPool.h"

#include "HxEditor.h"
#include "HxInterpreter.h"
#include "HxObject.h"
#include "HxPortObserver.h"

#include <cstring>

namespace {
int objectCommand(ClientData data, Tcl_Interp* interp, int argc, char const** argv) {
    return static_cast<HxObject*>(data)->parse(interp, argc, const_cast<char**>(argv));
}
}  // namespace

HxObjectPool& HxObjectPool::getTheObjectPool() {
    static HxObjectPool pool;
    return pool;
}

// The interpreter is made first so that it outlives the pool, whose objects own commands.
HxObjectPool::HxObjectPool() { HxInterpreter::getTheInterpreter(); }

HxObjectPool::~HxObjectPool() { removeAll(); }

void HxObjectPool::addObject(HxObject* object) {
    if (!object || contains(object)) return;
    object->HxBase::setLabel(makeUniqueLabel(object->getLabel()[0] ? object->getLabel() : "Object").c_str());
    mObjects.append(object);
    object->ref();
    HxInterpreter::getTheInterpreter().addCommand(object->getLabel(), objectCommand, object);
    HxPortObserver::notifyPoolChanged();
}

void HxObjectPool::removeObject(HxObject* object) {
    const int64_t i = mObjects.findFirst(object);
    if (i < 0) return;
    mObjects.remove(i);
    // An editor stops editing before it may be destroyed: its stopEditing is virtual and can
    // no longer be reached from its destructor.
    if (object->isOfType(HxEditor::getClassTypeId())) static_cast<HxEditor*>(object)->detach();
    HxInterpreter::getTheInterpreter().removeCommand(object->getLabel());
    object->unref();
    HxPortObserver::notifyPoolChanged();
}

void HxObjectPool::removeAll() {
    // Last first, so that readers go before the data they read where they were made later.
    while (!mObjects.empty()) removeObject(mObjects.last());
}

HxObject* HxObjectPool::findObject(char const* label) const {
    for (HxObject* object : mObjects)
        if (!strcmp(object->getLabel(), label)) return object;
    return nullptr;
}

bool HxObjectPool::contains(HxObject const* object) const {
    return mObjects.findFirst(const_cast<HxObject*>(object)) >= 0;
}

McDArray<HxObject*> HxObjectPool::getObjectsOfType(McTypeInfo const* type) const {
    McDArray<HxObject*> result;
    for (HxObject* object : mObjects)
        if (!type || object->isOfType(type)) result.append(object);
    return result;
}

void HxObjectPool::renameObject(HxObject* object, char const* label) {
    McString unique = makeUniqueLabel(label && label[0] ? label : "Object", object);
    if (unique == object->getLabel()) return;
    HxInterpreter::getTheInterpreter().renameCommand(object->getLabel(), unique.c_str());
    object->HxBase::setLabel(unique.c_str());
    HxPortObserver::notifyPoolChanged();
}

McString HxObjectPool::makeUniqueLabel(char const* label, HxObject const* except) const {
    auto taken = [&](McString const& candidate) {
        HxObject* owner = findObject(candidate.c_str());
        if (owner) return owner != except;
        // An object must never shadow a Tcl command such as `set` or `load`.
        Tcl_CmdInfo info;
        return Tcl_GetCommandInfo(HxInterpreter::getTheInterpreter().getTclInterp(), candidate.c_str(), &info) != 0;
    };
    McString candidate = label;
    for (int n = 2; taken(candidate); ++n) candidate = McString::format("%s%d", label, n);
    return candidate;
}
