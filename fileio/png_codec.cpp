// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/png_codec.h"

#include <png.h>

#include <cstring>

#include "core/document_limits.h"

namespace wib {

// libpng's simplified interface keeps its error handling (setjmp) inside the
// library, so no longjmp ever crosses our C++ frames.

std::optional<std::vector<std::uint8_t>> EncodePng(const RgbaImage& image) {
    png_image png;
    std::memset(&png, 0, sizeof png);
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGBA;
    const png_int_32 stride = image.width * 4;
    png_alloc_size_t size = 0;
    // The first call only measures the file.
    if (!png_image_write_to_memory(&png, nullptr, &size, 0, image.pixels.data(), stride, nullptr)) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> file(size);
    if (!png_image_write_to_memory(&png, file.data(), &size, 0, image.pixels.data(), stride,
                                   nullptr)) {
        return std::nullopt;
    }
    file.resize(size);
    return file;
}

PngDecode DecodePng(std::span<const std::uint8_t> file, long long maxPixels) {
    png_image png;
    std::memset(&png, 0, sizeof png);
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&png, file.data(), file.size())) {
        return {std::nullopt, false, png.message};
    }
    const long long width = png.width;
    const long long height = png.height;
    if (width > kMaxDocumentSide || height > kMaxDocumentSide || width * height > maxPixels) {
        png_image_free(&png);
        return {std::nullopt, true, DocumentSizeLimitMessage()};
    }
    png.format = PNG_FORMAT_RGBA;
    RgbaImage image;
    image.width = static_cast<int>(width);
    image.height = static_cast<int>(height);
    image.pixels.resize(static_cast<std::size_t>(width * height) * 4);
    if (!png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr)) {
        const std::string error = png.message;
        png_image_free(&png);
        return {std::nullopt, false, error};
    }
    return {std::move(image), false, {}};
}

}  // namespace wib
