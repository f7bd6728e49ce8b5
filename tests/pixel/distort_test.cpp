// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "pixel/distort.h"
#include "tests/pixel/rgb_image.h"

namespace wib {
namespace {

using Image = testing::RgbImage;

const std::pair<int, int> kSizes[] = {{1, 1}, {1, 7}, {9, 1}, {13, 8}, {31, 17}};

template <typename Map>
void Remap(Image& image, Map map) {
    MapRows(image.source(), image.target(), 0, image.height, map);
}

// Every image pixel within one rounding step of the plain reading at the
// point `where` gives, and the spare column and row untouched.
template <typename Where>
void ExpectSampled(const Image& image, Where where) {
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            double sx = x, sy = y;
            where(x, y, sx, sy);
            for (int c = 0; c < 3; ++c) {
                EXPECT_NEAR(image.result(c, x, y), image.sample(c, sx, sy), 0.5 + 1e-9)
                    << x << "," << y;
            }
        }
    }
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(image.result(c, image.width, 0), 7);
        EXPECT_EQ(image.result(c, 0, image.height), 7);
    }
}

TEST(Distort, BilinearSamplingRoundsAndClamps) {
    const std::uint8_t row[] = {0, 255, 1, 0};
    const RgbPlanes image{{row, row, row}, 4, 3, 1};
    std::uint8_t out[3];
    SampleBilinear(image, 0.5, 0, out);
    EXPECT_EQ(out[0], 128);  // 127.5
    SampleBilinear(image, 1.5, 0, out);
    EXPECT_EQ(out[0], 128);
    SampleBilinear(image, 1.999, 0, out);
    EXPECT_EQ(out[0], 1);
    SampleBilinear(image, 2.5, 0, out);
    EXPECT_EQ(out[0], 1) << "the spare column is never read";
    SampleBilinear(image, -4, -9, out);
    EXPECT_EQ(out[0], 0);
}

TEST(Distort, NeutralSettingsLeaveTheImage) {
    for (const auto& [w, h] : kSizes) {
        Image image(w, h, unsigned(w * 100 + h));
        const CentreFrame frame(image.source());
        const auto identity = [](int, int, double&, double&) {};
        Remap(image, TwirlMap{frame, 0.0});
        ExpectSampled(image, identity);
        Remap(image, SpherizeMap{frame, 1.0});
        ExpectSampled(image, identity);
        Remap(image, WaveMap{0.0, 10.0});
        ExpectSampled(image, identity);
        Remap(image, RippleMap{frame, 0.0, 10.0});
        ExpectSampled(image, identity);
    }
}

TEST(Distort, MapsAgreeWithPlainReferences) {
    constexpr double kPi = 3.14159265358979323846;
    for (const auto& [w, h] : kSizes) {
        Image image(w, h, unsigned(w * 7 + h));
        const double cx = (w - 1) / 2.0, cy = (h - 1) / 2.0;
        const double radius = std::max(0.5, std::min(w, h) / 2.0);
        const CentreFrame frame(image.source());

        Remap(image, WaveMap{3.5, 11.0});
        ExpectSampled(image, [](int x, int y, double& sx, double& sy) {
            sx = x + 3.5 * std::sin(2 * kPi * y / 11.0);
            sy = y + 3.5 * std::sin(2 * kPi * x / 11.0);
        });

        Remap(image, TwirlMap{frame, kPi / 2});
        ExpectSampled(image, [&](int x, int y, double& sx, double& sy) {
            const double dx = x - cx, dy = y - cy, d = std::sqrt(dx * dx + dy * dy);
            if (d < radius) {
                const double a = kPi / 2 * (1 - d / radius);
                sx = cx + dx * std::cos(a) - dy * std::sin(a);
                sy = cy + dx * std::sin(a) + dy * std::cos(a);
            }
        });

        Remap(image, SpherizeMap{frame, 2.0});
        ExpectSampled(image, [&](int x, int y, double& sx, double& sy) {
            const double dx = x - cx, dy = y - cy, d = std::sqrt(dx * dx + dy * dy);
            if (d < radius) {
                // r^2 / r = r: the source lies at d^2 / radius.
                sx = cx + dx * d / radius;
                sy = cy + dy * d / radius;
            }
        });

        Remap(image, PolarMap{frame, w, h, true});
        ExpectSampled(image, [&](int x, int y, double& sx, double& sy) {
            const double a = 2 * kPi * x / w, d = y * radius / h;
            sx = cx + d * std::sin(a);
            sy = cy - d * std::cos(a);
        });
    }
}

TEST(Distort, PolarRingsComeFromRows) {
    // Rectangular to polar: straight above the centre is angle 0, column 0;
    // one pixel up is 1 / 4.5 of the radius, two rows of nine down the source.
    Image image(9, 9, 3);
    Remap(image, PolarMap{CentreFrame(image.source()), 9, 9, false});
    for (int c = 0; c < 3; ++c) {
        EXPECT_NEAR(image.result(c, 4, 3), image.sample(c, 0, 2), 0.5 + 1e-9);
        EXPECT_NEAR(image.result(c, 4, 0), image.sample(c, 0, 8), 0.5 + 1e-9);
    }
}

TEST(Distort, DisplaceShiftsByTheSwapImage) {
    Image image(6, 3, 11);
    std::vector<std::uint8_t> red(image.planes[0].size(), 192), green(red.size(), 128);
    Remap(image, DisplaceMap{red.data(), green.data(), image.stride, 32.0});
    // (192 - 128) 32 / 128 = 16 pixels right: past the edge, so the last column.
    ExpectSampled(image, [](int x, int y, double& sx, double& sy) {
        sx = x + 16;
        sy = y;
    });
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(image.result(c, 0, 1), image.in(c, 5, 1));
    }
}

TEST(Distort, PixelateTakesRoundedBlockMeans) {
    for (const auto& [w, h] : kSizes) {
        for (const int size : {2, 3, 40}) {
            Image image(w, h, unsigned(size + w));
            const int blocks = (h + size - 1) / size;
            PixelateRows(image.source(), image.target(), size, 0, blocks / 2);
            PixelateRows(image.source(), image.target(), size, blocks / 2, blocks);
            for (int y = 0; y < h; ++y) {
                for (int x = 0; x < w; ++x) {
                    const int left = x / size * size, top = y / size * size;
                    for (int c = 0; c < 3; ++c) {
                        int sum = 0, count = 0;
                        for (int v = top; v < std::min(h, top + size); ++v) {
                            for (int u = left; u < std::min(w, left + size); ++u) {
                                sum += image.in(c, u, v);
                                ++count;
                            }
                        }
                        EXPECT_NEAR(image.result(c, x, y), double(sum) / count, 0.5 + 1e-9);
                    }
                }
            }
            EXPECT_EQ(image.result(0, w, 0), 7);
        }
    }
}

}  // namespace
}  // namespace wib
