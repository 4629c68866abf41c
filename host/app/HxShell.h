#pragma once
// HxShell: the `surfpath` command line: an interactive prompt, a script with arguments, or
// one command given with -e.

class HxShell {
  public:
    // Installs the global commands and sources the resource scripts.
    HxShell();
    // Runs the program for its command-line arguments; returns the process exit code.
    int run(int argc, char** argv);

  private:
    int runScript(char const* file, int argc, char** argv);
    int runCommand(char const* command);
    int runInteractive();
    void setArgv(char const* argv0, int argc, char** argv);
};
