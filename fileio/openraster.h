// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/layered_picture.h"

namespace wib {

// OpenRaster (".ora"): a zip holding "mimetype" (first, stored), stack.xml,
// one PNG per layer under data/, the composite as mergedimage.png and a
// thumbnail of at most 256 x 256. It holds one frame.

// The most layer pixels a file may make, all layers together: sixteen layers
// of the largest document.
inline constexpr long long kOpenRasterMaxPixels = 1LL << 32;

// The file's bytes for frame `currentFrame` of the picture; nothing, with the
// reason in `error`, when the picture's planes do not cover its size or an
// encoder fails.
std::optional<std::vector<std::uint8_t>> EncodeOpenRaster(const LayeredPicture& picture,
                                                          std::string& error);

// Writes the file whole or not at all; false with the message in `error`.
bool WriteOpenRaster(const std::string& path, const LayeredPicture& picture, std::string& error);

struct OpenRasterRead {
    std::optional<LayeredPicture> picture;  // one frame; nothing when refused
    std::string message;                    // why it was refused
    // What was read differently from the file (an unknown composite-op taken
    // as normal, skipped elements), for the caller to log.
    std::vector<std::string> log;
};

// Reads a file. Layers placed at an offset or of another size than the image
// are placed and cropped to it; nested stacks are flattened into the list.
OpenRasterRead ReadOpenRaster(const std::string& path);

// The reader over bytes in memory; `maxPixels` bounds the layers' pixels, all
// layers together, before any of them is made.
OpenRasterRead DecodeOpenRaster(std::span<const std::uint8_t> bytes,
                                long long maxPixels = kOpenRasterMaxPixels);

}  // namespace wib
