#include "PlyReader.h"

#include "BinaryCursor.h"
#include "PolygonSoup.h"
#include "TextScanner.h"

#include <climits>
#include <cmath>

namespace {

struct TypeName {
    char const* name;
    char const* sizedName;
};
// In the order of PlyReader::Type.
const TypeName kTypeNames[] = {{"char", "int8"},   {"uchar", "uint8"},   {"short", "int16"}, {"ushort", "uint16"},
                               {"int", "int32"},   {"uint", "uint32"},   {"float", "float32"}, {"double", "float64"}};

std::string shown(std::string_view word) { return TextScanner::shown(word); }

}  // namespace

bool PlyReader::read(std::string const& bytes, PolygonSoup& soup, McString& error) {
    PlyReader reader(soup, error);
    TextScanner text(bytes.data(), bytes.data() + bytes.size(), false);
    if (!reader.readHeader(text) || !reader.assignRoles()) return false;
    text.skipToNextLine();
    BinaryCursor data(text.position(), bytes.data() + bytes.size(), reader.mFormat == BINARY_BE);
    if (reader.mFormat == ASCII)
        reader.mText = &text;
    else
        reader.mData = &data;
    return reader.checkCounts(text.remainingBytes()) && reader.readData();
}

bool PlyReader::fail(int line, McString const& text) {
    mError = line > 0 ? McString::format("line %d: %s", line, text.c_str()) : text;
    return false;
}

int PlyReader::typeFromName(std::string_view name) {
    for (int t = 0; t < NUM_TYPES; ++t)
        if (name == kTypeNames[t].name || name == kTypeNames[t].sizedName) return t;
    return -1;
}

size_t PlyReader::sizeOf(Type type) {
    static const size_t sizes[NUM_TYPES] = {1, 1, 2, 2, 4, 4, 4, 8};
    return sizes[type];
}

// === Header

bool PlyReader::readHeader(TextScanner& text) {
    std::string_view word;
    if (!text.nextLine() || !text.token(word) || word != "ply" || text.token(word))
        return fail(0, "the file does not start with the line \"ply\"");
    while (text.nextLine()) {
        text.token(word);
        if (word == "end_header") {
            if (mFormat == NO_FORMAT) return fail(text.lineNumber(), "the header ends without a format line");
            return true;
        }
        if (!readHeaderLine(text, word)) return false;
    }
    return fail(0, "the header has no end_header line");
}

bool PlyReader::readHeaderLine(TextScanner& text, std::string_view keyword) {
    if (keyword == "comment" || keyword == "obj_info") return true;
    if (keyword == "element") return readElementLine(text);
    if (keyword == "property") return readPropertyLine(text);
    if (keyword != "format")
        return fail(text.lineNumber(), McString::format("\"%s\" is not a header keyword (element, property, format, "
                                                        "comment, obj_info, end_header)",
                                                        shown(keyword).c_str()));
    std::string_view format, version;
    if (!text.token(format) || !text.token(version))
        return fail(text.lineNumber(), "the format line needs a format and a version");
    if (format == "ascii")
        mFormat = ASCII;
    else if (format == "binary_little_endian")
        mFormat = BINARY_LE;
    else if (format == "binary_big_endian")
        mFormat = BINARY_BE;
    else
        return fail(text.lineNumber(), McString::format("unknown format \"%s\" (ascii, binary_little_endian or "
                                                        "binary_big_endian)",
                                                        shown(format).c_str()));
    return true;
}

bool PlyReader::readElementLine(TextScanner& text) {
    std::string_view name, count, extra;
    if (!text.token(name) || !text.token(count) || text.token(extra))
        return fail(text.lineNumber(), "an element line needs a name and a count");
    Element element;
    element.name = std::string(name);
    if (!TextScanner::toInteger(count, element.count))
        return fail(text.lineNumber(), McString::format("element \"%s\" has the count \"%s\", not a whole number",
                                                        shown(name).c_str(), shown(count).c_str()));
    if (element.count < 0)
        return fail(text.lineNumber(), McString::format("element \"%s\" has a negative count (%lld)", shown(name).c_str(),
                                                        (long long)element.count));
    for (Element const& other : mElements)
        if (other.name == element.name)
            return fail(text.lineNumber(), McString::format("element \"%s\" is declared twice", shown(name).c_str()));
    mElements.push_back(element);
    return true;
}

