// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/distort.h"

#include <algorithm>
#include <numbers>

namespace wib {

void TwirlMap::operator()(int x, int y, double& sx, double& sy) const {
    const double dx = x - frame.cx, dy = y - frame.cy;
    const double d = std::hypot(dx, dy);
    if (d >= frame.radius) {
        return;
    }
    const double angle = radians * (1.0 - d / frame.radius);
    const double c = std::cos(angle), s = std::sin(angle);
    sx = frame.cx + dx * c - dy * s;
    sy = frame.cy + dx * s + dy * c;
}

void SpherizeMap::operator()(int x, int y, double& sx, double& sy) const {
    const double dx = x - frame.cx, dy = y - frame.cy;
    const double d = std::hypot(dx, dy);
    if (d >= frame.radius || d == 0.0) {
        return;
    }
    const double r = d / frame.radius;
    const double scale = std::pow(r, exponent) / r;
    sx = frame.cx + dx * scale;
    sy = frame.cy + dy * scale;
}

void RippleMap::operator()(int x, int y, double& sx, double& sy) const {
    const double dx = x - frame.cx, dy = y - frame.cy;
    const double d = std::hypot(dx, dy);
    if (d >= frame.radius || d == 0.0) {
        return;
    }
    const double scale = (d + amplitude * std::sin(2.0 * std::numbers::pi * d / wavelength)) / d;
    sx = frame.cx + dx * scale;
    sy = frame.cy + dy * scale;
}

void WaveMap::operator()(int x, int y, double& sx, double& sy) const {
    sx = x + amplitude * std::sin(2.0 * std::numbers::pi * y / wavelength);
    sy = y + amplitude * std::sin(2.0 * std::numbers::pi * x / wavelength);
}

void PolarMap::operator()(int x, int y, double& sx, double& sy) const {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    if (!inverse) {
        const double dx = x - frame.cx, dy = y - frame.cy;
        double angle = std::atan2(dx, -dy);
        if (angle < 0) {
            angle += kTurn;
        }
        sx = angle / kTurn * width;
        sy = std::hypot(dx, dy) / frame.radius * height;
        return;
    }
    const double angle = x * kTurn / width;
    const double d = y * frame.radius / height;
    sx = frame.cx + d * std::sin(angle);
    sy = frame.cy - d * std::cos(angle);
}

void DisplaceMap::operator()(int x, int y, double& sx, double& sy) const {
    const std::size_t at = static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x);
    sx = x + (red[at] - 128) * amount / 128.0;
    sy = y + (green[at] - 128) * amount / 128.0;
}

void PixelateRows(const RgbPlanes& source, const RgbTarget& target, int size, int firstBlock,
                  int endBlock) {
    for (int by = firstBlock; by < endBlock; ++by) {
        const int top = by * size, bottom = std::min(source.height, top + size);
        for (int left = 0; left < source.width; left += size) {
            const int right = std::min(source.width, left + size);
            const double count = double(right - left) * (bottom - top);
            for (int c = 0; c < 3; ++c) {
                long long sum = 0;
                for (int y = top; y < bottom; ++y) {
                    const std::uint8_t* row = source.planes[c] + std::size_t(y) * source.stride;
                    for (int x = left; x < right; ++x) {
                        sum += row[x];
                    }
                }
                const auto mean = static_cast<std::uint8_t>(RoundHalfEven(double(sum) / count));
                for (int y = top; y < bottom; ++y) {
                    std::fill(target.planes[c] + std::size_t(y) * target.stride + left,
                              target.planes[c] + std::size_t(y) * target.stride + right, mean);
                }
            }
        }
    }
}

}  // namespace wib
