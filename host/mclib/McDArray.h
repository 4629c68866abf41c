#pragma once
// McDArray: a growable array with a signed 64-bit count and capacity, its elements in one
// contiguous heap block.
//
// Copies are cheap: they share the block until one of them writes (the model is Qt's
// implicit sharing). Every non-const accessor (operator[], last, dataPtr, begin, end) and
// every mutator first gives the writer a block of its own, so read through const access
// where nothing is written. A block copied for a write through an accessor has no spare
// room; one copied for a change of the count keeps the capacity. A pointer or reference into
// the elements, taken from a non-const array, must not be written through once a copy of the
// array has been made.
//
// Appending is the exception that keeps undo snapshots cheap: the elements past the
// longest sharer's count belong to nobody, so an array whose count reaches that far appends
// into the shared block without copying it; the sharers never look past their own counts.
// A block holds each of its elements once: elements appended this way are released with the
// block, or when the block's only remaining owner next changes its count.

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <memory>
#include <new>
#include <utility>

template <class T>
class McDArray {
  public:
    McDArray() = default;
    explicit McDArray(int64_t n) { resize(n); }
    McDArray(std::initializer_list<T> values) { append(static_cast<int64_t>(values.size()), values.begin()); }
    McDArray(McDArray const& other) { share(other); }
    McDArray(McDArray&& other) noexcept { swap(other); }
    ~McDArray() { releaseBlock(); }

    McDArray& operator=(McDArray const& other) {
        if (mData != other.mData) {
            McDArray old(std::move(*this));
            share(other);
        } else {
            mCount = other.mCount;  // a sharer of the same block with another count
        }
        return *this;
    }
    McDArray& operator=(McDArray&& other) noexcept {
        McDArray(std::move(other)).swap(*this);
        return *this;
    }

    // === Queries
    int64_t size() const { return mCount; }
    int64_t capacity() const { return mData ? header()->capacity : 0; }
    bool empty() const { return mCount == 0; }
    // True when another array shares this one's block.
    bool isShared() const { return mData && header()->sharers.load(std::memory_order_relaxed) > 1; }
    bool isSharedWith(McDArray const& other) const { return mData && mData == other.mData; }
    T& operator[](int64_t i) {
        assert(i >= 0 && i < mCount);
        detach();
        return mData[i];
    }
    T const& operator[](int64_t i) const {
        assert(i >= 0 && i < mCount);
        return mData[i];
    }
    T& last() { return (*this)[mCount - 1]; }
    T const& last() const { return (*this)[mCount - 1]; }
    T* dataPtr() {
        detach();
        return mData;
    }
    T const* dataPtr() const { return mData; }
    T* begin() { return dataPtr(); }
    T* end() { return dataPtr() + mCount; }
    T const* begin() const { return mData; }
    T const* end() const { return mData + mCount; }

    bool operator==(McDArray const& other) const {
        return mCount == other.mCount && std::equal(begin(), end(), other.begin());
    }
    bool operator!=(McDArray const& other) const { return !(*this == other); }

    // First position at or after `start` holding a value equal to `value`, -1 if none.
    int64_t findFirst(T const& value, int64_t start = 0) const {
        for (int64_t i = std::max<int64_t>(start, 0); i < mCount; ++i)
            if (mData[i] == value) return i;
        return -1;
    }

    // === Mutators
    // Appending to a full array grows the capacity to max(count + 1, 1.5 * count).
    void append(T const& value) {
        if (mCount == capacity()) {
            T copy(value);  // value may live in the block about to move
            reallocate(grownCapacity(mCount + 1));
            constructAtEnd(std::move(copy));
        } else {
            prepareTail(1);
            constructAtEnd(value);
        }
    }
    void append(int64_t n, T const* values) { insert(mCount, n, values); }
    void appendArray(McDArray const& other) { insert(mCount, other.mCount, other.mData); }

    void insert(int64_t pos, T const& value) { insert(pos, 1, &value); }
    // Inserts n elements before position pos, keeping the order of the others.
    void insert(int64_t pos, int64_t n, T const* values) {
        assert(pos >= 0 && pos <= mCount && n >= 0);
        if (n <= 0) return;
        if (pointsIntoThis(values)) {  // the shift below would overwrite the source: copy it first
            McDArray copies;
            copies.append(n, values);
            insert(pos, n, copies.mData);
            return;
        }
        if (mCount + n > capacity())
            reallocate(grownCapacity(mCount + n));
        else
            prepareTail(pos == mCount ? n : 0);
        std::uninitialized_default_construct_n(mData + mCount, n);
        for (int64_t i = mCount - 1; i >= pos; --i) mData[i + n] = std::move(mData[i]);
        for (int64_t i = 0; i < n; ++i) mData[pos + i] = values[i];
        setCount(mCount + n);
    }

    // Removes n elements starting at pos, keeping the order of the rest.
    void remove(int64_t pos, int64_t n = 1) {
        assert(pos >= 0 && n >= 0 && pos + n <= mCount);
        if (n <= 0) return;
        makeUnique(capacity());
        std::move(mData + pos + n, mData + mCount, mData + pos);
        std::destroy_n(mData + mCount - n, n);
        setCount(mCount - n);
    }

