// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// Unsharp mask of one row, given the row and its blur: where |p - b| >=
// threshold, out = clamp(round(p + amount (p - b))), else p. `out` may be
// `blurred`.
void UnsharpRow(const std::uint8_t* source, const std::uint8_t* blurred, int width, double amount,
                int threshold, std::uint8_t* out);

}  // namespace wib
