// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "core/layered_picture.h"
#include "fileio/byte_sink.h"
#include "fileio/container.h"
#include "fileio/read_result.h"

// The program's layered picture file, ".lyr": every layer's properties, every
// frame's pixels of every layer, and the current layer and frame.

namespace wib {

inline constexpr FourCC kLayeredMagic{'W', 'L', 'Y', 'R'};

// Writes the file whole or not at all; nothing when written, else the
// message. The picture must be whole (see AddPictureSections).
std::optional<std::string> WriteLayeredFile(const std::string& path, const LayeredPicture& picture);

// The picture in the file, or the message that says why it cannot be read.
// Nothing is changed on the caller's side either way.
ReadResult<LayeredPicture> ReadLayeredFile(const std::string& path);

// The same over bytes in memory.
bool EncodeLayered(const LayeredPicture& picture, ByteSink& sink);
ReadResult<LayeredPicture> DecodeLayered(std::span<const std::uint8_t> bytes);

}  // namespace wib
