#include "TestTcl.h"

#include "HxInterpreter.h"

#include <gtest/gtest.h>

namespace {
std::string evalExpecting(std::string const& script, int code) {
    McString result;
    EXPECT_EQ(HxInterpreter::getTheInterpreter().evalScript(script.c_str(), result), code) << script << ": " << result;
    return result;
}
}  // namespace

std::string evalOk(std::string const& script) { return evalExpecting(script, TCL_OK); }

std::string evalError(std::string const& script) { return evalExpecting(script, TCL_ERROR); }
