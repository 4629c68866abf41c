#pragma once
// McTypeInfo: one record of the run-time type registry: a class name, its creation function
// (null for classes that cannot be made by name) and its parent's record. Records register
// themselves under their name while they live; a class's record is the function-local static
// of its getClassTypeId(), so it is built on first use and gone when its library unloads.

class McTypedObject;

class McTypeInfo {
  public:
    using CreateFunction = McTypedObject* (*)();

    McTypeInfo(char const* name, CreateFunction create, McTypeInfo const* parent);
    ~McTypeInfo();
    McTypeInfo(McTypeInfo const&) = delete;
    McTypeInfo& operator=(McTypeInfo const&) = delete;

    char const* getName() const { return mName; }
    McTypeInfo const* getParent() const { return mParent; }
    CreateFunction getCreateFunction() const { return mCreate; }
    bool canCreate() const { return mCreate != nullptr; }
    // A new instance, or null when the class has no creation function.
    McTypedObject* createInstance() const { return mCreate ? mCreate() : nullptr; }

    // True if this is `type` or derives from it.
    bool isOfType(McTypeInfo const* type) const;

    // The record registered under `name`, or null.
    static McTypeInfo const* fromName(char const* name);
    // Number of records registered now.
    static int numTypes();

  private:
    char const* mName;
    CreateFunction mCreate;
    McTypeInfo const* mParent;
};
