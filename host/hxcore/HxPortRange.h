#pragma once
// HxPortRange: the closed range of a numeric port (T is int or float) and the clamping of its
// values into it. The range never runs backwards: ends given in the wrong order are swapped
// by the program's set() and refused, with a message, from a script.

#include "HxInterpreter.h"
#include "HxPort.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <tuple>
#include <type_traits>

template <class T>
class HxPortRange {
  public:
    HxPortRange(T min, T max) : mMin(min), mMax(max) {}

    T getMin() const { return mMin; }
    T getMax() const { return mMax; }
    T clamp(T value) const { return std::clamp(value, mMin, mMax); }
    void set(T a, T b) { std::tie(mMin, mMax) = std::minmax(a, b); }

    // The shortest text that reads back as the same number, so that 0.1f shows as "0.1".
    static McString format(T value) {
        char text[32];
        const std::to_chars_result end = std::to_chars(text, text + sizeof(text), value);
        return McString(text, end.ptr);
    }

    // Handles `getMinMax` and `setMinMax MIN MAX` for `port`; returns true when the subcommand
    // was one of them, with its Tcl code in `code`. After a new range the port must pull its
    // values into it.
    bool parse(HxPort const& port, Tcl_Interp* interp, int argc, char** argv, int& code) {
        char const* cmd = argc > 0 ? argv[0] : "";
        if (!strcmp(cmd, "getMinMax")) {
            code = argc == 1 ? TCL_OK : port.wrongArgs(interp, "getMinMax");
            if (code == TCL_OK) Tcl_VaSetResult(interp, "%s %s", format(mMin).c_str(), format(mMax).c_str());
            return true;
        }
        if (strcmp(cmd, "setMinMax") != 0) return false;
        code = parseSet(port, interp, argc, argv) ? TCL_OK : TCL_ERROR;
        return true;
    }

  private:
    bool parseSet(HxPort const& port, Tcl_Interp* interp, int argc, char** argv) {
        T min{};
        T max{};
        if (argc != 3) {
            port.wrongArgs(interp, "setMinMax MIN MAX");
            return false;
        }
        if (!parseNumber(interp, argv[1], min) || !parseNumber(interp, argv[2], max)) return false;
        if (min > max) {
            Tcl_VaSetResult(interp, "port \"%s\": the minimum %s is greater than the maximum %s", port.getName(),
                            argv[1], argv[2]);
            return false;
        }
        set(min, max);
        return true;
    }

    static bool parseNumber(Tcl_Interp* interp, char const* text, T& value) {
        if constexpr (std::is_integral_v<T>)
            return HxPort::parseInt(interp, text, value);
        else
            return HxPort::parseFloat(interp, text, value);
    }

    T mMin;
    T mMax;
};
