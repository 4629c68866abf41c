#pragma once
// OffReader: the Object File Format, ASCII and binary, with the optional header prefixes
// ST (texture), C (colour), N (normal), 4 (homogeneous) and n (dimension). Only positions and
// faces are kept.
//
// Every count is checked against the bytes that could hold it before anything is reserved,
// so a damaged file fails with a message instead of exhausting memory. Messages name the
// line where the text goes wrong.

#include "McString.h"

#include <cstdint>
#include <string>
#include <string_view>

class BinaryCursor;
class PolygonSoup;
class TextScanner;

class OffReader {
  public:
    // Reads the whole file `bytes` into `soup`; false with the reason in `error`.
    static bool read(std::string const& bytes, PolygonSoup& soup, McString& error);

  private:
    struct Header {
        bool normals = false, colors = false, textures = false, homogeneous = false, binary = false;
        bool hasDimension = false;
        int64_t dimension = 3;
        int64_t numPoints = 0, numFaces = 0;
    };

    OffReader(PolygonSoup& soup, McString& error) : mSoup(soup), mError(error) {}

    bool readKeyword(TextScanner& text, Header& header);
    bool readAsciiCounts(TextScanner& text, Header& header);
    bool readBinaryCounts(BinaryCursor& data, Header& header);
    bool checkCounts(Header const& header, size_t bytesLeft);
    bool readAsciiPoints(TextScanner& text, Header const& header);
    bool readAsciiFaces(TextScanner& text, Header const& header);
    bool readBinaryPoints(BinaryCursor& data, Header const& header);
    bool readBinaryFaces(BinaryCursor& data, Header const& header);
    void addPoint(double const* coordinates, Header const& header);
    bool addCorner(int64_t index, std::string_view word, int64_t face, int line);
    bool fail(int line, McString const& text);

    PolygonSoup& mSoup;
    McString& mError;
};
