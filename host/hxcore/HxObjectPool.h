#pragma once
// HxObjectPool: every data object and module the user can see. The pool holds one reference
// on each of its objects: removing one drops it, which deletes it unless a handle elsewhere
// still holds it. Each object's label is unique in the pool and is the name of its
// Tcl command.

#include "McDArray.h"
#include "McString.h"

class HxObject;
class McTypeInfo;

class HxObjectPool {
  public:
    static HxObjectPool& getTheObjectPool();
    ~HxObjectPool();

    // Takes ownership; makes the label unique and creates the object's Tcl command.
    void addObject(HxObject* object);
    // Removes the object and its command, and drops the pool's reference.
    void removeObject(HxObject* object);
    void removeAll();

    HxObject* findObject(char const* label) const;
    bool contains(HxObject const* object) const;
    McDArray<HxObject*> const& getObjects() const { return mObjects; }
    // Objects of the given class or a subclass, in pool order.
    McDArray<HxObject*> getObjectsOfType(McTypeInfo const* type) const;

    // Gives a pooled object a new label (made unique) and renames its command.
    void renameObject(HxObject* object, char const* label);
    // `label` if no object other than `except` has it, else label2, label3, ...
    McString makeUniqueLabel(char const* label, HxObject const* except = nullptr) const;

  private:
    HxObjectPool();
    McDArray<HxObject*> mObjects;
};
