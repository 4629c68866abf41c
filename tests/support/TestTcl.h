#pragma once
// Scripts run in the host's interpreter, as a user's script would run them. A script that ends
// with another code than expected fails the calling test, naming the script and its result.

#include <string>

// Returns the script's result.
std::string evalOk(std::string const& script);
// Returns the script's error message.
std::string evalError(std::string const& script);
