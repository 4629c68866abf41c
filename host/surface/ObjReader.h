#pragma once
// ObjReader: Wavefront OBJ surfaces. Keeps vertex positions (`v`) and faces (`f`, whose
// corners may be written v, v/vt, v//vn or v/vt/vn; a negative index counts back from the last
// vertex read). Texture coordinates, normals, groups, smoothing and materials are passed over
// in silence. Polylines (`l`) and statements the reader does not know are skipped and reported
// as warnings, so a file from a CAD tool or a path export still yields its faces. A backslash
// at the end of a line continues the statement on the next line.
//
// OBJ has no header counts: every array grows with what the file holds, so the file's size
// bounds the memory used.

#include "McString.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class PolygonSoup;
class TextScanner;

class ObjReader {
  public:
    // Reads the whole file `bytes` into `soup`; false with the reason in `error`. What was
    // skipped is described in `warnings` (empty when nothing was).
    static bool read(std::string const& bytes, PolygonSoup& soup, McString& error, McString& warnings);

  private:
    ObjReader(PolygonSoup& soup, McString& error) : mSoup(soup), mError(error) {}

    bool readStatement(TextScanner& text);
    bool readPoint(TextScanner& text);
    bool readFace(TextScanner& text);
    bool readCorner(std::string_view word, int line);
    void skipUnknown(std::string_view keyword);
    // Faces may refer to vertices listed after them; their indices are checked at the end.
    bool checkForwardIndices();
    bool checkHasFaces();
    McString describeSkipped() const;
    bool fail(int line, McString const& text);

    PolygonSoup& mSoup;
    McString& mError;
    int64_t mNumFaces = 0;
    int64_t mNumPolylines = 0;
    int64_t mNumUnknown = 0;
    std::vector<std::string> mUnknownKeywords;  // the first few, for the warning
    bool mMoreUnknownKeywords = false;
    // The largest index that pointed past the vertices read so far, with its face and line.
    int64_t mLargestForwardIndex = 0, mLargestForwardFace = 0;
    int mLargestForwardLine = 0;
};
