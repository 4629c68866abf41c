#pragma once
// AtomicFile: writes a whole file so that readers see either the old or the new content:
// the text goes to a temporary file in the same folder, which is then renamed over the target.

#include "McString.h"

#include <string>

class AtomicFile {
  public:
    // False with the reason in `error`; an existing file is then left untouched.
    static bool write(char const* fileName, std::string const& content, McString& error);
};
