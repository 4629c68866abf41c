#pragma once
// McBitfield: a resizable set of bits, one bit per index.

#include <cstdint>
#include <vector>

class McBitfield {
  public:
    McBitfield() = default;
    explicit McBitfield(int64_t n, bool init = false) { resize(n, init); }

    int64_t size() const { return mSize; }
    void resize(int64_t n, bool init = false);
    void setAll();
    void unsetAll();
    bool operator[](int64_t i) const { return (mWords[i >> 6] >> (i & 63)) & 1u; }
    void set(int64_t i) { mWords[i >> 6] |= uint64_t(1) << (i & 63); }
    void unset(int64_t i) { mWords[i >> 6] &= ~(uint64_t(1) << (i & 63)); }
    void set(int64_t i, bool value) { value ? set(i) : unset(i); }
    int64_t nSetBits() const;

  private:
    void clearTail();

    std::vector<uint64_t> mWords;
    int64_t mSize = 0;
};
