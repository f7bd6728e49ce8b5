// SPDX-License-Identifier: GPL-3.0-or-later
// Each window kernel against direct loops over the replicated-border window.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>
#include <vector>

#include "pixel/box_blur.h"
#include "pixel/convolve.h"
#include "pixel/edge.h"
#include "pixel/lens_blur.h"
#include "pixel/motion_blur.h"
#include "pixel/rank.h"
#include "pixel/surface_blur.h"
#include "tests/pixel/window_image.h"

namespace wib {
namespace {

using testing::kWindowSizes;
using testing::WindowImage;

std::vector<int> Window(const WindowImage& image, int x, int y, int radius) {
    std::vector<int> values;
    for (int j = -radius; j <= radius; ++j) {
        for (int i = -radius; i <= radius; ++i) {
            values.push_back(image.at(x + i, y + j));
        }
    }
    return values;
}

void ExpectRoundedWindowMeans(WindowImage& image, int radius) {
    image.run([radius](const PlaneBand& band) { BoxBlur(band, radius); });
    image.expectEach([&](int x, int y) {
        const auto values = Window(image, x, y, radius);
        double sum = 0;
        for (int v : values) {
            sum += v;
        }
        return std::floor(sum / static_cast<double>(values.size()) + 0.5);
    });
}

TEST(WindowFilters, BoxBlurIsTheRoundedWindowMean) {
    unsigned seed = 1;
    for (const auto& [w, h] : kWindowSizes) {
        for (int radius : {1, 2, 5, 7, 8, 9, 30}) {
            WindowImage image(w, h, seed++);
            ExpectRoundedWindowMeans(image, radius);
        }
    }
}

// Near-white windows carry the largest sums, where narrow sums would wrap.
TEST(WindowFilters, BoxBlurOfBrightWindowsKeepsTheirWholeSum) {
    unsigned seed = 50;
    for (int radius : {6, 7, 8}) {
        WindowImage image(67, 19, seed++);
        for (auto& v : image.source) {
            v = static_cast<std::uint8_t>(240 + v % 16);
        }
        ExpectRoundedWindowMeans(image, radius);
    }
}

TEST(WindowFilters, RankFiltersPickTheWindowsMedianMinimumAndMaximum) {
    unsigned seed = 100;
    for (const auto& [w, h] : kWindowSizes) {
        for (int radius : {1, 2, 7}) {
            WindowImage median(w, h, seed);
            median.run([radius](const PlaneBand& band) { MedianFilter(band, radius); });
            median.expectEach([&](int x, int y) {
                auto values = Window(median, x, y, radius);
                std::sort(values.begin(), values.end());
                return values[values.size() / 2];
            });
            WindowImage minimum(w, h, seed);
            minimum.run([radius](const PlaneBand& band) { MinimumFilter(band, radius); });
            minimum.expectEach([&](int x, int y) {
                const auto values = Window(minimum, x, y, radius);
                return *std::min_element(values.begin(), values.end());
            });
            WindowImage maximum(w, h, seed++);
            maximum.run([radius](const PlaneBand& band) { MaximumFilter(band, radius); });
            maximum.expectEach([&](int x, int y) {
                const auto values = Window(maximum, x, y, radius);
                return *std::max_element(values.begin(), values.end());
            });
        }
    }
}

// Blocks of values a few bins apart with a little noise: the window's median
// moves between histogram bins, back to bins it left, and across the columns
// a kernel works in together, up to the largest radius.
TEST(WindowFilters, MedianFollowsStepsAcrossHistogramBins) {
    unsigned seed = 200;
    for (const auto& [w, h, radius] :
         {std::tuple{1037, 23, 3}, {1037, 23, 7}, {533, 41, 20}, {131, 103, 50}}) {
        WindowImage image(w, h, seed++);
        for (int y = 0; y <= h; ++y) {
            for (int x = 0; x <= w; ++x) {
                std::uint8_t& v = image.source[static_cast<std::size_t>(y * image.stride + x)];
                v = static_cast<std::uint8_t>(((x / 13) * 37 + (y / 11) * 71 + v % 5) % 256);
            }
        }
        image.run([radius](const PlaneBand& band) { MedianFilter(band, radius); });
        image.expectEach([&](int x, int y) {
            auto values = Window(image, x, y, radius);
            const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
            std::nth_element(values.begin(), middle, values.end());
            return *middle;
        });
    }
}

TEST(WindowFilters, DespeckleReplacesOnlyPixelsFarFromTheirMedian) {
    WindowImage image(23, 17, 7);
    image.run([](const PlaneBand& band) { Despeckle(band, 40); });
    image.expectEach([&](int x, int y) {
        auto values = Window(image, x, y, 1);
        std::sort(values.begin(), values.end());
        const int p = image.at(x, y);
        return std::abs(p - values[4]) > 40 ? values[4] : p;
    });
}

// The sum of kernel times window in long arithmetic, divided as C does.
double Correlate(const WindowImage& image, int x, int y, const std::vector<int>& kernel,
                 int divisor, int offset) {
    const int size = kernel.size() == 9 ? 3 : 5;
    const auto values = Window(image, x, y, size / 2);
    long long sum = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sum += static_cast<long long>(kernel[i]) * values[i];
    }
    return std::clamp(sum / divisor + offset, 0LL, 255LL);
}

TEST(WindowFilters, ConvolveCorrelatesAsWrittenAndTruncatesTowardZero) {
    std::mt19937 random(5);
    std::uniform_int_distribution<int> weight(-9, 9);
    unsigned seed = 200;
    for (const auto& [w, h] : kWindowSizes) {
        // Weights that keep the sums in 16 bits, in single precision, and beyond.
        for (const auto& [size, scale] : {std::pair{3, 1}, {5, 1}, {3, 300}, {5, 7000}}) {
            std::vector<int> kernel(static_cast<std::size_t>(size * size));
            for (int& k : kernel) {
                k = weight(random) * scale;
            }
            for (const auto& [divisor, offset] : {std::pair{1, 0}, {7, 128}, {-3, 20}, {-61, 9}}) {
                WindowImage image(w, h, seed++);
                image.run([&](const PlaneBand& band) {
                    Convolve(band, kernel.data(), size, divisor, offset);
                });
                image.expectEach(
                    [&](int x, int y) { return Correlate(image, x, y, kernel, divisor, offset); });
            }
        }
    }
}

TEST(WindowFilters, ConvolveRoundsNegativeQuotientsTowardZero) {
    // Uniform 10s under a kernel summing to -1: sum -10, / 4 is -2.5 -> -2.
    WindowImage image(4, 3, 1);
    std::fill(image.source.begin(), image.source.end(), 10);
    const int kernel[9] = {0, 0, 0, 0, -1, 0, 0, 0, 0};
    image.run([&](const PlaneBand& band) { Convolve(band, kernel, 3, 4, 5); });
    image.expectEach([](int, int) { return 3; });
    // The first value lies over (x - 1, y - 1): a shift down and to the right.
    WindowImage shifted(6, 5, 2);
    const int corner[9] = {1, 0, 0, 0, 0, 0, 0, 0, 0};
    shifted.run([&](const PlaneBand& band) { Convolve(band, corner, 3, 1, 0); });
    shifted.expectEach([&](int x, int y) { return shifted.at(x - 1, y - 1); });
}

TEST(WindowFilters, EdgeFiltersMapTheSobelGradientAndTheLaplacian) {
    WindowImage image(23, 17, 9);
    const auto gradient = [&](int x, int y) {
        const auto v = [&](int i, int j) { return image.at(x + i, y + j); };
        const double gx = v(1, -1) + 2 * v(1, 0) + v(1, 1) - v(-1, -1) - 2 * v(-1, 0) - v(-1, 1);
        const double gy = v(-1, 1) + 2 * v(0, 1) + v(1, 1) - v(-1, -1) - 2 * v(0, -1) - v(1, -1);
        return std::pair{gx, gy};
    };
    image.run([](const PlaneBand& band) { GradientFilter(band, {}); });
    image.expectEach([&](int x, int y) {
        const auto [gx, gy] = gradient(x, y);
        return std::min(255.0, std::round(std::hypot(gx, gy)));
    });
    GradientMap emboss{GradientMap::Kind::Emboss, 0, 0, 2};
    image.run([&](const PlaneBand& band) { GradientFilter(band, emboss); });
    image.expectEach([&](int x, int y) {
        return std::clamp(std::round(128 + 2 * gradient(x, y).first / 4), 0.0, 255.0);
    });
    GradientMap threshold{GradientMap::Kind::Threshold, 300, 0, 0};
    image.run([&](const PlaneBand& band) { GradientFilter(band, threshold); });
    image.expectEach([&](int x, int y) {
        const auto [gx, gy] = gradient(x, y);
        return std::hypot(gx, gy) >= 300 ? 255 : 0;
    });
    image.run([](const PlaneBand& band) { LaplacianFilter(band); });
    image.expectEach([&](int x, int y) {
        const auto values = Window(image, x, y, 1);
        int around = 0;
        for (int v : values) {
            around += v;
        }
        return std::min(255, std::abs(9 * image.at(x, y) - around));
    });
}

TEST(WindowFilters, MotionBlurAveragesAlongItsLine) {
    WindowImage horizontal(23, 9, 11);
    horizontal.run([](const PlaneBand& band) { MotionBlur(band, 0, 4); });
    horizontal.expectEach([&](int x, int y) {
        double sum = 0;
        for (int i = -2; i <= 2; ++i) {
            sum += horizontal.at(x + i, y);
        }
        return std::floor(sum / 5 + 0.5);
    });
    WindowImage vertical(9, 23, 12);
    vertical.run([](const PlaneBand& band) { MotionBlur(band, 90, 6); });
    vertical.expectEach([&](int x, int y) {
        double sum = 0;
        for (int j = -3; j <= 3; ++j) {
            sum += vertical.at(x, y + j);
        }
        return std::floor(sum / 7 + 0.5);
    });
}

TEST(WindowFilters, LensBlurIsTheRoundedMeanOverTheDisc) {
    unsigned seed = 300;
    for (const auto& [w, h] : kWindowSizes) {
        for (int radius : {1, 2, 5, 12}) {
            WindowImage image(w, h, seed++);
            image.run([radius](const PlaneBand& band) { LensBlur(band, radius); });
            image.expectEach([&](int x, int y) {
                double sum = 0, count = 0;
                for (int j = -radius; j <= radius; ++j) {
                    for (int i = -radius; i <= radius; ++i) {
                        if (std::hypot(i, j) <= radius + 1e-9) {
                            sum += image.at(x + i, y + j);
                            ++count;
                        }
                    }
                }
                return std::floor(sum / count + 0.5);
            });
        }
    }
    // Radius 1 is the plus-shaped cross of five.
    WindowImage cross(3, 3, 9);
    cross.run([](const PlaneBand& band) { LensBlur(band, 1); });
    const double centre =
        cross.at(1, 1) + cross.at(0, 1) + cross.at(2, 1) + cross.at(1, 0) + cross.at(1, 2);
    EXPECT_EQ(cross.out(1, 1), std::floor(centre / 5 + 0.5));
}

TEST(WindowFilters, SurfaceBlurWeighsNeighboursByTheirDifference) {
    unsigned seed = 400;
    for (const auto& [w, h] : kWindowSizes) {
        for (const auto& [radius, threshold] : {std::pair{1, 10}, {2, 40}, {4, 1}, {7, 255}}) {
            WindowImage image(w, h, seed++);
            image.run([&](const PlaneBand& band) { SurfaceBlur(band, radius, threshold); });
            // The weight is the threshold up to the threshold, then falls in a
            // straight line to zero at twice the threshold.
            image.expectEach(
                [&](int x, int y) {
                    double sum = 0, total = 0;
                    for (const int v : Window(image, x, y, radius)) {
                        const double d = std::abs(v - image.at(x, y));
                        const double weight = d <= threshold         ? threshold
                                              : d >= 2.0 * threshold ? 0.0
                                                                     : 2.0 * threshold - d;
                        sum += weight * v;
                        total += weight;
                    }
                    return sum / total;
                },
                0.5 + 1e-9);
        }
    }
}

TEST(WindowFilters, SurfaceBlurKeepsAStepSteeperThanTwiceTheThreshold) {
    // Left half 20, right half 200, a little noise inside each half.
    WindowImage image(10, 6, 1);
    for (int y = 0; y <= 6; ++y) {
        for (int x = 0; x <= 10; ++x) {
            image.source[static_cast<std::size_t>(y * 11 + x)] =
                static_cast<std::uint8_t>((x < 5 ? 20 : 200) + (x + y) % 3);
        }
    }
    image.run([](const PlaneBand& band) { SurfaceBlur(band, 3, 30); });
    for (int y = 0; y < 6; ++y) {
        EXPECT_NEAR(image.out(4, y), 21, 1) << y;
        EXPECT_NEAR(image.out(5, y), 201, 1) << y;
    }
}

}  // namespace
}  // namespace wib
