#pragma once
// TextScanner: reads a text held in memory token by token, line by line, and counts lines
// for messages. It never reads outside the text and never allocates.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

class TextScanner {
  public:
    // With `hashComments`, a '#' starts a comment that runs to the end of its line.
    TextScanner(char const* begin, char const* end, bool hashComments);

    // Moves to the next line that holds a token; false at the end of the text.
    bool nextLine();
    // The next token of the current line; false at the end of the line.
    bool token(std::string_view& word);
    // The next token, moving on to later lines where the current one has none.
    bool anyToken(std::string_view& word);
    // Makes `word`, the last token read from the current line, the next one again.
    void putBack(std::string_view word) { mPos = word.data(); }
    // Moves to the start of the line after the current one, where a binary part may begin.
    void skipToNextLine();

    int lineNumber() const { return mLine; }
    char const* position() const { return mPos; }
    size_t remainingBytes() const { return size_t(mTextEnd - mPos); }

    // Whole-word conversions; a number beyond the range of double becomes an infinity.
    static bool toDouble(std::string_view word, double& value);
    // False for anything but a whole number in the range of int64_t.
    static bool toInteger(std::string_view word, int64_t& value);
    // Digits with an optional sign: a whole number, even one too long for toInteger.
    static bool looksInteger(std::string_view word);
    // A word of the file as an error message shows it: at most 40 bytes, and bytes that are
    // no printable ASCII as \xNN, so that a binary file's bytes do not garble the terminal.
    static std::string shown(std::string_view word);

  private:
    void skipBlanks();

    char const* mTextEnd;
    char const* mNext;  // start of the first line not yet visited
    char const* mPos;   // reading position in the current line
    char const* mEnd;   // end of the current line, before any comment
    bool mHashComments;
    int mLine = 0;
};
