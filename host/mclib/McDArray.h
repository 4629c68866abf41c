#pragma once
// McDArray: a growable array with a signed 64-bit count and capacity.
// Owns its heap block of elements; copies copy the elements.

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <utility>

template <class T>
class McDArray {
  public:
    McDArray() = default;
    explicit McDArray(int64_t n) { resize(n); }
    McDArray(std::initializer_list<T> values) { append(static_cast<int64_t>(values.size()), values.begin()); }
    McDArray(McDArray const& other) { append(other.mCount, other.mData); }
    McDArray(McDArray&& other) noexcept { swap(other); }
    ~McDArray() {
        clear();
        ::operator delete(mData);
    }

    McDArray& operator=(McDArray const& other) {
        if (this != &other) {
            clear();
            append(other.mCount, other.mData);
        }
        return *this;
    }
    McDArray& operator=(McDArray&& other) noexcept {
        McDArray(std::move(other)).swap(*this);
        return *this;
    }

    // === Queries
    int64_t size() const { return mCount; }
    int64_t capacity() const { return mCapacity; }
    bool empty() const { return mCount == 0; }
    T& operator[](int64_t i) {
        assert(i >= 0 && i < mCount);
        return mData[i];
    }
    T const& operator[](int64_t i) const {
        assert(i >= 0 && i < mCount);
        return mData[i];
    }
    T& last() { return (*this)[mCount - 1]; }
    T const& last() const { return (*this)[mCount - 1]; }
    T* dataPtr() { return mData; }
    T const* dataPtr() const { return mData; }
    T* begin() { return mData; }
    T* end() { return mData + mCount; }
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
        if (mCount == mCapacity) {
            T copy(value);  // value may live in the block about to move
            reallocate(grownCapacity(mCount + 1));
            new (mData + mCount) T(std::move(copy));
        } else {
            new (mData + mCount) T(value);
        }
        ++mCount;
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
        if (mCount + n > mCapacity) reallocate(grownCapacity(mCount + n));
        std::uninitialized_default_construct_n(mData + mCount, n);
        for (int64_t i = mCount - 1; i >= pos; --i) mData[i + n] = std::move(mData[i]);
        for (int64_t i = 0; i < n; ++i) mData[pos + i] = values[i];
        mCount += n;
    }

    // Removes n elements starting at pos, keeping the order of the rest.
    void remove(int64_t pos, int64_t n = 1) {
        assert(pos >= 0 && n >= 0 && pos + n <= mCount);
        if (n <= 0) return;
        std::move(mData + pos + n, mData + mCount, mData + pos);
        std::destroy_n(mData + mCount - n, n);
        mCount -= n;
    }

    // Changes the count; new elements are value-initialised. Capacity grows to exactly n.
    void resize(int64_t n) {
        assert(n >= 0);
        if (n > mCapacity) reallocate(n);
        if (n > mCount)
            std::uninitialized_value_construct_n(mData + mCount, n - mCount);
        else
            std::destroy_n(mData + n, mCount - n);
        mCount = n;
    }
    void remax(int64_t capacity) {
        if (capacity > mCapacity) reallocate(capacity);
    }
    void clear() {
        std::destroy_n(mData, mCount);
        mCount = 0;
    }
    void fill(T const& value) { std::fill(begin(), end(), value); }
    void reverse() { std::reverse(begin(), end()); }
    void swap(McDArray& other) noexcept {
        std::swap(mCount, other.mCount);
        std::swap(mCapacity, other.mCapacity);
        std::swap(mData, other.mData);
    }

  private:
    bool pointsIntoThis(T const* p) const {
        return std::less_equal<T const*>()(mData, p) && std::less<T const*>()(p, mData + mCount);
    }
    int64_t grownCapacity(int64_t needed) const {
        return std::max(needed, mCount + mCount / 2);
    }
    void reallocate(int64_t capacity) {
        T* block = static_cast<T*>(::operator new(sizeof(T) * static_cast<size_t>(capacity)));
        std::uninitialized_move_n(mData, mCount, block);
        std::destroy_n(mData, mCount);
        ::operator delete(mData);
        mData = block;
        mCapacity = capacity;
    }

    int64_t mCount = 0;
    int64_t mCapacity = 0;
    T* mData = nullptr;
};
