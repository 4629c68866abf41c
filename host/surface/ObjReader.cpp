#include "ObjReader.h"

#include "PolygonSoup.h"
#include "TextScanner.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>

namespace {

constexpr size_t kNamedUnknownKeywords = 5;

// Statements that describe nothing a surface keeps: skipped without a word.
bool isIgnoredQuietly(std::string_view keyword) {
    for (char const* quiet : {"vt", "vn", "o", "g", "s", "usemtl", "mtllib"})
        if (keyword == quiet) return true;
    return false;
}

McString plural(int64_t n, char const* one, char const* many) {
    return McString::format("%lld %s", (long long)n, n == 1 ? one : many);
}

// A backslash before a line break joins the lines. The breaks it removes are put back after the
// joined line, so every later statement keeps its line number for messages.
std::string joinContinuedLines(std::string const& bytes) {
    std::string joined;
    joined.reserve(bytes.size());
    size_t pendingBreaks = 0;
    for (size_t i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (c == '\\' && i + 1 < bytes.size() && bytes[i + 1] == '\n') {
            joined += ' ';
            ++i;
            ++pendingBreaks;
        } else if (c == '\\' && i + 2 < bytes.size() && bytes[i + 1] == '\r' && bytes[i + 2] == '\n') {
            joined += ' ';
            i += 2;
            ++pendingBreaks;
        } else {
            joined += c;
            if (c == '\n') joined.append(pendingBreaks, '\n');
            if (c == '\n') pendingBreaks = 0;
        }
    }
    return joined;
}

bool hasContinuedLine(std::string const& bytes) {
    return bytes.find("\\\n") != std::string::npos || bytes.find("\\\r\n") != std::string::npos;
}

}  // namespace

bool ObjReader::read(std::string const& bytes, PolygonSoup& soup, McString& error, McString& warnings) {
    const bool continued = hasContinuedLine(bytes);
    const std::string joined = continued ? joinContinuedLines(bytes) : std::string();
    std::string const& text = continued ? joined : bytes;
    ObjReader reader(soup, error);
    TextScanner scanner(text.data(), text.data() + text.size(), true);
    while (scanner.nextLine())
        if (!reader.readStatement(scanner)) return false;
    if (!reader.checkForwardIndices() || !reader.checkHasFaces()) return false;
    warnings = reader.describeSkipped();
    return true;
}

bool ObjReader::fail(int line, McString const& text) {
    mError = line > 0 ? McString::format("line %d: %s", line, text.c_str()) : text;
    return false;
}

bool ObjReader::readStatement(TextScanner& text) {
    std::string_view keyword;
    text.token(keyword);
    if (keyword == "v") return readPoint(text);
    if (keyword == "f") return readFace(text);
    if (keyword == "l")
        ++mNumPolylines;
    else if (!isIgnoredQuietly(keyword))
        skipUnknown(keyword);
    return true;
}

void ObjReader::skipUnknown(std::string_view keyword) {
    ++mNumUnknown;
    const std::string name(keyword.substr(0, 20));
    if (std::find(mUnknownKeywords.begin(), mUnknownKeywords.end(), name) != mUnknownKeywords.end()) return;
    if (mUnknownKeywords.size() < kNamedUnknownKeywords)
        mUnknownKeywords.push_back(name);
    else
        mMoreUnknownKeywords = true;
}

bool ObjReader::readPoint(TextScanner& text) {
    const int64_t point = int64_t(mSoup.points.size());
    if (point >= INT_MAX) return fail(text.lineNumber(), "the file has more points than a surface can hold");
    std::array<double, 3> p{};
    for (int k = 0; k < 3; ++k) {
        std::string_view word;
        if (!text.token(word))
            return fail(text.lineNumber(), McString::format("point %lld has %d numbers where 3 coordinates are needed",
                                                            (long long)point, k));
        if (!TextScanner::toDouble(word, p[size_t(k)]))
            return fail(text.lineNumber(), McString::format("point %lld: \"%s\" is not a number", (long long)point,
                                                            TextScanner::shown(word).c_str()));
    }
    mSoup.points.push_back(p);  // a weight or a colour after the coordinates is of no use
    return true;
}

bool ObjReader::readFace(TextScanner& text) {
    std::string_view word;
    while (text.token(word))
        if (!readCorner(word, text.lineNumber())) return false;
    mSoup.endPolygon();
    ++mNumFaces;
    return true;
}

bool ObjReader::readCorner(std::string_view word, int line) {
    const std::string_view number = word.substr(0, word.find('/'));
    const long long face = (long long)mNumFaces;
    int64_t index = 0;
    if (!TextScanner::toInteger(number, index)) {
        if (TextScanner::looksInteger(number))
            return fail(line, McString::format("face %lld uses point index %s, more than a surface can hold", face,
                                               TextScanner::shown(number).c_str()));
        return fail(line, McString::format("face %lld: \"%s\" is not a point index", face, TextScanner::shown(word).c_str()));
    }
    const int64_t numPoints = int64_t(mSoup.points.size());
    if (index == 0) return fail(line, McString::format("face %lld uses point index 0, but indices count from 1", face));
    if (index < 0 && -index > numPoints)
        return fail(line, McString::format("face %lld uses point index %lld, but only %s come before it", face,
                                           (long long)index, plural(numPoints, "point", "points").c_str()));
    if (index > INT_MAX)
        return fail(line, McString::format("face %lld uses point index %lld, more than a surface can hold", face,
                                           (long long)index));
    if (index > numPoints && index > mLargestForwardIndex) {
        mLargestForwardIndex = index;
        mLargestForwardFace = mNumFaces;
        mLargestForwardLine = line;
    }
    mSoup.corners.push_back(int(index < 0 ? numPoints + index : index - 1));
    return true;
}

bool ObjReader::checkForwardIndices() {
    const int64_t numPoints = int64_t(mSoup.points.size());
    if (mLargestForwardIndex <= numPoints) return true;
    return fail(mLargestForwardLine, McString::format("face %lld uses point index %lld, but the file has only %s",
                                                      (long long)mLargestForwardFace, (long long)mLargestForwardIndex,
                                                      plural(numPoints, "point", "points").c_str()));
}

bool ObjReader::checkHasFaces() {
    if (mNumFaces > 0 || mNumPolylines == 0) return true;  // without either, the caller says there is no triangle
    return fail(0, McString::format("the file holds %s and no faces, so it has no surface to load "
                                    "(path sets are loaded from .json files)",
                                    plural(mNumPolylines, "polyline", "polylines").c_str()));
}

McString ObjReader::describeSkipped() const {
    McString text;
    if (mNumPolylines > 0)
        text = plural(mNumPolylines, "polyline (l) was ignored", "polylines (l) were ignored");
    if (mNumUnknown > 0) {
        McString names;
        for (std::string const& name : mUnknownKeywords) names += McString(names.empty() ? "" : ", ") + name;
        if (mMoreUnknownKeywords) names += ", ...";
        text += McString(text.empty() ? "" : "; ") +
                plural(mNumUnknown, "unknown statement was skipped", "unknown statements were skipped") + " (" + names +
                ")";
    }
    return text;
}
