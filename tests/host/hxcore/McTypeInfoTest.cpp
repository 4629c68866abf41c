#include "McTypedObject.h"

#include <gtest/gtest.h>

namespace {

// A small hierarchy registered only when first used, to see the order of registration.
class TestBase : public McTypedObject {
    MC_TYPED_HEADER(TestBase)
};
class TestLeaf : public TestBase {
    MC_TYPED_HEADER(TestLeaf)
    MC_TYPED_CREATABLE
};
MC_TYPED_IMPL(TestBase, McTypedObject)
MC_TYPED_IMPL_CREATABLE(TestLeaf, TestBase)

TEST(McTypeInfo, RegisteringAClassRegistersItsParentFirst) {
    ASSERT_EQ(McTypeInfo::fromName("TestLeaf"), nullptr);
    ASSERT_EQ(McTypeInfo::fromName("TestBase"), nullptr);
    TestLeaf::initClass();
    McTypeInfo const* leaf = McTypeInfo::fromName("TestLeaf");
    McTypeInfo const* base = McTypeInfo::fromName("TestBase");
    ASSERT_NE(leaf, nullptr);
    ASSERT_NE(base, nullptr);
    EXPECT_EQ(leaf->getParent(), base);
    EXPECT_EQ(base->getParent(), McTypedObject::getClassTypeId());
    EXPECT_EQ(leaf, TestLeaf::getClassTypeId()) << "one record per class";
}

TEST(McTypeInfo, OnlyClassesWithACreationFunctionCanBeMadeByName) {
    TestLeaf::initClass();
    EXPECT_FALSE(TestBase::getClassTypeId()->canCreate());
    EXPECT_EQ(TestBase::getClassTypeId()->createInstance(), nullptr);
    McTypedObject* made = McTypeInfo::fromName("TestLeaf")->createInstance();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->getTypeId(), TestLeaf::getClassTypeId()) << "getTypeId reports the dynamic class";
    EXPECT_TRUE(made->isOfType(TestBase::getClassTypeId()));
    delete made;
    EXPECT_EQ(McTypeInfo::fromName("NoSuchClass"), nullptr);
    EXPECT_EQ(McTypeInfo::fromName(nullptr), nullptr);
}

}  // namespace
