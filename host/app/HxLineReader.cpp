#include "HxLineReader.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <unistd.h>

#include <editline/readline.h>

namespace {

constexpr int kHistoryLines = 1000;

std::string historyFile() {
    char const* home = getenv("HOME");
    return home && *home ? std::string(home) + "/.surfpath_history" : std::string();
}

}  // namespace

HxLineReader::HxLineReader() : mTerminal(isatty(fileno(stdin))) {
    if (!mTerminal) return;
    rl_readline_name = "surfpath";  // the program's name for settings in ~/.editrc
    using_history();
    stifle_history(kHistoryLines);
    mHistoryFile = historyFile();
    if (!mHistoryFile.empty()) read_history(mHistoryFile.c_str());  // none yet on the first start
}

bool HxLineReader::readLine(char const* prompt, std::string& line) {
    if (!mTerminal) return bool(std::getline(std::cin, line));
    char* read = readline(prompt);
    if (!read) return false;
    line = read;
    remember(read);
    free(read);
    return true;
}

// Saved after every line: `exit` ends the process without returning here.
void HxLineReader::remember(char const* line) {
    if (!line[strspn(line, " \t")]) return;
    add_history(line);
    if (mHistoryFile.empty() || mHistoryFailed) return;
    const int error = write_history(mHistoryFile.c_str());
    if (error == 0) return;
    mHistoryFailed = true;
    std::fprintf(stderr, "surfpath: the command history cannot be saved in %s: %s\n", mHistoryFile.c_str(),
                 strerror(error));
}
