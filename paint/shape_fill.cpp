// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/shape_fill.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/document.h"
#include "pixel/blend.h"
#include "pixel/rounding.h"

namespace wib {

namespace {

// Sub-rows per pixel row: the ellipse's coverage is exact across a row and
// sampled this finely down it.
constexpr int kSubRows = 16;

// Mixes the colour into pixel (x, y) by `share` (0..1) of full strength,
// weighted by the matte there.
void MixPixel(Document& doc, int x, int y, PackedColour colour, double share) {
    const double weight = share * doc.ABuffer.row(y)[x];
    const int m = 255 - std::clamp(RoundHalfEven(weight), 0, 255);
    std::uint8_t& r = doc.RBuffer.row(y)[x];
    std::uint8_t& g = doc.GBuffer.row(y)[x];
    std::uint8_t& b = doc.BBuffer.row(y)[x];
    r = MaskMix(colour.r, r, m);
    g = MaskMix(colour.g, g, m);
    b = MaskMix(colour.b, b, m);
}

}  // namespace

ShapeBox ShapeBox::FromCorners(int x0, int y0, int x1, int y1) {
    return {std::min(x0, x1), std::min(y0, y1), std::max(x0, x1), std::max(y0, y1)};
}

void FillRectangle(Document& document, const ShapeBox& box, PackedColour colour) {
    const int x0 = std::max(box.left, 0);
    const int x1 = std::min(box.right, document.width - 1);
    const int y0 = std::max(box.top, 0);
    const int y1 = std::min(box.bottom, document.height - 1);
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x) {
            MixPixel(document, x, y, colour, 1.0);
        }
    }
}

void FillEllipse(Document& document, const ShapeBox& box, PackedColour colour) {
    // Pixel x covers [x, x + 1): the ellipse's centre and semi-axes in those units.
    const double cx = (box.left + box.right + 1) / 2.0;
    const double cy = (box.top + box.bottom + 1) / 2.0;
    const double a = box.width() / 2.0;
    const double b = box.height() / 2.0;
    const int x0 = std::max(box.left, 0);
    const int x1 = std::min(box.right, document.width - 1);
    const int y0 = std::max(box.top, 0);
    const int y1 = std::min(box.bottom, document.height - 1);
    if (x1 < x0) {
        return;
    }
    std::vector<double> coverage(static_cast<std::size_t>(x1 - x0 + 1));
    for (int y = y0; y <= y1; ++y) {
        std::fill(coverage.begin(), coverage.end(), 0.0);
        for (int s = 0; s < kSubRows; ++s) {
            const double t = (y + (s + 0.5) / kSubRows - cy) / b;
            if (std::abs(t) >= 1.0) {
                continue;
            }
            const double half = a * std::sqrt(1.0 - t * t);
            const double left = cx - half;
            const double right = cx + half;
            const int first = std::max(x0, static_cast<int>(std::floor(left)));
            const int last = std::min(x1, static_cast<int>(std::ceil(right)) - 1);
            for (int x = first; x <= last; ++x) {
                const double covered =
                    std::min(right, x + 1.0) - std::max(left, static_cast<double>(x));
                coverage[static_cast<std::size_t>(x - x0)] += covered / kSubRows;
            }
        }
        for (int x = x0; x <= x1; ++x) {
            const double share = coverage[static_cast<std::size_t>(x - x0)];
            if (share > 0.0) {
                MixPixel(document, x, y, colour, std::min(share, 1.0));
            }
        }
    }
}

}  // namespace wib
