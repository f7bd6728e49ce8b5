// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

#include "core/plane.h"
#include "fileio/byte_sink.h"
#include "fileio/targa_header.h"

namespace wib {

class Workspace;

// Format codes of the Targa writer.
inline constexpr int kTargaFormat24 = 0;       // true colour, type 2
inline constexpr int kTargaFormat32 = 1;       // true colour with alpha, type 2
inline constexpr int kTargaFormatGrey = 2;     // 8-bit greyscale, type 3
inline constexpr int kTargaFormatIndexed = 6;  // 8-bit colour with a 256-entry palette, type 1

// The format code for a `TargaFormatChoice` of the TargaOptions panel (1 to
// 4); nothing for any other value.
std::optional<int> TargaFormatCode(int choice);

struct SourcePlanes {
    const Plane& r;
    const Plane& g;
    const Plane& b;
    const Plane& a;
};

// Writes the top-left width x height of the planes as an uncompressed Targa.
// Files are written bottom row first, as the format's default origin has it;
// TopFirst writes them from the top and says so in the descriptor. False when
// the format code is unknown or the sink fails.
bool EncodeTarga(const SourcePlanes& planes, int width, int height, int formatCode,
                 TargaRowOrder order, ByteSink& sink);

// Writes the document to `path`; a file that cannot be written gets a message.
bool SaveTarga(Workspace& workspace, const std::string& path, int formatCode,
               TargaRowOrder order = TargaRowOrder::BottomFirst);

}  // namespace wib
