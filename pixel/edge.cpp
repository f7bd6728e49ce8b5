// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/edge.h"

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace wib {

namespace {

// Three source rows, each extended by one replicated pixel each side.
class ThreeRows {
  public:
    explicit ThreeRows(int width) : width_(width), data_(3 * static_cast<std::size_t>(width + 2)) {}

    void load(const PlaneBand& band, int y) {
        for (int k = 0; k < 3; ++k) {
            ExtendRow(band.sourceRow(y + k - 1), width_, 1, row(k));
        }
    }
    // Row k (0 above, 1 centre, 2 below); index x + 1 is column x.
    int* row(int k) { return data_.data() + static_cast<std::size_t>(k) * (width_ + 2); }

  private:
    int width_;
    std::vector<int> data_;
};

WIB_WINDOW_KERNEL void SobelRow(ThreeRows& rows, int width, int* gx, int* gy) {
    const int* a = rows.row(0);
    const int* c = rows.row(1);
    const int* b = rows.row(2);
    for (int x = 0; x < width; ++x) {
        gx[x] = (a[x + 2] + 2 * c[x + 2] + b[x + 2]) - (a[x] + 2 * c[x] + b[x]);
        gy[x] = (b[x] + 2 * b[x + 1] + b[x + 2]) - (a[x] + 2 * a[x + 1] + a[x + 2]);
    }
}

std::uint8_t Clamp255(double v) {
    return static_cast<std::uint8_t>(std::clamp(std::round(v), 0.0, 255.0));
}

}  // namespace

void GradientFilter(const PlaneBand& band, const GradientMap& map) {
    ThreeRows rows(band.width);
    std::vector<int> gx(static_cast<std::size_t>(band.width));
    std::vector<int> gy(gx.size());
    const double radians = map.angleDegrees * std::numbers::pi / 180;
    const double ex = map.depth * std::cos(radians) / 4;
    const double ey = map.depth * std::sin(radians) / 4;
    for (int y = band.first; y < band.end; ++y) {
        rows.load(band, y);
        SobelRow(rows, band.width, gx.data(), gy.data());
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            const double gxv = gx[static_cast<std::size_t>(x)];
            const double gyv = gy[static_cast<std::size_t>(x)];
            const double magnitude = std::sqrt(gxv * gxv + gyv * gyv);
            switch (map.kind) {
                case GradientMap::Kind::Magnitude:
                    out[x] = Clamp255(magnitude);
                    break;
                case GradientMap::Kind::InvertedMagnitude:
                    out[x] = static_cast<std::uint8_t>(255 - Clamp255(magnitude));
                    break;
                case GradientMap::Kind::Threshold:
                    out[x] = magnitude >= map.level ? 255 : 0;
                    break;
                case GradientMap::Kind::Emboss:
                    out[x] = Clamp255(128 + ex * gxv + ey * gyv);
                    break;
            }
        }
    }
}

void LaplacianFilter(const PlaneBand& band) {
    ThreeRows rows(band.width);
    for (int y = band.first; y < band.end; ++y) {
        rows.load(band, y);
        const int* a = rows.row(0);
        const int* c = rows.row(1);
        const int* b = rows.row(2);
        std::uint8_t* out = band.targetRow(y);
        for (int x = 0; x < band.width; ++x) {
            const int around =
                a[x] + a[x + 1] + a[x + 2] + c[x] + c[x + 2] + b[x] + b[x + 1] + b[x + 2];
            out[x] = static_cast<std::uint8_t>(std::min(std::abs(8 * c[x + 1] - around), 255));
        }
    }
}

}  // namespace wib
