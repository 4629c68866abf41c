#include "OffReader.h"

#include "BinaryCursor.h"
#include "PolygonSoup.h"
#include "TextScanner.h"

#include <climits>
#include <vector>

namespace {

// The fewest bytes a point or face can take: "0 0 0\n" is two bytes per number, "0\n" two.
constexpr int64_t kAsciiBytesPerNumber = 2;
constexpr int64_t kAsciiBytesPerFace = 2;

int64_t numbersPerPoint(int64_t dimension, bool homogeneous) { return dimension + (homogeneous ? 1 : 0); }

// Binary points carry their normal (3), colour (4) and texture (2) as floats.
int64_t floatsPerBinaryPoint(int64_t dimension, bool homogeneous, bool normals, bool colors, bool textures) {
    return numbersPerPoint(dimension, homogeneous) + (normals ? 3 : 0) + (colors ? 4 : 0) + (textures ? 2 : 0);
}

McString plural(int64_t n, char const* one, char const* many) {
    return McString::format("%lld %s", (long long)n, n == 1 ? one : many);
}

}  // namespace

bool OffReader::read(std::string const& bytes, PolygonSoup& soup, McString& error) {
    OffReader reader(soup, error);
    TextScanner text(bytes.data(), bytes.data() + bytes.size(), true);
    Header header;
    if (!reader.readKeyword(text, header)) return false;
    if (!header.binary)
        return reader.readAsciiCounts(text, header) && reader.checkCounts(header, text.remainingBytes()) &&
               reader.readAsciiPoints(text, header) && reader.readAsciiFaces(text, header);
    text.skipToNextLine();
    BinaryCursor data(text.position(), bytes.data() + bytes.size(), true);
    return reader.readBinaryCounts(data, header) && reader.checkCounts(header, data.remainingBytes()) &&
           reader.readBinaryPoints(data, header) && reader.readBinaryFaces(data, header);
}

bool OffReader::fail(int line, McString const& text) {
    mError = line > 0 ? McString::format("line %d: %s", line, text.c_str()) : text;
    return false;
}

bool OffReader::readKeyword(TextScanner& text, Header& header) {
    std::string_view word;
    if (!text.nextLine() || !text.token(word)) return fail(0, "the file holds nothing but comments");
    std::string_view rest = word;
    auto take = [&rest](std::string_view prefix) {
        if (rest.substr(0, prefix.size()) != prefix) return false;
        rest.remove_prefix(prefix.size());
        return true;
    };
    header.textures = take("ST");
    header.colors = take("C");
    header.normals = take("N");
    header.homogeneous = take("4");
    header.hasDimension = take("n");
    if (rest != "OFF")
        return fail(text.lineNumber(), McString::format("the file does not start with an OFF header (it starts with \"%s\")",
                                                        TextScanner::shown(word).c_str()));
    std::string_view mode;
    if (text.token(mode)) {
        header.binary = mode == "BINARY";
        if (!header.binary) text.putBack(mode);  // the counts may share the keyword's line
    }
    if (header.hasDimension && !header.binary) {
        std::string_view dimension;
        if (!text.anyToken(dimension) || !TextScanner::toInteger(dimension, header.dimension) || header.dimension < 3 ||
            header.dimension > 100)
            return fail(text.lineNumber(), "an nOFF header needs a dimension between 3 and 100");
    }
    return true;
}

bool OffReader::readAsciiCounts(TextScanner& text, Header& header) {
    int64_t* counts[2] = {&header.numPoints, &header.numFaces};
    char const* names[2] = {"points", "faces"};
    for (int k = 0; k < 2; ++k) {
        std::string_view word;
        if (!text.anyToken(word)) return fail(0, "the file ends before the header gives the numbers of points and faces");
        if (word == "BINARY") return fail(text.lineNumber(), "\"BINARY\" belongs on the first line, after OFF");
        if (!TextScanner::toInteger(word, *counts[k]))
            return fail(text.lineNumber(), McString::format("\"%s\" stands where the header needs the number of %s",
                                                            TextScanner::shown(word).c_str(), names[k]));
        if (*counts[k] < 0)
            return fail(text.lineNumber(), McString::format("the header declares a negative number of %s (%lld)",
                                                            names[k], (long long)*counts[k]));
    }
    return true;  // the number of edges, if given, is of no use
}

bool OffReader::readBinaryCounts(BinaryCursor& data, Header& header) {
    int32_t dimension = 3, numPoints = 0, numFaces = 0, numEdges = 0;
    if ((header.hasDimension && !data.read(dimension)) || !data.read(numPoints) || !data.read(numFaces) ||
        !data.read(numEdges))
        return fail(0, "the file ends inside its binary header");
    if (dimension < 3 || dimension > 100) return fail(0, "an nOFF header needs a dimension between 3 and 100");
    if (numPoints < 0 || numFaces < 0)
        return fail(0, McString::format("the binary header declares a negative count (%d points, %d faces)", numPoints,
                                        numFaces));
    header.dimension = dimension;
    header.numPoints = numPoints;
    header.numFaces = numFaces;
    return true;
}

