#include "McBitfield.h"

#include <algorithm>

void McBitfield::resize(int64_t n, bool init) {
    const int64_t old = mSize;
    mWords.resize(static_cast<size_t>((n + 63) / 64), 0);
    mSize = n;
    clearTail();
    for (int64_t i = old; i < n; ++i) set(i, init);
}

void McBitfield::setAll() {
    std::fill(mWords.begin(), mWords.end(), ~uint64_t(0));
    clearTail();
}

void McBitfield::unsetAll() { std::fill(mWords.begin(), mWords.end(), 0); }

int64_t McBitfield::nSetBits() const {
    int64_t n = 0;
    for (uint64_t w : mWords) n += __builtin_popcountll(w);
    return n;
}

// Bits past the size stay zero so that counting and growing never see stale bits.
void McBitfield::clearTail() {
    if (mSize % 64 != 0) mWords.back() &= (uint64_t(1) << (mSize % 64)) - 1;
}
