// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "fileio/byte_sink.h"
#include "fileio/container.h"
#include "fileio/read_result.h"
#include "fileio/stored_animation.h"

// The program's stored animation file, ".wta": the layered picture's sections
// and two more, "ANIM" (frame rate, name, exposures) and "KEYS" (the
// keyframe tracks).

namespace wib {

inline constexpr FourCC kAnimationMagic{'W', 'W', 'T', 'A'};
inline constexpr FourCC kAnimationSection{'A', 'N', 'I', 'M'};
inline constexpr FourCC kKeysSection{'K', 'E', 'Y', 'S'};

// Writes the file whole or not at all; nothing when written, else the
// message. The picture must be whole (see AddPictureSections) and there must
// be one exposure of 1 or more per frame, and a frame rate above 0;
// anything else throws std::invalid_argument.
std::optional<std::string> WriteAnimationFile(const std::string& path,
                                              const StoredAnimation& animation);

// The animation in the file, or the message that says why it cannot be read.
ReadResult<StoredAnimation> ReadAnimationFile(const std::string& path);

// The same over bytes in memory.
bool EncodeAnimation(const StoredAnimation& animation, ByteSink& sink);
ReadResult<StoredAnimation> DecodeAnimation(std::span<const std::uint8_t> bytes);

}  // namespace wib
