// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/box_blur.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace wib {

namespace {

// Row windows up to this radius are summed whole rather than run along.
constexpr int kSmallRadius = 8;

// Adds `sign` times source row y to the column sums.
WIB_WINDOW_KERNEL void AddRow(std::int32_t* sums, const std::uint8_t* row, int width, int sign) {
    for (int x = 0; x < width; ++x) {
        sums[x] += sign * row[x];
    }
}

// The mean of a window sum. The window count n is odd, so an exact mean
// sum / n lies at least 1 / (2 n) from any half, far more than the rounding
// error of sum * (1 / n): adding one half and truncating rounds it exactly.
inline __attribute__((always_inline)) std::uint8_t Mean(std::int32_t sum, double scale) {
    return static_cast<std::uint8_t>(sum * scale + 0.5);
}

// Small windows: each row window summed whole, its taps unrolled, in one
// vector loop along the row with the division.
template <int Radius>
inline __attribute__((always_inline)) void SmallRowMeans(const std::int32_t* extended, int width,
                                                         double scale, std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        std::int32_t sum = 0;
        for (int i = 0; i <= 2 * Radius; ++i) {
            sum += extended[x + i];
        }
        out[x] = Mean(sum, scale);
    }
}

template <int... Radius>
inline __attribute__((always_inline)) bool SmallRowMeansUpTo(
    const std::int32_t* extended, int width, int radius, double scale, std::uint8_t* out,
    std::integer_sequence<int, Radius...>) {
    return ((radius == Radius + 1 ? (SmallRowMeans<Radius + 1>(extended, width, scale, out), true)
                                  : false) ||
            ...);
}

// One output row from the column sums, extended by `radius` each side.
WIB_WINDOW_KERNEL void RowMeans(const std::int32_t* extended, int width, int radius,
                                std::int32_t* windows, std::uint8_t* out) {
    const int size = 2 * radius + 1;
    const double scale = 1.0 / (static_cast<double>(size) * size);
    if (SmallRowMeansUpTo(extended, width, radius, scale, out,
                          std::make_integer_sequence<int, kSmallRadius>{})) {
        return;
    }
    // Two running sums, over the left and the right half, interleaved: each
    // step depends on the one before, so two chains keep the core busier.
    const int half = width / 2;
    std::int32_t left = 0;
    std::int32_t right = 0;
    for (int i = 0; i < size; ++i) {
        left += extended[i];
        right += extended[half + i];
    }
    windows[0] = left;
    windows[half] = right;
    for (int x = 1; x < half; ++x) {
        left += extended[x + size - 1] - extended[x - 1];
        right += extended[half + x + size - 1] - extended[half + x - 1];
        windows[x] = left;
        windows[half + x] = right;
    }
    for (int x = std::max(2 * half, 1); x < width; ++x) {
        right += extended[x + size - 1] - extended[x - 1];
        windows[x] = right;
    }
    for (int x = 0; x < width; ++x) {
        out[x] = Mean(windows[x], scale);
    }
}

}  // namespace

void BoxBlur(const PlaneBand& band, int radius) {
    if (band.first >= band.end) {
        return;
    }
    std::vector<std::int32_t> sums(static_cast<std::size_t>(band.width));
    std::vector<std::int32_t> extended(static_cast<std::size_t>(band.width + 2 * radius));
    std::vector<std::int32_t> windows(static_cast<std::size_t>(band.width));
    for (int k = -radius; k <= radius; ++k) {
        AddRow(sums.data(), band.sourceRow(band.first + k), band.width, 1);
    }
    for (int y = band.first; y < band.end; ++y) {
        if (y > band.first) {
            AddRow(sums.data(), band.sourceRow(y + radius), band.width, 1);
            AddRow(sums.data(), band.sourceRow(y - radius - 1), band.width, -1);
        }
        ExtendRow(sums.data(), band.width, radius, extended.data());
        RowMeans(extended.data(), band.width, radius, windows.data(), band.targetRow(y));
    }
}

}  // namespace wib
