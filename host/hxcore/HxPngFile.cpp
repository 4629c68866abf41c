#include "HxPngFile.h"

#include "AtomicFile.h"

#include <png.h>

#include <cstring>
#include <string>

namespace {
void appendToString(png_structp png, png_bytep data, png_size_t length) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<char const*>(data), length);
}
void flushNothing(png_structp) {}
}  // namespace

bool HxPngFile::write(char const* fileName, int width, int height, unsigned char const* rgba, McString& error) {
    std::string encoded;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        error = "out of memory while encoding the image";
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        error = "the image could not be encoded as PNG";
        return false;
    }
    png_set_write_fn(png, &encoded, appendToString, flushNothing);
    png_set_IHDR(png, info, png_uint_32(width), png_uint_32(height), 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const size_t rowBytes = size_t(width) * 4;
    for (int row = height - 1; row >= 0; --row)
        png_write_row(png, const_cast<png_bytep>(rgba + size_t(row) * rowBytes));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return AtomicFile::write(fileName, encoded, error);
}

bool HxPngFile::read(char const* fileName, int& width, int& height, std::vector<unsigned char>& rgba, McString& error) {
    png_image image;
    memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, fileName)) {
        error.printf("cannot read \"%s\": %s", fileName, image.message);
        return false;
    }
    image.format = PNG_FORMAT_RGBA;
    width = int(image.width);
    height = int(image.height);
    rgba.assign(PNG_IMAGE_SIZE(image), 0);
    // A negative stride stores the last (bottom) row first.
    const png_int_32 stride = -png_int_32(PNG_IMAGE_ROW_STRIDE(image));
    if (!png_image_finish_read(&image, nullptr, rgba.data(), stride, nullptr)) {
        error.printf("cannot read \"%s\": %s", fileName, image.message);
        png_image_free(&image);
        return false;
    }
    return true;
}
