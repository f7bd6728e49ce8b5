// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/surface_blur.h"

#include <array>
#include <cstdlib>
#include <vector>

namespace wib {

void SurfaceBlur(const PlaneBand& band, int radius, int threshold) {
    // The window is kept as a histogram that slides along the row, so the cost
    // of a pixel is the window's height plus the values near the centre's.
    std::array<std::int64_t, 256> weight{};
    for (int d = 0; d < 256; ++d) {
        weight[static_cast<std::size_t>(d)] = SurfaceWeight(d, threshold);
    }
    const int reach = std::min(255, 2 * threshold - 1);
    const int span = 2 * radius + 1;
    std::vector<const std::uint8_t*> rows(static_cast<std::size_t>(span));
    std::array<std::int64_t, 256> histogram{};
    for (int y = band.first; y < band.end; ++y) {
        for (int j = 0; j < span; ++j) {
            rows[static_cast<std::size_t>(j)] = band.sourceRow(y - radius + j);
        }
        const auto addColumn = [&](int x, int delta) {
            const int column = PlaneBand::ClampIndex(x, band.width);
            for (const std::uint8_t* row : rows) {
                histogram[row[column]] += delta;
            }
        };
        histogram.fill(0);
        for (int x = -radius; x <= radius; ++x) {
            addColumn(x, 1);
        }
        const std::uint8_t* centreRow = band.sourceRow(y);
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            if (x > 0) {
                addColumn(x - radius - 1, -1);
                addColumn(x + radius, 1);
            }
            const int centre = centreRow[x];
            std::int64_t sum = 0, total = 0;
            for (int v = std::max(0, centre - reach); v <= std::min(255, centre + reach); ++v) {
                const std::int64_t w = weight[static_cast<std::size_t>(std::abs(v - centre))] *
                                       histogram[static_cast<std::size_t>(v)];
                sum += w * v;
                total += w;
            }
            // The centre itself always weighs in, so total > 0.
            out[x] = static_cast<std::uint8_t>((2 * sum + total) / (2 * total));
        }
    }
}

}  // namespace wib
