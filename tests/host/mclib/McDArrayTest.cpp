#include "McDArray.h"
#include "McHandle.h"
#include "McHandable.h"

#include <gtest/gtest.h>

#include <string>

namespace {

McDArray<int> iota(int n) {
    McDArray<int> a;
    for (int i = 0; i < n; ++i) a.append(i);
    return a;
}

// Counts live instances to catch leaks and double destruction in the array's storage.
struct Tracked {
    static int alive;
    int value;
    Tracked(int v = 0) : value(v) { ++alive; }
    Tracked(Tracked const& o) : value(o.value) { ++alive; }
    Tracked& operator=(Tracked const&) = default;
    ~Tracked() { --alive; }
};
int Tracked::alive = 0;

TEST(McDArray, AppendGrowsCapacityToMaxOfCountPlusOneAndOneAndAHalfCount) {
    McDArray<int> a;
    for (int64_t n = 0; n < 200; ++n) {
        const int64_t before = a.capacity();
        ASSERT_EQ(a.size(), n);
        a.append(static_cast<int>(n));
        if (before == n) {
            EXPECT_EQ(a.capacity(), std::max<int64_t>(n + 1, n + n / 2)) << "growing from count " << n;
        } else {
            EXPECT_EQ(a.capacity(), before) << "no growth while room is left";
        }
    }
    // From exactly 10 elements at capacity 10 the next append makes room for 15.
    McDArray<int> b(10);
    ASSERT_EQ(b.capacity(), 10);
    b.append(1);
    EXPECT_EQ(b.capacity(), 15);
}

TEST(McDArray, InsertRemoveAndReverseKeepOrder) {
    McDArray<int> a = iota(5);
    int extra[] = {10, 11};
    a.insert(2, 2, extra);
    EXPECT_EQ(a, (McDArray<int>{0, 1, 10, 11, 2, 3, 4}));
    a.insert(0, 99);
    a.insert(a.size(), 98);
    EXPECT_EQ(a, (McDArray<int>{99, 0, 1, 10, 11, 2, 3, 4, 98}));
    a.remove(1, 3);
    EXPECT_EQ(a, (McDArray<int>{99, 11, 2, 3, 4, 98}));
    a.remove(a.size() - 1);
    a.reverse();
    EXPECT_EQ(a, (McDArray<int>{4, 3, 2, 11, 99}));
}

TEST(McDArray, InsertingElementsOfItselfIsSafe) {
    McDArray<std::string> a{"a", "b", "c"};
    for (int i = 0; i < 20; ++i) a.append(a[0]);  // the source moves when the block grows
    EXPECT_EQ(a.size(), 23);
    EXPECT_EQ(a.last(), "a");
    a.insert(1, 3, a.dataPtr());
    EXPECT_EQ(a[1], "a");
    EXPECT_EQ(a[2], "b");
    EXPECT_EQ(a[3], "c");
    EXPECT_EQ(a[4], "b");
}

TEST(McDArray, ElementsAreConstructedAndDestroyedExactlyOnce) {
    Tracked::alive = 0;
    {
        McDArray<Tracked> a;
        for (int i = 0; i < 50; ++i) a.append(Tracked(i));
        a.remove(10, 5);
        a.insert(3, Tracked(7));
        a.resize(20);
        McDArray<Tracked> b = a;
        b.clear();
        EXPECT_EQ(Tracked::alive, 20);
    }
    EXPECT_EQ(Tracked::alive, 0);
}

TEST(McDArray, FindFirstSearchesFromStartAndPastTheEndFindsNothing) {
    McDArray<int> a{5, 6, 5, 7};
    EXPECT_EQ(a.findFirst(5), 0);
    EXPECT_EQ(a.findFirst(5, 1), 2);
    EXPECT_EQ(a.findFirst(5, 4), -1);
    EXPECT_EQ(a.findFirst(5, 100), -1);
    EXPECT_EQ(a.findFirst(9), -1);
}

}  // namespace
