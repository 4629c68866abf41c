#include "McHandable.h"
#include "McHandle.h"

#include <gtest/gtest.h>

namespace {

struct Counted : McHandable {
    static int destroyed;
    ~Counted() override { ++destroyed; }
};
int Counted::destroyed = 0;

TEST(McHandle, NewObjectStartsAtZeroAndFirstHandleTakesItToOne) {
    Counted::destroyed = 0;
    auto* object = new Counted;
    EXPECT_EQ(object->refCount(), 0);
    {
        McHandle<Counted> h(object);
        EXPECT_EQ(object->refCount(), 1);
        McHandle<Counted> copy = h;
        EXPECT_EQ(object->refCount(), 2);
    }
    EXPECT_EQ(Counted::destroyed, 1) << "destroyed when the count fell below 1";
}

TEST(McHandle, NullHandlesAndReassignment) {
    Counted::destroyed = 0;
    McHandle<Counted> h;
    EXPECT_FALSE(h);
    EXPECT_EQ(h.ptr(), nullptr);
    h = new Counted;
    Counted* first = h.ptr();
    h = h.ptr();  // same object: no release in between
    EXPECT_EQ(first->refCount(), 1);
    h = new Counted;
    EXPECT_EQ(Counted::destroyed, 1);
    h = nullptr;
    EXPECT_EQ(Counted::destroyed, 2);
}

TEST(McHandle, UnrefNoDeleteKeepsTheObject) {
    Counted::destroyed = 0;
    Counted object;
    object.ref();
    object.unrefNoDelete();
    EXPECT_EQ(object.refCount(), 0);
    EXPECT_EQ(Counted::destroyed, 0);
}

}  // namespace
