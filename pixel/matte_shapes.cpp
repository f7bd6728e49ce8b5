// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/matte_shapes.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace wib {

namespace {

constexpr int kSubRows = 16;

void ClearMatte(const MatteView& matte) {
    for (int y = 0; y < matte.height; ++y) {
        std::memset(matte.row(y), 0, static_cast<std::size_t>(matte.width));
    }
}

// The part of the ellipse's chord at height `v` (image units) as [left, right];
// false where the height misses the ellipse.
bool Chord(const MatteBox& box, double v, double& left, double& right) {
    const double a = box.width / 2.0;
    const double b = box.height / 2.0;
    const double dy = (v - (box.y + b)) / b;
    const double inside = 1.0 - dy * dy;
    if (inside < 0) {
        return false;
    }
    const double half = a * std::sqrt(inside);
    left = box.x + a - half;
    right = box.x + a + half;
    return true;
}

void HardEllipseRow(const MatteView& matte, const MatteBox& box, int y) {
    double left = 0;
    double right = 0;
    if (!Chord(box, y + 0.5, left, right)) {
        return;
    }
    // Pixel x is inside when its centre x + 0.5 lies in [left, right].
    const int first = std::max(0, static_cast<int>(std::ceil(left - 0.5)));
    const int last = std::min(matte.width - 1, static_cast<int>(std::floor(right - 0.5)));
    if (first <= last) {
        std::memset(matte.row(y) + first, 255, static_cast<std::size_t>(last - first + 1));
    }
}

// Adds the coverage of [left, right] on one sub-row to the row's sums: whole
// pixels through a difference list, the two end pixels directly.
void AddChord(double left, double right, int width, std::vector<double>& partial,
              std::vector<double>& whole) {
    left = std::max(left, 0.0);
    right = std::min(right, static_cast<double>(width));
    if (right <= left) {
        return;
    }
    const int first = static_cast<int>(std::floor(left));
    const int last = std::min(width - 1, static_cast<int>(std::ceil(right)) - 1);
    if (first == last) {
        partial[first] += right - left;
        return;
    }
    partial[first] += (first + 1) - left;
    partial[last] += right - last;
    whole[first + 1] += 1.0;
    whole[last] -= 1.0;
}

void SmoothEllipseRow(const MatteView& matte, const MatteBox& box, int y,
                      std::vector<double>& partial, std::vector<double>& whole) {
    std::fill(partial.begin(), partial.end(), 0.0);
    std::fill(whole.begin(), whole.end(), 0.0);
    for (int s = 0; s < kSubRows; ++s) {
        double left = 0;
        double right = 0;
        if (Chord(box, y + (s + 0.5) / kSubRows, left, right)) {
            AddChord(left, right, matte.width, partial, whole);
        }
    }
    std::uint8_t* out = matte.row(y);
    double running = 0;
    for (int x = 0; x < matte.width; ++x) {
        running += whole[x];
        const double cover = (running + partial[x]) / kSubRows;
        out[x] = static_cast<std::uint8_t>(std::lround(std::clamp(cover, 0.0, 1.0) * 255.0));
    }
}

}  // namespace

void RectangleMatte(const MatteView& matte, const MatteBox& box) {
    ClearMatte(matte);
    const int left = std::max(0, box.x);
    const int right = std::min(matte.width, box.x + box.width);
    const int top = std::max(0, box.y);
    const int bottom = std::min(matte.height, box.y + box.height);
    for (int y = top; y < bottom && left < right; ++y) {
        std::memset(matte.row(y) + left, 255, static_cast<std::size_t>(right - left));
    }
}

void EllipseMatte(const MatteView& matte, const MatteBox& box, bool antialias) {
    ClearMatte(matte);
    if (box.width <= 0 || box.height <= 0) {
        return;
    }
    const int top = std::max(0, box.y);
    const int bottom = std::min(matte.height, box.y + box.height);
    std::vector<double> partial;
    std::vector<double> whole;
    if (antialias) {
        partial.resize(static_cast<std::size_t>(matte.width));
        whole.resize(static_cast<std::size_t>(matte.width) + 1);
    }
    for (int y = top; y < bottom; ++y) {
        if (antialias) {
            SmoothEllipseRow(matte, box, y, partial, whole);
        } else {
            HardEllipseRow(matte, box, y);
        }
    }
}

}  // namespace wib
