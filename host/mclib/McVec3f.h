#pragma once
// McVec3f: three 32-bit floats; all arithmetic is component-wise in single precision.

#include <cmath>

struct McVec3f {
    float x = 0, y = 0, z = 0;
    McVec3f() = default;
    McVec3f(float x_, float y_, float z_) : x(x_), y(y_), z(z_) {}

    float& operator[](int i) { return i == 0 ? x : (i == 1 ? y : z); }
    float operator[](int i) const { return i == 0 ? x : (i == 1 ? y : z); }

    McVec3f operator+(McVec3f const& o) const { return {x + o.x, y + o.y, z + o.z}; }
    McVec3f operator-(McVec3f const& o) const { return {x - o.x, y - o.y, z - o.z}; }
    McVec3f operator-() const { return {-x, -y, -z}; }
    McVec3f operator*(float s) const { return {x * s, y * s, z * s}; }
    McVec3f operator/(float s) const { return {x / s, y / s, z / s}; }
    McVec3f& operator+=(McVec3f const& o) { return *this = *this + o; }
    McVec3f& operator-=(McVec3f const& o) { return *this = *this - o; }
    McVec3f& operator*=(float s) { return *this = *this * s; }
    McVec3f& operator/=(float s) { return *this = *this / s; }
    bool operator==(McVec3f const& o) const { return x == o.x && y == o.y && z == o.z; }
    bool operator!=(McVec3f const& o) const { return !(*this == o); }

    float dot(McVec3f const& o) const { return x * o.x + y * o.y + z * o.z; }
    McVec3f cross(McVec3f const& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    float length2() const { return dot(*this); }
    float length() const { return std::sqrt(length2()); }
    // Scales to unit length and returns the old length; a zero vector stays zero.
    float normalize() {
        const float len = length();
        if (len > 0) *this /= len;
        return len;
    }
    McVec3f normalized() const {
        McVec3f v = *this;
        v.normalize();
        return v;
    }
};

inline McVec3f operator*(float s, McVec3f const& v) { return v * s; }
