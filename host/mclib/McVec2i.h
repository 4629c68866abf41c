#pragma once
// McVec2i: a pair of ints, used for screen positions.

struct McVec2i {
    int x = 0, y = 0;
    McVec2i() = default;
    McVec2i(int x_, int y_) : x(x_), y(y_) {}
    int& operator[](int i) { return i == 0 ? x : y; }
    int operator[](int i) const { return i == 0 ? x : y; }
    bool operator==(McVec2i const& o) const { return x == o.x && y == o.y; }
    bool operator!=(McVec2i const& o) const { return !(*this == o); }
};