    // Changes the count; new elements are value-initialised. Capacity grows to exactly n.
    void resize(int64_t n) {
        assert(n >= 0);
        if (n > capacity())
            reallocate(n);
        else if (n > mCount)
            prepareTail(n - mCount);
        else
            makeUnique(capacity());
        if (n > mCount)
            std::uninitialized_value_construct_n(mData + mCount, n - mCount);
        else
            std::destroy_n(mData + n, mCount - n);
        setCount(n);
    }
    void remax(int64_t capacity) {
        if (capacity > this->capacity()) reallocate(capacity);
    }
    // Empties the array and keeps its capacity.
    void clear() {
        if (isShared()) {
            McDArray empty;
            empty.reallocate(capacity());
            swap(empty);
            return;
        }
        if (mData) std::destroy_n(mData, claimedCount());
        setCount(0);
    }
    void fill(T const& value) { std::fill(begin(), end(), value); }
    void reverse() { std::reverse(begin(), end()); }
    void swap(McDArray& other) noexcept {
        std::swap(mCount, other.mCount);
        std::swap(mData, other.mData);
    }

  private:
    // Lies in front of the elements. Elements [0, claimed) are constructed; every sharer's
    // count is at most `claimed`, and an unshared block's owner keeps it equal to its count.
    // The capacity lives here too, which keeps an array (a path of a path set, say) at two
    // words: a snapshot's list of them costs that much per entry.
    struct Header {
        explicit Header(int64_t capacity_) : capacity(capacity_) {}
        std::atomic<int64_t> sharers{1};
        std::atomic<int64_t> claimed{0};
        const int64_t capacity;
    };
    static constexpr size_t kAlignment = std::max(alignof(Header), alignof(T));
    static constexpr size_t kDataOffset = (sizeof(Header) + kAlignment - 1) / kAlignment * kAlignment;

    Header* header() const {
        return std::launder(reinterpret_cast<Header*>(reinterpret_cast<char*>(mData) - kDataOffset));
    }
    static T* allocateBlock(int64_t capacity) {
        const size_t bytes = kDataOffset + sizeof(T) * static_cast<size_t>(capacity);
        void* raw = kAlignment > __STDCPP_DEFAULT_NEW_ALIGNMENT__ ? ::operator new(bytes, std::align_val_t(kAlignment))
                                                                  : ::operator new(bytes);
        new (raw) Header(capacity);
        return reinterpret_cast<T*>(static_cast<char*>(raw) + kDataOffset);
    }
    void releaseBlock() {
        if (!mData) return;
        Header* h = header();
        if (h->sharers.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            std::destroy_n(mData, claimedCount());
            h->~Header();
            if constexpr (kAlignment > __STDCPP_DEFAULT_NEW_ALIGNMENT__)
                ::operator delete(h, std::align_val_t(kAlignment));
            else
                ::operator delete(h);
        }
        mData = nullptr;
    }
    void share(McDArray const& other) {
        mCount = other.mCount;
        mData = other.mData;
        if (mData) header()->sharers.fetch_add(1, std::memory_order_relaxed);
    }
    int64_t claimedCount() const { return header()->claimed.load(std::memory_order_relaxed); }
    void setCount(int64_t count) {
        mCount = count;
        if (mData) header()->claimed.store(count, std::memory_order_relaxed);
    }
    template <class V>
    void constructAtEnd(V&& value) {
        new (mData + mCount) T(std::forward<V>(value));
        setCount(mCount + 1);
    }
    // Before a write of an existing element: a block of this array's own, just large enough.
    // Undo snapshots keep every block that the live set detached from, so spare room in
    // those would be paid for once per recorded operation; an append after the detach grows
    // the block by the usual rule.
    void detach() {
        if (isShared()) reallocate(mCount);
    }
    // Before a change of the count: an unshared block of at least `capacity`, without the
    // elements that a former sharer appended past this array's count.
    void makeUnique(int64_t capacity) {
        if (isShared() || capacity > this->capacity()) {
            reallocate(std::max(capacity, this->capacity()));
        } else if (mData) {
            std::destroy(mData + mCount, mData + claimedCount());
            setCount(mCount);
        }
    }
    // Before constructing n elements at the end, room permitting: claims them in a shared
    // block when nobody else has, and copies the block otherwise.
    void prepareTail(int64_t n) {
        if (!isShared()) {
            makeUnique(capacity());
            return;
        }
        if (n > 0) {
            int64_t expected = mCount;
            if (header()->claimed.compare_exchange_strong(expected, mCount + n, std::memory_order_relaxed)) {
                return;  // the tail is this array's own now
            }
        }
        reallocate(capacity());
    }

    bool pointsIntoThis(T const* p) const {
        return std::less_equal<T const*>()(mData, p) && std::less<T const*>()(p, mData + mCount);
    }
    int64_t grownCapacity(int64_t needed) const { return std::max(needed, mCount + mCount / 2); }
    // Moves (unshared) or copies (shared) the elements into a new block of `capacity`.
    void reallocate(int64_t capacity) {
        T* block = allocateBlock(capacity);
        if (isShared()) {
            std::uninitialized_copy_n(mData, mCount, block);
        } else if (mData) {
            std::uninitialized_move_n(mData, mCount, block);
        }
        releaseBlock();
        mData = block;
        setCount(mCount);
    }

    int64_t mCount = 0;
    T* mData = nullptr;
};
