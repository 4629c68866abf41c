#include "McDArray.h"
#include "McHandable.h"
#include "McHandle.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

McDArray<int> iota(int n, int64_t capacity) {
    McDArray<int> a;
    a.remax(capacity);
    for (int i = 0; i < n; ++i) a.append(i);
    return a;
}

TEST(McDArraySharing, CopiesShareUntilOneWritesAndConstAccessNeverDetaches) {
    McDArray<int> a = iota(5, 5);
    McDArray<int> b = a;
    EXPECT_TRUE(b.isSharedWith(a));
    int sum = 0;
    for (int v : std::as_const(b)) sum += v;
    EXPECT_EQ(sum + std::as_const(b)[0] + *std::as_const(b).dataPtr(), 10);
    EXPECT_TRUE(b.isSharedWith(a));

    b[0] = 42;
    EXPECT_FALSE(b.isSharedWith(a));
    EXPECT_FALSE(a.isShared());
    EXPECT_EQ(a, (McDArray<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(b, (McDArray<int>{42, 1, 2, 3, 4}));

    McDArray<int> c = a;
    *a.begin() = 7;  // the original writing detaches as well
    EXPECT_EQ(c[0], 0);
    c = a;
    c.dataPtr()[1] = 9;
    EXPECT_EQ(a[1], 1);
    c = c;
    EXPECT_EQ(c[1], 9) << "self-assignment keeps the contents";
}

TEST(McDArraySharing, AppendingToTheTailNoSharerUsesKeepsTheBlock) {
    McDArray<int> live = iota(4, 100);
    std::vector<McDArray<int>> snapshots;
    for (int i = 0; i < 10; ++i) {
        snapshots.push_back(live);
        live.append(100 + i);
        ASSERT_TRUE(live.isSharedWith(snapshots.front())) << "append " << i << " copied the block";
    }
    live.append(2, std::as_const(live).dataPtr());  // from the shared block itself
    int values[] = {7, 8};
    live.insert(live.size(), 2, values);
    EXPECT_TRUE(live.isSharedWith(snapshots.front()));
    for (int i = 0; i < 10; ++i) {
        ASSERT_EQ(snapshots[size_t(i)].size(), 4 + i);
        EXPECT_EQ(snapshots[size_t(i)].last(), i == 0 ? 3 : 100 + i - 1);
    }
    EXPECT_EQ(live.size(), 18);
    EXPECT_EQ(std::as_const(live)[14], 0);
    EXPECT_EQ(std::as_const(live)[15], 1);
    EXPECT_EQ(std::as_const(live).last(), 8);
}

TEST(McDArraySharing, AppendingWhereASharerAlreadyAppendedCopies) {
    McDArray<int> a = iota(3, 10);
    McDArray<int> b = a;
    a.append(5);  // claims the tail
    b.append(6);
    EXPECT_FALSE(b.isSharedWith(a));
    EXPECT_EQ(a, (McDArray<int>{0, 1, 2, 5}));
    EXPECT_EQ(b, (McDArray<int>{0, 1, 2, 6}));
    EXPECT_EQ(b.capacity(), 10) << "a copy for room that was there keeps the capacity";
}

TEST(McDArraySharing, AppendingToAFullSharedBlockGrowsByTheUsualRule) {
    McDArray<int> a = iota(10, 10);
    McDArray<int> b = a;
    a.append(10);
    EXPECT_EQ(a.capacity(), 15);
    EXPECT_FALSE(a.isSharedWith(b));
    EXPECT_EQ(b.size(), 10);
    EXPECT_EQ(a.size(), 11);
}

// Every edit other than an append at the free tail copies a shared block first: the sharer
// keeps its elements and the editor gets the edited ones. Edits of the count keep the
// capacity; writes through an accessor copy without spare room (capacity 5 here).
TEST(McDArraySharing, EditsOfASharedBlockLeaveTheSharerUnchanged) {
    struct Edit {
        char const* name;
        std::function<void(McDArray<int>&)> apply;
        McDArray<int> expected;
        int64_t capacity = 8;
        bool appendsAtTail = false;
    };
    const std::vector<Edit> edits = {
        {"resize up", [](McDArray<int>& a) { a.resize(6); }, {0, 1, 2, 3, 4, 0}, 8, true},
        {"resize down", [](McDArray<int>& a) { a.resize(2); }, {0, 1}},
        {"remove", [](McDArray<int>& a) { a.remove(1, 2); }, {0, 3, 4}},
        {"remove last", [](McDArray<int>& a) { a.remove(4); }, {0, 1, 2, 3}},
        {"insert", [](McDArray<int>& a) { a.insert(1, 9); }, {0, 9, 1, 2, 3, 4}},
        {"reverse", [](McDArray<int>& a) { a.reverse(); }, {4, 3, 2, 1, 0}, 5},
        {"fill", [](McDArray<int>& a) { a.fill(7); }, {7, 7, 7, 7, 7}, 5},
        {"clear", [](McDArray<int>& a) { a.clear(); }, {}},
        {"last", [](McDArray<int>& a) { a.last() = 8; }, {0, 1, 2, 3, 8}, 5},
    };
    for (Edit const& edit : edits) {
        for (bool tailClaimed : {false, true}) {
            McDArray<int> edited = iota(5, 8);
            McDArray<int> sharer = edited;
            if (tailClaimed) {  // an append past both: elements neither of them shows
                McDArray<int> appender = edited;
                appender.append(99);
            }
            edit.apply(edited);
            EXPECT_EQ(edited, edit.expected) << edit.name;
            EXPECT_EQ(sharer, (McDArray<int>{0, 1, 2, 3, 4})) << edit.name;
            EXPECT_EQ(edited.capacity(), edit.capacity) << edit.name;
            EXPECT_EQ(edited.isSharedWith(sharer), edit.appendsAtTail && !tailClaimed) << edit.name;
            edited.append(5);  // the editor's block is its own: no stale tail
            EXPECT_EQ(edited.last(), 5) << edit.name;
        }
    }
}

struct Counted : McHandable {
    static int destroyed;
    ~Counted() override { ++destroyed; }
};
int Counted::destroyed = 0;

using Handles = McDArray<McHandle<Counted>>;

std::vector<int> refCounts(std::vector<Counted*> const& objects) {
    std::vector<int> counts;
    for (Counted* o : objects) counts.push_back(o->refCount());
    return counts;
}

// A block holds each element once, however many arrays share it; a copy of the elements adds
// one reference each, and the last array to let go of a block releases its elements.
TEST(McDArraySharing, HandleCountsStayExactThroughSharedBlocks) {
    Counted::destroyed = 0;
    std::vector<Counted*> objects = {new Counted, new Counted, new Counted};
    {
        Handles a;
        a.remax(8);  // room for the append below
        for (Counted* o : objects) a.append(o);
        {
            Handles b = a, c = a;
            EXPECT_EQ(refCounts(objects), (std::vector<int>{1, 1, 1}));
            b[0] = b[1];  // detaches b: three more references, then one moved from 0 to 1
            EXPECT_EQ(refCounts(objects), (std::vector<int>{1, 3, 2}));
            c.remove(0);
            EXPECT_EQ(refCounts(objects), (std::vector<int>{1, 4, 3}));
        }
        EXPECT_EQ(refCounts(objects), (std::vector<int>{1, 1, 1}));

        // The appended element lives in the shared block: one reference, released with the
        // block once its appender and the other sharers are gone.
        auto* appended = new Counted;
        {
            Handles appender = a;
            appender.append(appended);
            EXPECT_EQ(appended->refCount(), 1);
        }
        EXPECT_EQ(appended->refCount(), 1) << "still held by the block that a shares";
        EXPECT_EQ(Counted::destroyed, 0);
        a.append(objects[0]);  // the sole owner changing its count drops the stale tail
        EXPECT_EQ(Counted::destroyed, 1);
        EXPECT_EQ(objects[0]->refCount(), 2);
    }
    EXPECT_EQ(Counted::destroyed, 4);
}

TEST(McDArraySharing, LastSharerReleasesTheTailAppendedByAnother) {
    Counted::destroyed = 0;
    {
        Handles first;
        first.remax(4);
        first.append(new Counted);
        Handles second = first;
        second.append(new Counted);
        second = Handles();  // the appender goes first
        EXPECT_EQ(Counted::destroyed, 0);
    }
    EXPECT_EQ(Counted::destroyed, 2);
}

TEST(McDArraySharing, NestedArraysShareEachLevel) {
    McDArray<McDArray<std::string>> lists(2);
    lists[0].append("a");
    lists[1].remax(4);
    lists[1].append("c");
    McDArray<McDArray<std::string>> snapshot = lists;
    lists[1].append("d");  // copies the outer block; the inner one appends at its free tail
    EXPECT_FALSE(lists.isSharedWith(snapshot));
    EXPECT_TRUE(lists[0].isSharedWith(snapshot[0]));
    EXPECT_TRUE(std::as_const(lists)[1].isSharedWith(snapshot[1]));
    EXPECT_EQ(snapshot[1], (McDArray<std::string>{"c"}));
    EXPECT_EQ(snapshot[0], (McDArray<std::string>{"a"}));
    EXPECT_EQ(std::as_const(lists)[1], (McDArray<std::string>{"c", "d"}));
}

}  // namespace
