// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_polygon.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace wib {

namespace {

constexpr int kSubRows = 16;

// Where the polygon's edges cross the horizontal line at height `v`, sorted;
// an edge counts from its upper end up to, not including, its lower end, so
// that a corner on the line is crossed once.
void Crossings(const std::vector<std::array<double, 2>>& corners, double v,
               std::vector<double>& out) {
    out.clear();
    const std::size_t count = corners.size();
    for (std::size_t i = 0; i < count; ++i) {
        const auto& a = corners[i];
        const auto& b = corners[(i + 1) % count];
        if ((a[1] <= v && v < b[1]) || (b[1] <= v && v < a[1])) {
            out.push_back(a[0] + (v - a[1]) * (b[0] - a[0]) / (b[1] - a[1]));
        }
    }
    std::sort(out.begin(), out.end());
}

}  // namespace

void PolygonMatte(const MatteView& matte, const std::vector<std::array<double, 2>>& corners,
                  bool antialias) {
    for (int y = 0; y < matte.height; ++y) {
        std::memset(matte.row(y), 0, static_cast<std::size_t>(matte.width));
    }
    if (corners.size() < 3) {
        return;
    }
    double top = corners[0][1], bottom = corners[0][1];
    for (const auto& corner : corners) {
        top = std::min(top, corner[1]);
        bottom = std::max(bottom, corner[1]);
    }
    const int firstRow = std::max(0, static_cast<int>(std::floor(top)));
    const int endRow = std::min(matte.height, static_cast<int>(std::ceil(bottom)) + 1);
    const int subRows = antialias ? kSubRows : 1;
    std::vector<double> crossings;
    std::vector<double> covered(static_cast<std::size_t>(matte.width));
    for (int y = firstRow; y < endRow; ++y) {
        std::fill(covered.begin(), covered.end(), 0.0);
        for (int sub = 0; sub < subRows; ++sub) {
            Crossings(corners, y + (sub + 0.5) / subRows, crossings);
            for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
                const double left = std::max(0.0, crossings[i]);
                const double right = std::min<double>(matte.width, crossings[i + 1]);
                if (!antialias) {
                    // Pixels whose centre lies in [left, right).
                    const int from = static_cast<int>(std::ceil(left - 0.5));
                    const int to = static_cast<int>(std::ceil(right - 0.5));
                    for (int x = from; x < to; ++x) {
                        covered[static_cast<std::size_t>(x)] = 1.0;
                    }
                    continue;
                }
                for (int x = static_cast<int>(std::floor(left)); x < right; ++x) {
                    const double share = std::min(right, x + 1.0) - std::max(left, double(x));
                    covered[static_cast<std::size_t>(x)] += std::max(0.0, share) / subRows;
                }
            }
        }
        std::uint8_t* row = matte.row(y);
        for (int x = 0; x < matte.width; ++x) {
            row[x] = static_cast<std::uint8_t>(
                std::lround(std::clamp(covered[static_cast<std::size_t>(x)], 0.0, 1.0) * 255));
        }
    }
}

}  // namespace wib
