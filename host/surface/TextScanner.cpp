#include "TextScanner.h"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

// from_chars refuses the '+' that many writers put before positive numbers.
std::string_view withoutPlus(std::string_view word) {
    return word.size() > 1 && word[0] == '+' && word[1] != '-' ? word.substr(1) : word;
}

}  // namespace

TextScanner::TextScanner(char const* begin, char const* end, bool hashComments)
    : mTextEnd(end), mNext(begin), mPos(begin), mEnd(begin), mHashComments(hashComments) {}

void TextScanner::skipBlanks() {
    while (mPos < mEnd && isBlank(*mPos)) ++mPos;
}

bool TextScanner::nextLine() {
    while (mNext < mTextEnd) {
        char const* start = mNext;
        char const* newline = static_cast<char const*>(memchr(start, '\n', size_t(mTextEnd - start)));
        mEnd = newline ? newline : mTextEnd;
        mNext = newline ? newline + 1 : mTextEnd;
        ++mLine;
        if (mHashComments) {
            char const* hash = static_cast<char const*>(memchr(start, '#', size_t(mEnd - start)));
            if (hash) mEnd = hash;
        }
        mPos = start;
        skipBlanks();
        if (mPos < mEnd) return true;
    }
    mPos = mEnd = mTextEnd;
    return false;
}

bool TextScanner::token(std::string_view& word) {
    skipBlanks();
    if (mPos >= mEnd) return false;
    char const* start = mPos;
    while (mPos < mEnd && !isBlank(*mPos)) ++mPos;
    word = std::string_view(start, size_t(mPos - start));
    return true;
}

bool TextScanner::anyToken(std::string_view& word) {
    while (!token(word))
        if (!nextLine()) return false;
    return true;
}

void TextScanner::skipToNextLine() { mPos = mEnd = mNext; }

bool TextScanner::toDouble(std::string_view word, double& value) {
    word = withoutPlus(word);
    char const* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    if (result.ptr != end) return false;
    if (result.ec == std::errc::result_out_of_range) {
        // from_chars leaves the value alone here; strtod says infinity or zero, as the text means.
        value = strtod(std::string(word).c_str(), nullptr);
        return true;
    }
    return result.ec == std::errc();
}

bool TextScanner::toInteger(std::string_view word, int64_t& value) {
    word = withoutPlus(word);
    char const* end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, value);
    return result.ec == std::errc() && result.ptr == end;
}

bool TextScanner::looksInteger(std::string_view word) {
    word = withoutPlus(word);
    if (!word.empty() && word[0] == '-') word.remove_prefix(1);
    if (word.empty()) return false;
    for (char c : word)
        if (c < '0' || c > '9') return false;
    return true;
}

std::string TextScanner::shown(std::string_view word) {
    std::string text;
    for (unsigned char c : word.substr(0, 40)) {
        if (c >= 0x20 && c < 0x7f) {
            text += char(c);
        } else {
            char escaped[5];
            std::snprintf(escaped, sizeof escaped, "\\x%02x", c);
            text += escaped;
        }
    }
    return text;
}
