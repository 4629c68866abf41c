#pragma once
// PlyReader: the Polygon File Format in ASCII and in binary of either byte order. Keeps the
// vertices' x, y, z (of any numeric type) and the faces' vertex_indices (or vertex_index)
// lists; every other element and property is read past.
//
// The header is checked as a whole before any data is read: property types, properties
// before elements, counts against the bytes that could hold them. Each list length is checked
// against the rest of the file before its entries are read, so no count in a damaged file can
// make the reader allocate more than the file's own size warrants.

#include "McString.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class BinaryCursor;
class PolygonSoup;
class TextScanner;

class PlyReader {
  public:
    // Reads the whole file `bytes` into `soup`; false with the reason in `error`.
    static bool read(std::string const& bytes, PolygonSoup& soup, McString& error);

  private:
    enum Type { INT8, UINT8, INT16, UINT16, INT32, UINT32, FLOAT32, FLOAT64, NUM_TYPES };
    enum Role { OTHER, X, Y, Z, CORNERS };
    struct Property {
        std::string name;
        Type type = FLOAT32;
        bool isList = false;
        Type lengthType = UINT8;
        Role role = OTHER;
    };
    struct Element {
        std::string name;
        int64_t count = 0;
        std::vector<Property> properties;
    };

    PlyReader(PolygonSoup& soup, McString& error) : mSoup(soup), mError(error) {}

    // === Header
    bool readHeader(TextScanner& text);
    bool readHeaderLine(TextScanner& text, std::string_view keyword);
    bool readElementLine(TextScanner& text);
    bool readPropertyLine(TextScanner& text);
    bool assignRoles();
    bool checkCounts(size_t bytesLeft);

    // === Data
    bool readData();
    bool readRecord(Element const& element, int64_t i);
    bool readList(Element const& element, Property const& property, int64_t i);
    bool readValue(Type type, double& value, Element const& element, int64_t i);
    bool addCorner(double index, int64_t face);
    static McString recordName(Element const& element, int64_t i);
    static McString countOf(Element const& element);
    bool fail(int line, McString const& text);

    static int typeFromName(std::string_view name);
    static size_t sizeOf(Type type);

    PolygonSoup& mSoup;
    McString& mError;
    enum { NO_FORMAT, ASCII, BINARY_LE, BINARY_BE } mFormat = NO_FORMAT;
    std::vector<Element> mElements;
    int64_t mNumPoints = 0;
    TextScanner* mText = nullptr;
    BinaryCursor* mData = nullptr;
    double mPoint[3] = {0, 0, 0};
};
