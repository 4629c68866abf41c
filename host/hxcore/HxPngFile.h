#pragma once
// HxPngFile: RGBA images as PNG files (through libpng). Rows are given and returned bottom
// row first, as OpenGL reads them; the file holds them top row first, as viewers expect.

#include "McString.h"

#include <vector>

class HxPngFile {
  public:
    // Writes atomically (temporary file, then rename). False with the reason in `error`.
    static bool write(char const* fileName, int width, int height, unsigned char const* rgba, McString& error);
    // Reads any PNG as 8-bit RGBA. False with the reason in `error`.
    static bool read(char const* fileName, int& width, int& height, std::vector<unsigned char>& rgba, McString& error);
};
