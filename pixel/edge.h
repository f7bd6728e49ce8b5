// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixel/plane_band.h"

namespace wib {

// What an edge filter makes of the Sobel gradient (gx, gy) at each pixel.
struct GradientMap {
    enum class Kind {
        Magnitude,          // clamp(round(sqrt(gx^2 + gy^2)))
        InvertedMagnitude,  // 255 - that: dark edges on white
        Threshold,          // 255 where the magnitude >= level, else 0
        Emboss,             // clamp(round(128 + depth (cos a gx + sin a gy) / 4))
    };
    Kind kind = Kind::Magnitude;
    int level = 128;
    double angleDegrees = 0;
    double depth = 1;
};

// The 3 x 3 Sobel gradient, x to the right and y downward, mapped to a value.
void GradientFilter(const PlaneBand& band, const GradientMap& map);

// |8 p - (sum of the eight neighbours)|, clamped to 255.
void LaplacianFilter(const PlaneBand& band);

}  // namespace wib
