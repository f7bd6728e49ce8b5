// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/box_blur.h"

#include <algorithm>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <vector>

#define WIB_INLINE inline __attribute__((always_inline))

namespace wib {

namespace {

// Up to this radius a whole window sum, at most 225 * 255, fits 16 bits: the
// sums take half the lanes' width, so a vector holds twice as many, and each
// row window is summed whole with its taps unrolled. Past it the row windows
// are run along, at a cost that does not grow with the radius.
constexpr int kNarrowRadius = 7;

// The mean of a window sum. The window count n is odd, so an exact mean
// sum / n lies at least 1 / (2 n) from any half, far more than the rounding
// error of sum * (1 / n): adding one half and truncating rounds it exactly.
// Single precision is exact enough for the 16-bit sums' windows of at most
// 225, double precision for any window.
template <typename Sum, typename Real>
WIB_INLINE std::uint8_t Mean(Sum sum, Real scale) {
    return static_cast<std::uint8_t>(static_cast<Real>(sum) * scale + Real(0.5));
}

// Each row window summed whole, its taps unrolled, in one vector loop along
// the row with the division.
template <int Radius>
WIB_INLINE void SmallRowMeans(const std::uint16_t* extended, int width, float scale,
                              std::uint8_t* out) {
    for (int x = 0; x < width; ++x) {
        std::uint16_t sum = 0;
        for (int i = 0; i <= 2 * Radius; ++i) {
            sum = static_cast<std::uint16_t>(sum + extended[x + i]);
        }
        out[x] = Mean(sum, scale);
    }
}

// One output row from the column sums, extended by `radius` each side.
template <int... Radius>
WIB_INLINE void RowMeans(const std::uint16_t* extended, int width, int radius, std::uint8_t* out,
                         std::integer_sequence<int, Radius...>) {
    const float scale = 1.0F / static_cast<float>((2 * radius + 1) * (2 * radius + 1));
    static_cast<void>(
        ((radius == Radius + 1 ? (SmallRowMeans<Radius + 1>(extended, width, scale, out), true)
                               : false) ||
         ...));
}

WIB_INLINE void RowMeans(const std::uint32_t* extended, int width, int radius,
                         std::uint32_t* windows, std::uint8_t* out) {
    const int size = 2 * radius + 1;
    const double scale = 1.0 / (static_cast<double>(size) * size);
    // Two running sums, over the left and the right half, interleaved: each
    // step depends on the one before, so two chains keep the core busier.
    const int half = width / 2;
    std::uint32_t left = 0;
    std::uint32_t right = 0;
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

// The column sums move down one row: `entering` added, `leaving` taken
// away. Unsigned lanes wrap on the way and end at the true sum.
template <typename Sum>
WIB_INLINE void MoveDown(Sum* sums, const std::uint8_t* entering, const std::uint8_t* leaving,
                         int width) {
    for (int x = 0; x < width; ++x) {
        sums[x] = static_cast<Sum>(sums[x] + entering[x] - leaving[x]);
    }
}

// The band row by row in one pass: the column sums live in the middle of the
// extended row, so moving them down leaves only the replicated ends to fill
// before the row windows are summed.
template <typename Sum>
WIB_INLINE void BoxRows(const PlaneBand& band, int radius) {
    const int width = band.width;
    std::vector<Sum> extended(static_cast<std::size_t>(width + 2 * radius));
    std::vector<std::uint32_t> windows(static_cast<std::size_t>(width));
    Sum* sums = extended.data() + radius;
    for (int k = -radius; k <= radius; ++k) {
        const std::uint8_t* row = band.sourceRow(band.first + k);
        for (int x = 0; x < width; ++x) {
            sums[x] = static_cast<Sum>(sums[x] + row[x]);
        }
    }
    for (int y = band.first; y < band.end; ++y) {
        if (y > band.first) {
            MoveDown(sums, band.sourceRow(y + radius), band.sourceRow(y - radius - 1), width);
        }
        std::fill(extended.begin(), extended.begin() + radius, sums[0]);
        std::fill(extended.end() - radius, extended.end(), sums[width - 1]);
        if constexpr (std::is_same_v<Sum, std::uint16_t>) {
            RowMeans(extended.data(), width, radius, band.targetRow(y),
                     std::make_integer_sequence<int, kNarrowRadius>{});
        } else {
            RowMeans(extended.data(), width, radius, windows.data(), band.targetRow(y));
        }
    }
}

WIB_WINDOW_KERNEL void NarrowBoxRows(const PlaneBand& band, int radius) {
    BoxRows<std::uint16_t>(band, radius);
}

WIB_WINDOW_KERNEL void WideBoxRows(const PlaneBand& band, int radius) {
    BoxRows<std::uint32_t>(band, radius);
}

}  // namespace

void BoxBlur(const PlaneBand& band, int radius) {
    if (band.first >= band.end) {
        return;
    }
    if (radius <= kNarrowRadius) {
        NarrowBoxRows(band, radius);
    } else {
        WideBoxRows(band, radius);
    }
}

}  // namespace wib
