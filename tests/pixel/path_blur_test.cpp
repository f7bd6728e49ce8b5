// SPDX-License-Identifier: GPL-3.0-or-later
// Spin and zoom blur against direct sums of plainly read samples.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "pixel/path_blur.h"
#include "tests/pixel/rgb_image.h"

namespace wib {
namespace {

using testing::RgbImage;

const std::pair<int, int> kSizes[] = {{1, 1}, {1, 7}, {9, 1}, {13, 8}, {31, 17}};

// Centres in percent of the image: the middle, a corner and an edge.
const std::pair<double, double> kCentres[] = {{50, 50}, {0, 0}, {100, 30}};

// For a pixel at (dx, dy) from the centre and a path parameter t in 0..1,
// the sampled point's offset from the centre.
using Point = std::function<std::pair<double, double>(double dx, double dy, double t)>;

// Every pixel within half a level of the mean of `count` samples spread
// evenly over t = 0..1, and the spare column and row untouched.
void ExpectPathMeans(const RgbImage& image, double cx, double cy,
                     const std::function<int(double length)>& count, double perPixel,
                     const Point& point) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const double dx = x - cx, dy = y - cy;
            const int n = count(std::sqrt(dx * dx + dy * dy) * perPixel);
            for (int c = 0; c < 3; ++c) {
                double sum = 0;
                for (int j = 0; j < n; ++j) {
                    const auto [ox, oy] = point(dx, dy, n == 1 ? 0.0 : double(j) / (n - 1));
                    sum += image.sample(c, cx + ox, cy + oy);
                }
                ASSERT_NEAR(image.result(c, x, y), sum / n, 0.5 + 1e-9)
                    << "channel " << c << " at " << x << "," << y << " of " << image.width << "x"
                    << image.height;
            }
        }
    }
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(image.result(c, image.width, 0), 7);
        EXPECT_EQ(image.result(c, 0, image.height), 7);
    }
}

// One sample a pixel of path and one more, at most 256.
int Samples(double length) {
    int n = 1;
    while (n - 1 < length && n < 256) {
        ++n;
    }
    return n;
}

// The offset turned about the centre by (t - 1/2) of the arc.
Point SpinPoint(double arc) {
    return [arc](double dx, double dy, double t) {
        const double turn = arc * (t - 0.5);
        return std::pair{dx * std::cos(turn) - dy * std::sin(turn),
                         dx * std::sin(turn) + dy * std::cos(turn)};
    };
}

// Runs `rows` over the image in two bands.
template <typename Rows>
void InTwoBands(RgbImage& image, Rows rows) {
    const int split = image.height / 2;
    rows(image.source(), image.target(), 0, split);
    rows(image.source(), image.target(), split, image.height);
}

TEST(PathBlur, SpinAveragesAlongTheArcAboutTheCentre) {
    unsigned seed = 1;
    for (const auto& [w, h] : kSizes) {
        for (const auto& [px, py] : kCentres) {
            for (double degrees : {1.0, 45.0, 360.0}) {
                RgbImage image(w, h, seed++);
                const double cx = px * (w - 1) / 100, cy = py * (h - 1) / 100;
                InTwoBands(image, [&](const RgbPlanes& s, const RgbTarget& t, int a, int b) {
                    SpinBlurRows(s, t, a, b, {cx, cy}, degrees);
                });
                const double arc = degrees * std::numbers::pi / 180;
                ExpectPathMeans(image, cx, cy, Samples, arc, SpinPoint(arc));
            }
        }
    }
}

TEST(PathBlur, ZoomAveragesAlongTheRayTowardTheCentre) {
    unsigned seed = 100;
    for (const auto& [w, h] : kSizes) {
        for (const auto& [px, py] : kCentres) {
            for (double amount : {1.0, 30.0, 100.0}) {
                RgbImage image(w, h, seed++);
                const double cx = px * (w - 1) / 100, cy = py * (h - 1) / 100;
                InTwoBands(image, [&](const RgbPlanes& s, const RgbTarget& t, int a, int b) {
                    ZoomBlurRows(s, t, a, b, {cx, cy}, amount);
                });
                const double f = amount / 100;
                ExpectPathMeans(image, cx, cy, Samples, f, [f](double dx, double dy, double t) {
                    return std::pair{dx * (1 - f * t), dy * (1 - f * t)};
                });
            }
        }
    }
}

TEST(PathBlur, LongArcsAreThinnedToTheSampleLimit) {
    // Far from a corner centre a full turn is over a thousand pixels long.
    RgbImage image(300, 3, 5);
    SpinBlurRows(image.source(), image.target(), 0, 3, {0, 0}, 360);
    const double arc = 2 * std::numbers::pi;
    ExpectPathMeans(image, 0, 0, Samples, arc, SpinPoint(arc));
}

}  // namespace
}  // namespace wib
