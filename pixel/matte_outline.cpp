// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_outline.h"

namespace wib {

namespace {

constexpr std::uint8_t kHalf = 128;

bool Inside(const MatteSource& matte, int x, int y) {
    return x >= 0 && y >= 0 && x < matte.width && y < matte.height && matte.row(y)[x] >= kHalf;
}

}  // namespace

std::vector<OutlineEdge> MatteOutline(const MatteSource& matte) {
    std::vector<OutlineEdge> edges;
    // Horizontal: the line above row y, between rows y - 1 and y.
    for (int y = 0; y <= matte.height; ++y) {
        int start = -1;
        for (int x = 0; x <= matte.width; ++x) {
            const bool edge = x < matte.width && Inside(matte, x, y - 1) != Inside(matte, x, y);
            if (edge && start < 0) {
                start = x;
            } else if (!edge && start >= 0) {
                edges.push_back({start, y, x, y});
                start = -1;
            }
        }
    }
    // Vertical: the line left of column x; runs stay open from row to row.
    std::vector<int> open(static_cast<std::size_t>(matte.width) + 1, -1);
    for (int y = 0; y <= matte.height; ++y) {
        for (int x = 0; x <= matte.width; ++x) {
            const bool edge = y < matte.height && Inside(matte, x - 1, y) != Inside(matte, x, y);
            int& start = open[static_cast<std::size_t>(x)];
            if (edge && start < 0) {
                start = y;
            } else if (!edge && start >= 0) {
                edges.push_back({x, start, x, y});
                start = -1;
            }
        }
    }
    return edges;
}

}  // namespace wib
