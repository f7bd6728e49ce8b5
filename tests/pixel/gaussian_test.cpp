// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "pixel/gaussian.h"
#include "pixel/sharpen.h"
#include "tests/pixel/window_image.h"

namespace wib {
namespace {

using testing::WindowImage;

// The exact float Gaussian: a normalised separable kernel to +-5 sigma over
// the replicated border, in double.
std::vector<double> ExactGaussian(const WindowImage& image, double sigma) {
    const int reach = static_cast<int>(std::ceil(5 * sigma));
    std::vector<double> weights;
    double total = 0;
    for (int k = -reach; k <= reach; ++k) {
        weights.push_back(std::exp(-k * k / (2 * sigma * sigma)));
        total += weights.back();
    }
    const auto w = [&](int k) { return weights[static_cast<std::size_t>(k + reach)] / total; };
    std::vector<double> across(static_cast<std::size_t>(image.width * image.height));
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            double sum = 0;
            for (int k = -reach; k <= reach; ++k) {
                sum += w(k) * image.at(x + k, y);
            }
            across[static_cast<std::size_t>(y * image.width + x)] = sum;
        }
    }
    std::vector<double> result(across.size());
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            double sum = 0;
            for (int k = -reach; k <= reach; ++k) {
                const int yy = std::clamp(y + k, 0, image.height - 1);
                sum += w(k) * across[static_cast<std::size_t>(yy * image.width + x)];
            }
            result[static_cast<std::size_t>(y * image.width + x)] = sum;
        }
    }
    return result;
}

// A few large blocks of random grey with hard edges: the worst case for an
// approximated kernel is a step, and random noise alone would hide it.
WindowImage Blocks(int w, int h, unsigned seed) {
    WindowImage image(w, h, seed);
    for (int y = 0; y <= h; ++y) {
        for (int x = 0; x <= w; ++x) {
            image.source[static_cast<std::size_t>(y * image.stride + x)] =
                image.source[static_cast<std::size_t>((y / 16 * 16) * image.stride + x / 16 * 16)];
        }
    }
    return image;
}

TEST(Gaussian, EveryPixelWithinThreeOfTheExactGaussianAndOneOnAverage) {
    unsigned seed = 1;
    for (double sigma : {0.3, 0.8, 2.0, 2.9, 3.0, 5.5, 20.0, 60.0}) {
        for (const auto& [w, h] : {std::pair{1, 1}, {1, 40}, {40, 1}, {97, 83}, {150, 131}}) {
            WindowImage image = Blocks(w, h, seed++);
            image.run([sigma](const PlaneBand& band) { GaussianBlur(band, sigma); });
            const auto exact = ExactGaussian(image, sigma);
            double error = 0;
            image.expectEach(
                [&](int x, int y) {
                    const double e = exact[static_cast<std::size_t>(y * w + x)];
                    error += std::abs(image.out(x, y) - e);
                    return e;
                },
                3.0);
            EXPECT_LE(error / (w * h), 1.0) << "sigma " << sigma << " " << w << "x" << h;
        }
    }
}

TEST(Gaussian, UnsharpSharpensOnlyDifferencesAtTheThreshold) {
    const std::uint8_t source[5] = {100, 100, 200, 10, 250};
    const std::uint8_t blurred[5] = {90, 99, 150, 30, 200};
    std::uint8_t out[5];
    UnsharpRow(source, blurred, 5, 1.5, 5, out);
    // 100 + 1.5 * 10 = 115; difference 1 stays; 200 + 75 = 275 clamps;
    // 10 - 30 = -20 -> -20 clamps to 0; 250 + 75 clamps.
    const std::uint8_t expected[5] = {115, 100, 255, 0, 255};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(out[i], expected[i]) << i;
    }
}

}  // namespace
}  // namespace wib
