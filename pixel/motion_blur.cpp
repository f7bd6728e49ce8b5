// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/motion_blur.h"

#include <cmath>
#include <numbers>
#include <vector>

namespace wib {

void MotionBlur(const PlaneBand& band, double angleDegrees, int distance) {
    const double radians = angleDegrees * std::numbers::pi / 180;
    const int samples = distance + 1;
    std::vector<int> dx(static_cast<std::size_t>(samples));
    std::vector<int> dy(dx.size());
    for (int j = 0; j < samples; ++j) {
        const double t = j - distance / 2.0;
        dx[static_cast<std::size_t>(j)] = static_cast<int>(std::lround(t * std::cos(radians)));
        dy[static_cast<std::size_t>(j)] = static_cast<int>(std::lround(t * std::sin(radians)));
    }
    std::vector<int> sums(static_cast<std::size_t>(band.width));
    for (int y = band.first; y < band.end; ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        for (std::size_t j = 0; j < dx.size(); ++j) {
            const std::uint8_t* row = band.sourceRow(y + dy[j]);
            for (int x = 0; x < band.width; ++x) {
                sums[static_cast<std::size_t>(x)] +=
                    row[PlaneBand::ClampIndex(x + dx[j], band.width)];
            }
        }
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            out[x] = static_cast<std::uint8_t>((2 * sums[static_cast<std::size_t>(x)] + samples) /
                                               (2 * samples));
        }
    }
}

}  // namespace wib