bool OffReader::checkCounts(Header const& header, size_t bytesLeft) {
    if (header.numPoints > INT_MAX || header.numFaces > INT_MAX)
        return fail(0, McString::format("the header declares %s and %s, more than a surface can hold",
                                        plural(header.numPoints, "point", "points").c_str(),
                                        plural(header.numFaces, "face", "faces").c_str()));
    const int64_t needed =
        header.binary ? header.numPoints * 4 *
                                floatsPerBinaryPoint(header.dimension, header.homogeneous, header.normals,
                                                     header.colors, header.textures) +
                            header.numFaces * 8
                      : header.numPoints * kAsciiBytesPerNumber * numbersPerPoint(header.dimension, header.homogeneous) +
                            header.numFaces * kAsciiBytesPerFace - 1;
    if (needed > int64_t(bytesLeft))
        return fail(0, McString::format("the header declares %s and %s, but the rest of the file (%s) cannot hold them",
                                        plural(header.numPoints, "point", "points").c_str(),
                                        plural(header.numFaces, "face", "faces").c_str(),
                                        plural(int64_t(bytesLeft), "byte", "bytes").c_str()));
    mSoup.points.reserve(size_t(header.numPoints));
    mSoup.polygonEnds.reserve(size_t(header.numFaces));
    mSoup.corners.reserve(size_t(header.numFaces) * 3);
    return true;
}

void OffReader::addPoint(double const* coordinates, Header const& header) {
    const double w = header.homogeneous ? coordinates[header.dimension] : 1.0;
    mSoup.points.push_back({coordinates[0] / w, coordinates[1] / w, coordinates[2] / w});
}

bool OffReader::readAsciiPoints(TextScanner& text, Header const& header) {
    const int64_t perPoint = numbersPerPoint(header.dimension, header.homogeneous);
    std::vector<double> values(static_cast<size_t>(perPoint));
    for (int64_t i = 0; i < header.numPoints; ++i) {
        if (!text.nextLine())
            return fail(0, McString::format("the file ends after %s of its %lld points",
                                            plural(i, "point", "points").c_str(), (long long)header.numPoints));
        for (int64_t k = 0; k < perPoint; ++k) {
            std::string_view word;
            if (!text.token(word))
                return fail(text.lineNumber(), McString::format("point %lld has %lld numbers where %lld coordinates are needed",
                                                                (long long)i, (long long)k, (long long)perPoint));
            if (!TextScanner::toDouble(word, values[size_t(k)]))
                return fail(text.lineNumber(), McString::format("point %lld: \"%s\" is not a number", (long long)i,
                                                                TextScanner::shown(word).c_str()));
        }
        addPoint(values.data(), header);
    }
    return true;
}

bool OffReader::addCorner(int64_t index, std::string_view word, int64_t face, int line) {
    if (index < 0 || index >= int64_t(mSoup.points.size()))
        return fail(line, McString::format("face %lld uses point index %s, but the file has only %s (indices count from 0)",
                                           (long long)face, TextScanner::shown(word).c_str(),
                                           plural(int64_t(mSoup.points.size()), "point", "points").c_str()));
    mSoup.corners.push_back(int(index));
    return true;
}

bool OffReader::readAsciiFaces(TextScanner& text, Header const& header) {
    for (int64_t f = 0; f < header.numFaces; ++f) {
        if (!text.nextLine())
            return fail(0, McString::format("the file ends after %s of its %lld faces", plural(f, "face", "faces").c_str(),
                                            (long long)header.numFaces));
        std::string_view word;
        text.token(word);
        int64_t numCorners = 0;
        if (!TextScanner::toInteger(word, numCorners) || numCorners < 0)
            return fail(text.lineNumber(), McString::format("face %lld: \"%s\" is not a number of corners",
                                                            (long long)f, TextScanner::shown(word).c_str()));
        for (int64_t j = 0; j < numCorners; ++j) {
            if (!text.token(word))
                return fail(text.lineNumber(), McString::format("face %lld declares %lld corners, but its line lists %lld",
                                                                (long long)f, (long long)numCorners, (long long)j));
            int64_t index = -1;
            if (!TextScanner::toInteger(word, index) && !TextScanner::looksInteger(word))
                return fail(text.lineNumber(), McString::format("face %lld: \"%s\" is not a point index", (long long)f,
                                                                TextScanner::shown(word).c_str()));
            if (!addCorner(index, word, f, text.lineNumber())) return false;  // a too long number stays -1: out of range
        }
        mSoup.endPolygon();
    }
    return true;
}

bool OffReader::readBinaryPoints(BinaryCursor& data, Header const& header) {
    const int64_t perPoint = floatsPerBinaryPoint(header.dimension, header.homogeneous, header.normals, header.colors,
                                                  header.textures);
    std::vector<double> values(static_cast<size_t>(perPoint));
    for (int64_t i = 0; i < header.numPoints; ++i) {
        for (double& value : values) {
            float number = 0;
            if (!data.read(number))
                return fail(0, McString::format("the file ends in the middle of point %lld", (long long)i));
            value = number;
        }
        addPoint(values.data(), header);
    }
    return true;
}

bool OffReader::readBinaryFaces(BinaryCursor& data, Header const& header) {
    for (int64_t f = 0; f < header.numFaces; ++f) {
        int32_t numCorners = 0, numColors = 0;
        if (!data.read(numCorners)) return fail(0, McString::format("the file ends before face %lld", (long long)f));
        if (numCorners < 0 || size_t(numCorners) * 4 > data.remainingBytes())
            return fail(0, McString::format("face %lld declares %d corners, more than the rest of the file holds",
                                            (long long)f, numCorners));
        for (int32_t j = 0; j < numCorners; ++j) {
            int32_t index = 0;
            data.read(index);
            if (!addCorner(index, std::to_string(index), f, 0)) return false;
        }
        mSoup.endPolygon();
        if (!data.read(numColors) || numColors < 0 || !data.skip(size_t(numColors) * 4))
            return fail(0, McString::format("the colour of face %lld runs past the end of the file", (long long)f));
    }
    return true;
}
