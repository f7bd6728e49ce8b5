// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_feather.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>
#include <vector>

#include "pixel/gaussian.h"

namespace wib {

namespace {

constexpr int kTile = 128;

struct Box {
    int left, top, right, bottom;  // right and bottom exclusive
};

// The smallest and largest value in the box.
WIB_WINDOW_KERNEL std::pair<std::uint8_t, std::uint8_t> Range(const MatteSource& source,
                                                              const Box& box) {
    std::uint8_t low = 255;
    std::uint8_t high = 0;
    for (int y = box.top; y < box.bottom; ++y) {
        const std::uint8_t* row = source.row(y);
        for (int x = box.left; x < box.right; ++x) {
            low = std::min(low, row[x]);
            high = std::max(high, row[x]);
        }
    }
    return {low, high};
}

}  // namespace

void FeatherMatte(const MatteSource& source, const MatteView& target, double radius, int first,
                  int end) {
    const double sigma = radius / 2;
    const std::size_t width = static_cast<std::size_t>(source.width);
    if (sigma < 0.3) {
        for (int y = first; y < end; ++y) {
            std::memcpy(target.row(y), source.row(y), width);
        }
        return;
    }
    // How far the blur reaches: its direct kernel 3 sigma, its four boxes
    // under 3.5 sigma together; a little more is safe.
    const int reach = static_cast<int>(std::ceil(3.5 * sigma)) + 2;
    if (reach > 2 * kTile) {
        // Tiles would mostly be margin: blur the band whole.
        GaussianBlur(
            {source.data, target.data, source.stride, source.width, source.height, first, end},
            sigma);
        return;
    }
    std::vector<std::uint8_t> scratch(source.stride * static_cast<std::size_t>(kTile + 2 * reach));
    for (int top = first; top < end; top += kTile) {
        const int bottom = std::min(end, top + kTile);
        for (int left = 0; left < source.width; left += kTile) {
            const int right = std::min(source.width, left + kTile);
            const Box around{std::max(0, left - reach), std::max(0, top - reach),
                             std::min(source.width, right + reach),
                             std::min(source.height, bottom + reach)};
            const auto [low, high] = Range(source, around);
            const std::size_t span = static_cast<std::size_t>(right - left);
            if (low == high) {
                for (int y = top; y < bottom; ++y) {
                    std::memset(target.row(y) + left, low, span);
                }
                continue;
            }
            // The tile with its margin as an image of its own: its cut edges
            // lie beyond the blur's reach from the tile, and where it meets the
            // image's edges the border repeats as it does for the whole.
            const PlaneBand band{source.row(around.top) + around.left,
                                 scratch.data(),
                                 source.stride,
                                 around.right - around.left,
                                 around.bottom - around.top,
                                 top - around.top,
                                 bottom - around.top};
            GaussianBlur(band, sigma);
            for (int y = top; y < bottom; ++y) {
                std::memcpy(target.row(y) + left,
                            band.targetRow(y - around.top) + (left - around.left), span);
            }
        }
    }
}

}  // namespace wib
