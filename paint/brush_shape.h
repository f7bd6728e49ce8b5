// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "core/plane.h"

namespace wib {

// A brush tip: coverage 0..255 over a raster (255 = full paint). The stroke
// engine turns it into a brush mask (0 = full strength, 255 = outside) at the
// angle and scale of each segment.
struct BrushTip {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> coverage;
    std::uint8_t at(int x, int y) const {
        return coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                        static_cast<std::size_t>(x)];
    }
};

// The tip of an image brush: its mask read as coverage.
BrushTip TipFromMask(const Plane& mask);

// The built-in natural-media brushes.
enum class BuiltinBrush : int { HardRound = 0, SoftAirbrush = 1, Bristle = 2, Chalk = 3 };
inline constexpr int kBuiltinBrushCount = 4;
const char* BuiltinBrushName(BuiltinBrush brush);

// A round tip of `diameter` pixels whose edge softens as `hardness` (0..100) drops.
BrushTip MakeRoundBrush(int diameter, int hardness);
// A soft round tip with a Gaussian-like falloff, as an airbrush sprays.
BrushTip MakeAirbrush(int diameter);
// Separate hairs in a round tip; the same `seed` gives the same hairs.
BrushTip MakeBristleBrush(int diameter, int bristles, std::uint32_t seed);

// An edge profile: coverage from the centre (first value) to the rim (last),
// values 0..255.
using EdgeProfile = std::vector<std::uint8_t>;
// Reads a profile: whitespace-separated numbers 0..255, 2 to 256 of them.
// Nothing is returned (empty) for a missing or malformed file.
EdgeProfile LoadEdgeprofile(const std::filesystem::path& file);
// A chalk tip: the profile across the radius, broken by a grain of `seed`.
BrushTip MakeChalkBrush(int diameter, const EdgeProfile& profile, std::uint32_t seed);

// The tip resampled (bilinear) so that its longer side is `size` pixels.
BrushTip ScaleTip(const BrushTip& tip, int size);

// The row length of a transformed mask of `width` pixels: whole vectors of 16,
// the columns past `width` holding 255 (outside the brush).
int PaddedMaskWidth(int width);

// The brush mask of `tip` turned by `degrees` and scaled by `scale`, sampled
// nearest (quality 0), bilinear (1) or 4 x 4 supersampled (2). The dab is
// square and odd-sized (as many columns as the mask has rows), large enough
// for the tip at that angle; its rows are padded to PaddedMaskWidth.
Plane TransformBrush(const BrushTip& tip, double degrees, double scale, int quality);

}  // namespace wib
