// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace wib {

// An image as interleaved 8-bit R, G, B, A bytes with straight alpha, rows
// top first and no padding.
struct RgbaImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels;
};

// The PNG file of an RGBA image; nothing when the encoder fails.
std::optional<std::vector<std::uint8_t>> EncodePng(const RgbaImage& image);

struct PngDecode {
    std::optional<RgbaImage> image;
    bool tooLarge = false;  // refused for its size, before decoding
    std::string error;      // why there is no image: libpng's own words
};

// Decodes any PNG to 8-bit straight RGBA. The size in its header is checked
// against `maxPixels` (and each side against the largest document) before
// the pixels are allocated; a larger one is refused with the image size
// message.
PngDecode DecodePng(std::span<const std::uint8_t> file, long long maxPixels);

}  // namespace wib
