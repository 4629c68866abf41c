#pragma once
// HxLineReader: the input lines of the interactive shell. On a terminal they are read with
// line editing (libedit) and a history that lasts between sessions in ~/.surfpath_history;
// from a pipe or a file they are read as they come, without a prompt, so scripts fed to the
// shell behave as before.

#include <string>

class HxLineReader {
  public:
    HxLineReader();

    // True when input comes from a terminal (prompts are shown).
    bool isTerminal() const { return mTerminal; }
    // Reads the next line, without its line break, after showing `prompt` on a terminal.
    // False at the end of the input.
    bool readLine(char const* prompt, std::string& line);

  private:
    void remember(char const* line);

    bool mTerminal;
    std::string mHistoryFile;  // empty without a home folder
    bool mHistoryFailed = false;  // said once, not after every command
};