bool PlyReader::readPropertyLine(TextScanner& text) {
    if (mElements.empty()) return fail(text.lineNumber(), "a property comes before any element");
    std::string_view type, lengthType, name, extra;
    Property property;
    if (!text.token(type)) return fail(text.lineNumber(), "a property line needs a type and a name");
    property.isList = type == "list";
    if (property.isList && !text.token(lengthType)) return fail(text.lineNumber(), "a list property needs two types and a name");
    if (property.isList && !text.token(type)) return fail(text.lineNumber(), "a list property needs two types and a name");
    if (!text.token(name) || text.token(extra))
        return fail(text.lineNumber(), "a property line needs a type and a name");
    for (std::string_view word : {type, property.isList ? lengthType : type}) {
        if (typeFromName(word) < 0)
            return fail(text.lineNumber(), McString::format("property \"%s\" has the unknown type \"%s\" (known: char, "
                                                            "uchar, short, ushort, int, uint, float, double)",
                                                            shown(name).c_str(), shown(word).c_str()));
    }
    property.type = Type(typeFromName(type));
    if (property.isList) {
        property.lengthType = Type(typeFromName(lengthType));
        if (property.lengthType >= FLOAT32)
            return fail(text.lineNumber(), McString::format("the length of list \"%s\" must have an integer type, not %s",
                                                            shown(name).c_str(), shown(lengthType).c_str()));
    }
    property.name = std::string(name);
    mElements.back().properties.push_back(property);
    return true;
}

bool PlyReader::assignRoles() {
    Element* vertex = nullptr;
    for (Element& element : mElements) {
        for (Property& property : element.properties) {
            if (element.name == "vertex" && !property.isList) {
                if (property.name == "x") property.role = X;
                if (property.name == "y") property.role = Y;
                if (property.name == "z") property.role = Z;
            }
            if (element.name == "face" && property.isList &&
                (property.name == "vertex_indices" || property.name == "vertex_index"))
                property.role = CORNERS;
        }
        if (element.name == "vertex") vertex = &element;
        if (element.name == "face" && element.count > 0) {
            bool hasCorners = false;
            for (Property const& property : element.properties) hasCorners = hasCorners || property.role == CORNERS;
            if (!hasCorners) return fail(0, "the face element has no vertex_indices list");
        }
    }
    if (!vertex) return fail(0, "the file has no vertex element");
    for (Role role : {X, Y, Z}) {
        bool found = false;
        for (Property const& property : vertex->properties) found = found || property.role == role;
        if (!found)
            return fail(0, McString::format("the vertex element has no number property \"%c\"", "?xyz"[role]));
    }
    mNumPoints = vertex->count;
    return true;
}

// The fewest bytes a record can take: in ASCII a digit and a separator per number (the last
// number of the file may go without its separator).
bool PlyReader::checkCounts(size_t bytesLeft) {
    double needed = 0;
    for (Element const& element : mElements) {
        double recordBytes = 0;
        for (Property const& property : element.properties)
            recordBytes += mFormat == ASCII ? 2.0 : double(sizeOf(property.isList ? property.lengthType : property.type));
        needed += recordBytes * double(element.count);
        if (needed > double(bytesLeft) + (mFormat == ASCII ? 1 : 0))
            return fail(0, McString::format("the header declares %s, but the rest of the file (%zu bytes) cannot hold them",
                                            countOf(element).c_str(), bytesLeft));
        if ((element.name == "vertex" || element.name == "face") && element.count > INT_MAX)
            return fail(0, McString::format("the header declares %s, more than a surface can hold",
                                            countOf(element).c_str()));
    }
    return true;
}

// === Data

McString PlyReader::recordName(Element const& element, int64_t i) {
    if (element.name == "vertex" || element.name == "face")
        return McString::format("%s %lld", element.name.c_str(), (long long)i);
    return McString::format("entry %lld of element \"%s\"", (long long)i, shown(element.name).c_str());
}

