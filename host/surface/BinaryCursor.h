#pragma once
// BinaryCursor: reads numbers of a given byte order from bytes held in memory, and says
// when the bytes run out instead of reading past them.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

class BinaryCursor {
  public:
    BinaryCursor(char const* begin, char const* end, bool bigEndian) : mPos(begin), mEnd(end), mBigEndian(bigEndian) {}

    size_t remainingBytes() const { return size_t(mEnd - mPos); }

    // Any integer or floating-point type; false, with `value` untouched, past the end.
    template <class T>
    bool read(T& value) {
        if (remainingBytes() < sizeof(T)) return false;
        unsigned char bytes[sizeof(T)];
        memcpy(bytes, mPos, sizeof(T));
        if (mBigEndian != hostIsBigEndian())
            for (size_t i = 0; i < sizeof(T) / 2; ++i) std::swap(bytes[i], bytes[sizeof(T) - 1 - i]);
        memcpy(&value, bytes, sizeof(T));
        mPos += sizeof(T);
        return true;
    }

    bool skip(size_t bytes) {
        if (remainingBytes() < bytes) return false;
        mPos += bytes;
        return true;
    }

  private:
    static bool hostIsBigEndian() {
        const uint16_t one = 1;
        unsigned char first;
        memcpy(&first, &one, 1);
        return first == 0;
    }

    char const* mPos;
    char const* mEnd;
    bool mBigEndian;
};
