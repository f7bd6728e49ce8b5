// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

#include "pixel/colour_adjust.h"

namespace wib {

// A whole number spread evenly over -amount..amount, fixed by (seed, x, y,
// channel): the noise of a pixel does not depend on the order or the bands in
// which rows are filled, so one seed gives one result.
int NoiseAt(std::uint32_t seed, int x, int y, int channel, int amount);

// Adds noise of up to `amount` (0..255) to each channel, clamping; `mono`
// adds the same value to all three so the noise has no colour.
void AddNoiseRow(RgbRow in, RgbOutRow out, int y, std::uint32_t seed, int amount, bool mono,
                 int width);

// Grain like a photographic film's: one value per `size` x `size` cell, up to
// `amount`, weighted by 4 g (255 - g) / 255^2 for the pixel's grey g so it is
// strongest in the midtones and vanishes in pure black and white.
void FilmGrainRow(RgbRow in, RgbOutRow out, int y, std::uint32_t seed, int amount, int size,
                  int width);

}  // namespace wib
