// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/lens_blur.h"

#include <algorithm>
#include <vector>

namespace wib {

namespace {

// Adds to each sum the run of 2 half + 1 values centred on its pixel, read
// from the prefix sums of a row extended by `radius`.
WIB_WINDOW_KERNEL void AddRuns(int* sums, const int* prefix, int width, int radius, int half) {
    for (int x = 0; x < width; ++x) {
        sums[x] += prefix[x + radius + half + 1] - prefix[x + radius - half];
    }
}

}  // namespace

void LensBlur(const PlaneBand& band, int radius) {
    // Half-widths of the disc's rows: the largest w with w^2 + j^2 <= r^2,
    // found in integers so that no rounding moves the rim.
    std::vector<int> half(static_cast<std::size_t>(2 * radius + 1));
    int count = 0;
    for (int j = -radius; j <= radius; ++j) {
        int w = 0;
        while ((w + 1) * (w + 1) + j * j <= radius * radius) {
            ++w;
        }
        half[static_cast<std::size_t>(j + radius)] = w;
        count += 2 * w + 1;
    }
    // Each disc row adds a run of one source row, read from that row's prefix
    // sums over the row extended by the radius on each side.
    const int padded = band.width + 2 * radius;
    std::vector<int> extended(static_cast<std::size_t>(padded));
    std::vector<int> prefix(static_cast<std::size_t>(padded) + 1);
    std::vector<int> sums(static_cast<std::size_t>(band.width));
    for (int y = band.first; y < band.end; ++y) {
        std::fill(sums.begin(), sums.end(), 0);
        for (int j = -radius; j <= radius; ++j) {
            ExtendRow(band.sourceRow(y + j), band.width, radius, extended.data());
            for (int i = 0; i < padded; ++i) {
                prefix[static_cast<std::size_t>(i) + 1] =
                    prefix[static_cast<std::size_t>(i)] + extended[static_cast<std::size_t>(i)];
            }
            AddRuns(sums.data(), prefix.data(), band.width, radius,
                    half[static_cast<std::size_t>(j + radius)]);
        }
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            out[x] = static_cast<std::uint8_t>((2 * sums[static_cast<std::size_t>(x)] + count) /
                                               (2 * count));
        }
    }
}

}  // namespace wib
