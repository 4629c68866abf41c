#include "McString.h"

#include <cstdio>

McString& McString::vprintf(char const* format, va_list args) {
    va_list copy;
    va_copy(copy, args);
    const int n = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    if (n < 0) {
        clear();
        return *this;
    }
    resize(static_cast<size_t>(n));
    std::vsnprintf(data(), static_cast<size_t>(n) + 1, format, args);
    return *this;
}

McString& McString::printf(char const* format, ...) {
    va_list args;
    va_start(args, format);
    vprintf(format, args);
    va_end(args);
    return *this;
}

McString McString::format(char const* format, ...) {
    McString s;
    va_list args;
    va_start(args, format);
    s.vprintf(format, args);
    va_end(args);
    return s;
}
