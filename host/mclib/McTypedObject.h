#pragma once
// McTypedObject: the root of every registered class. Each class follows one pattern, written
// with the two macros below:
//   class Foo : public Bar { MC_TYPED_HEADER(Foo); ... };          // in the header
//   MC_TYPED_IMPL(Foo, Bar)  or  MC_TYPED_IMPL_CREATABLE(Foo, Bar)  // in the source
// Building a class's record builds its parent's first, so parents are always registered.

#include "McTypeInfo.h"

class McTypedObject {
  public:
    virtual McTypeInfo const* getTypeId() const;
    virtual ~McTypedObject() = default;

    static McTypeInfo const* getClassTypeId();
    static void initClass() { getClassTypeId(); }

    bool isOfType(McTypeInfo const* type) const { return getTypeId()->isOfType(type); }
};

#define MC_TYPED_HEADER(Class)                                   \
  public:                                                        \
    static McTypeInfo const* getClassTypeId();                   \
    static void initClass() { getClassTypeId(); }                \
    McTypeInfo const* getTypeId() const override { return getClassTypeId(); } \
                                                                 \
  private:

#define MC_TYPED_IMPL_WITH(Class, Parent, create)                \
    McTypeInfo const* Class::getClassTypeId() {                  \
        static McTypeInfo const type(#Class, create, Parent::getClassTypeId()); \
        return &type;                                            \
    }

#define MC_TYPED_IMPL(Class, Parent) MC_TYPED_IMPL_WITH(Class, Parent, nullptr)

// For classes that can be made by name: also defines the static createInstance().
#define MC_TYPED_IMPL_CREATABLE(Class, Parent)                   \
    McTypedObject* Class::createInstance() { return new Class; } \
    MC_TYPED_IMPL_WITH(Class, Parent, &Class::createInstance)

// Declares createInstance() in the header of a creatable class.
#define MC_TYPED_CREATABLE                                       \
  public:                                                        \
    static McTypedObject* createInstance();                      \
                                                                 \
  private:
