// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/path_blur.h"

#include <algorithm>
#include <numbers>

namespace wib {

namespace {

// How many samples a path of `length` pixels takes: one a pixel and one more.
int SampleCount(double length) {
    return static_cast<int>(std::min<double>(kMaxPathSamples, std::ceil(length) + 1));
}

// Each pixel the rounded mean of the samples `path(x, y, count, point)` puts
// at t = j / (count - 1), j = 0..count-1; `path.count(dx, dy)` says how many
// for a pixel at (dx, dy) from the centre. Only the centre itself, where
// every t gives the same point, has a single sample.
template <typename Path>
void PathRows(const RgbPlanes& source, const RgbTarget& target, int first, int end,
              BlurCentre centre, const Path& path) {
    for (int y = first; y < end; ++y) {
        const std::size_t row = static_cast<std::size_t>(y) * target.stride;
        const double dy = y - centre.y;
        for (int x = 0; x < source.width; ++x) {
            const double dx = x - centre.x;
            const int count = path.count(dx, dy);
            double sum[3] = {0, 0, 0};
            for (int j = 0; j < count; ++j) {
                const double t = count == 1 ? 0.0 : j / double(count - 1);
                double sx = 0, sy = 0;
                path.at(dx, dy, t, sx, sy);
                double sample[3];
                BilinearAt(source, centre.x + sx, centre.y + sy, sample);
                for (int c = 0; c < 3; ++c) {
                    sum[c] += sample[c];
                }
            }
            for (int c = 0; c < 3; ++c) {
                // A mean of 0..255 values needs no clamp.
                target.planes[c][row + static_cast<std::size_t>(x)] =
                    static_cast<std::uint8_t>(RoundHalfEven(sum[c] / count));
            }
        }
    }
}

struct SpinPath {
    double radians;
    int count(double dx, double dy) const { return SampleCount(std::hypot(dx, dy) * radians); }
    // The offset turned by (t - 1/2) of the arc.
    void at(double dx, double dy, double t, double& sx, double& sy) const {
        const double turn = radians * (t - 0.5);
        const double c = std::cos(turn), s = std::sin(turn);
        sx = dx * c - dy * s;
        sy = dx * s + dy * c;
    }
};

struct ZoomPath {
    double fraction;
    int count(double dx, double dy) const { return SampleCount(std::hypot(dx, dy) * fraction); }
    // From the pixel (t = 0) toward the centre by `fraction` of the way (t = 1).
    void at(double dx, double dy, double t, double& sx, double& sy) const {
        const double scale = 1.0 - fraction * t;
        sx = dx * scale;
        sy = dy * scale;
    }
};

}  // namespace

void SpinBlurRows(const RgbPlanes& source, const RgbTarget& target, int first, int end,
                  BlurCentre centre, double angleDegrees) {
    PathRows(source, target, first, end, centre, SpinPath{angleDegrees * std::numbers::pi / 180.0});
}

void ZoomBlurRows(const RgbPlanes& source, const RgbTarget& target, int first, int end,
                  BlurCentre centre, double amountPercent) {
    PathRows(source, target, first, end, centre, ZoomPath{amountPercent / 100.0});
}

}  // namespace wib
