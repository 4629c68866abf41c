#pragma once
// McString: the host's text type, a std::string with printf-style formatting.

#include <cstdarg>
#include <string>

class McString : public std::string {
  public:
    using std::string::string;
    McString() = default;
    McString(std::string const& s) : std::string(s) {}
    McString(std::string&& s) : std::string(std::move(s)) {}

    // Replaces the text with the formatted one and returns *this.
    McString& printf(char const* format, ...) __attribute__((format(printf, 2, 3)));
    McString& vprintf(char const* format, va_list args);

    static McString format(char const* format, ...) __attribute__((format(printf, 1, 2)));

    char const* getString() const { return c_str(); }
};
