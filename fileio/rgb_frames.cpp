// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/rgb_frames.h"

#include <cstddef>

#include "pixel/interleave.h"

namespace wib {

// The interleave kernels store blue first; handing them the planes in the
// other order gives red first.
void RgbFromPlanes(const ColourPlanes& planes, int width, int height, std::uint8_t* out) {
    const auto count = static_cast<std::size_t>(width);
    for (int y = 0; y < height; ++y) {
        JoinBGR(planes.b.row(y), planes.g.row(y), planes.r.row(y), count,
                out + static_cast<std::size_t>(y) * count * 3);
    }
}

ColourPlanes PlanesFromRgb(const std::uint8_t* rgb, int width, int height) {
    ColourPlanes planes{Plane(width, height), Plane(width, height), Plane(width, height)};
    const auto count = static_cast<std::size_t>(width);
    for (int y = 0; y < height; ++y) {
        SplitBGR(rgb + static_cast<std::size_t>(y) * count * 3, count, planes.b.row(y),
                 planes.g.row(y), planes.r.row(y));
    }
    return planes;
}

}  // namespace wib
