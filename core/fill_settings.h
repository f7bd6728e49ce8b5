// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>

#include "pixel/gradient.h"

namespace wib {

// What a flood fill lays on its region.
enum class FillSource : std::uint8_t { Primary, Secondary, Pattern, Gradient };
inline constexpr int kFillSourceCount = 4;

// Which pixels the region is found on: the current layer's, or the visible
// composite of every layer.
enum class FillSample : std::uint8_t { Layer, Composite };

// Where a gradient fill's ends lie: across the region's bounding box, left to
// right, or where the gradient tool last laid its gradient.
enum class FillGradientPlacement : std::uint8_t { Region, LastGradient };

// A gradient from the primary colour at (x0, y0) to the secondary at (x1, y1).
struct GradientStroke {
    double x0 = 0;
    double y0 = 0;
    double x1 = 0;
    double y1 = 0;
    GradientShape shape = GradientShape::Linear;
    // Random dither hashes the pixel position with a fixed seed: the same
    // gradient gives the same pixels every time.
    GradientDither dither = GradientDither::None;
};

// The fill's settings, shared by the fill tool, edit.fill (as its defaults),
// the "Fill settings" panel and plug-ins.
struct FillSettings {
    FillSource source = FillSource::Primary;
    FillSample sample = FillSample::Layer;
    // The region's edge softened by one pixel.
    bool antialias = false;
    FillGradientPlacement gradient = FillGradientPlacement::Region;
    // The last gradient laid, for gradient fills placed as it was.
    std::optional<GradientStroke> lastGradient;
};

}  // namespace wib
