// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "core/plane.h"
#include "paint/brush_options.h"

namespace wib {

// The paper grains the program makes itself.
enum class PaperKind : int { Canvas = 0, Rough = 1, Fine = 2 };
inline constexpr int kPaperKindCount = 3;
const char* PaperName(PaperKind kind);

// A tileable grain of `size` x `size`, 128 where the paper is flat.
Plane MakePaper(PaperKind kind, int size, std::uint32_t seed);

// The grain strokes read: the paper scaled, embossed, inverted and deepened
// as the paper panel says. Stays tileable.
Plane PreparePaper(const Plane& source, const BrushOptionsModel& options);

}  // namespace wib