McString PlyReader::countOf(Element const& element) {
    const long long n = element.count;
    if (element.name == "vertex") return McString::format("%lld %s", n, n == 1 ? "vertex" : "vertices");
    if (element.name == "face") return McString::format("%lld %s", n, n == 1 ? "face" : "faces");
    return McString::format("%lld entries of element \"%s\"", n, shown(element.name).c_str());
}

bool PlyReader::readData() {
    mSoup.points.reserve(size_t(mNumPoints));
    for (Element const& element : mElements) {
        if (element.properties.empty()) continue;  // its records take no bytes
        if (element.name == "face") mSoup.polygonEnds.reserve(size_t(element.count));
        for (int64_t i = 0; i < element.count; ++i)
            if (!readRecord(element, i)) return false;
    }
    return true;
}

bool PlyReader::readRecord(Element const& element, int64_t i) {
    for (Property const& property : element.properties) {
        if (property.isList) {
            if (!readList(element, property, i)) return false;
            continue;
        }
        double value = 0;
        if (!readValue(property.type, value, element, i)) return false;
        if (property.role != OTHER) mPoint[property.role - X] = value;
    }
    if (element.name == "vertex") mSoup.points.push_back({mPoint[0], mPoint[1], mPoint[2]});
    return true;
}

bool PlyReader::readList(Element const& element, Property const& property, int64_t i) {
    double length = 0;
    if (!readValue(property.lengthType, length, element, i)) return false;
    const size_t bytesLeft = mText ? mText->remainingBytes() : mData->remainingBytes();
    const double bytesPerEntry = mText ? 2.0 : double(sizeOf(property.type));
    if (!(length >= 0 && length * bytesPerEntry <= double(bytesLeft) + (mText ? 1 : 0)))
        return fail(mText ? mText->lineNumber() : 0,
                    McString::format("%s lists %.0f entries, more than the rest of the file holds",
                                     recordName(element, i).c_str(), length));
    for (int64_t j = 0; j < int64_t(length); ++j) {
        double value = 0;
        if (!readValue(property.type, value, element, i)) return false;
        if (property.role == CORNERS && !addCorner(value, i)) return false;
    }
    if (property.role == CORNERS) mSoup.endPolygon();
    return true;
}

bool PlyReader::readValue(Type type, double& value, Element const& element, int64_t i) {
    if (mText) {
        std::string_view word;
        if (!mText->anyToken(word))
            return fail(0, McString::format("the file ends in the middle of %s", recordName(element, i).c_str()));
        if (!TextScanner::toDouble(word, value))
            return fail(mText->lineNumber(), McString::format("%s: \"%s\" is not a number", recordName(element, i).c_str(),
                                                              shown(word).c_str()));
        if (type < FLOAT32 && value != std::floor(value))
            return fail(mText->lineNumber(), McString::format("%s: \"%s\" is not a whole number",
                                                              recordName(element, i).c_str(), shown(word).c_str()));
        return true;
    }
    bool ok = false;
    switch (type) {
        case INT8: { int8_t v = 0; ok = mData->read(v); value = v; break; }
        case UINT8: { uint8_t v = 0; ok = mData->read(v); value = v; break; }
        case INT16: { int16_t v = 0; ok = mData->read(v); value = v; break; }
        case UINT16: { uint16_t v = 0; ok = mData->read(v); value = v; break; }
        case INT32: { int32_t v = 0; ok = mData->read(v); value = v; break; }
        case UINT32: { uint32_t v = 0; ok = mData->read(v); value = v; break; }
        case FLOAT32: { float v = 0; ok = mData->read(v); value = v; break; }
        default: { double v = 0; ok = mData->read(v); value = v; break; }
    }
    if (!ok) return fail(0, McString::format("the file ends in the middle of %s", recordName(element, i).c_str()));
    return true;
}

bool PlyReader::addCorner(double index, int64_t face) {
    if (!(index >= 0 && index < double(mNumPoints) && index == std::floor(index)))
        return fail(mText ? mText->lineNumber() : 0,
                    McString::format("face %lld uses point index %.17g, but the file has only %lld %s (indices count "
                                     "from 0)",
                                     (long long)face, index, (long long)mNumPoints, mNumPoints == 1 ? "point" : "points"));
    mSoup.corners.push_back(int(index));
    return true;
}
