// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

#include "pixel/onion.h"

namespace wib {
namespace {

constexpr int kWidth = 37;  // odd, so that vector loops leave a tail
constexpr int kHeight = 5;
constexpr std::size_t kSize = static_cast<std::size_t>(kWidth) * kHeight;

struct Picture {
    std::array<std::vector<std::uint8_t>, 4> planes;
    explicit Picture(std::uint8_t fill = 0) {
        for (auto& plane : planes) {
            plane.assign(kSize, fill);
        }
    }
    OnionPlanes view(bool covered) const {
        return {planes[0].data(), planes[1].data(), planes[2].data(),
                covered ? planes[3].data() : nullptr, kWidth};
    }
    OnionTarget target(bool covered) {
        return {planes[0].data(), planes[1].data(), planes[2].data(),
                covered ? planes[3].data() : nullptr, kWidth};
    }
};

Picture RandomPicture(std::mt19937& random) {
    Picture picture;
    std::uniform_int_distribution<int> byte(0, 255);
    for (auto& plane : picture.planes) {
        for (auto& value : plane) {
            // A third of the pixels share a value, so that some layers match the picture.
            value = static_cast<std::uint8_t>(byte(random) < 85 ? 7 : byte(random));
        }
    }
    return picture;
}

// The blend in floating point, one pixel and one layer at a time.
std::array<int, 4> Expected(const Picture& current, const std::vector<Picture>& layers,
                            const std::vector<OnionLayer>& specs, std::size_t i, bool covered,
                            bool layersCovered) {
    std::array<double, 3> colour{};
    for (int c = 0; c < 3; ++c) {
        colour[c] = current.planes[c][i];
    }
    double cover = covered ? current.planes[3][i] : 255;
    for (std::size_t l = 0; l < layers.size(); ++l) {
        const double there = layersCovered ? layers[l].planes[3][i] : 255;
        bool same = there == (covered ? current.planes[3][i] : 255.0);
        for (int c = 0; c < 3; ++c) {
            same = same && layers[l].planes[c][i] == current.planes[c][i];
        }
        if (same) {
            continue;
        }
        const double w = std::round(there * specs[l].opacity / 255.0) / 255.0;
        const double below = cover / 255.0 * (1 - w);
        const double total = w + below;
        if (total == 0) {
            continue;
        }
        for (int c = 0; c < 3; ++c) {
            const int source = layers[l].planes[c][i];
            const double tinted = specs[l].tinted ? (source + specs[l].tint[c] + 1) / 2 : source;
            // Over opaque pixels a frame only darkens.
            const double shown = cover == 255 ? std::min(tinted, colour[c]) : tinted;
            const double mixed = (shown * w + colour[c] * below) / total;
            colour[c] = std::round(mixed);
        }
        cover = std::round(total * 255);
    }
    return {static_cast<int>(colour[0]), static_cast<int>(colour[1]), static_cast<int>(colour[2]),
            static_cast<int>(cover)};
}

void CheckAgainstExpected(bool covered, bool layersCovered, int tolerance) {
    std::mt19937 random(covered ? 11 : 5);
    const Picture current = RandomPicture(random);
    std::vector<Picture> layers;
    std::vector<OnionLayer> specs;
    for (int l = 0; l < 4; ++l) {
        layers.push_back(RandomPicture(random));
        // Some layer pixels equal the current ones, as a still background would.
        for (std::size_t i = 0; i < kSize; i += 3) {
            for (int c = 0; c < 4; ++c) {
                layers.back().planes[c][i] = current.planes[c][i];
            }
        }
    }
    for (int l = 0; l < 4; ++l) {
        OnionLayer spec;
        spec.planes = layers[l].view(layersCovered);
        spec.tinted = l != 0;
        spec.tint[0] = static_cast<std::uint8_t>(60 * l);
        spec.tint[1] = 200;
        spec.tint[2] = static_cast<std::uint8_t>(255 - 50 * l);
        spec.opacity = static_cast<std::uint8_t>(40 + 70 * l);
        specs.push_back(spec);
    }
    Picture out(99);
    // Only the middle rows and columns are written.
    BlendOnion(current.view(covered), specs, out.target(covered), 2, 1, kWidth - 3, kHeight - 2);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * kWidth + x;
            const bool inside = x >= 2 && x <= kWidth - 3 && y >= 1 && y <= kHeight - 2;
            const std::array<int, 4> want =
                inside ? Expected(current, layers, specs, i, covered, layersCovered)
                       : std::array<int, 4>{99, 99, 99, 99};
            for (int c = 0; c < (covered ? 4 : 3); ++c) {
                ASSERT_NEAR(out.planes[c][i], want[c], inside ? tolerance : 0)
                    << "x " << x << " y " << y << " channel " << c;
            }
            if (!covered) {
                ASSERT_EQ(out.planes[3][i], 99) << "coverage of an opaque picture is left alone";
            }
        }
    }
}

TEST(OnionBlend, FixedPixels) {
    Picture current(255);
    Picture black(0);
    OnionLayer red;
    red.planes = black.view(false);
    red.tinted = true;
    red.tint[0] = 255;
    red.opacity = 128;
    Picture out;
    BlendOnion(current.view(false), {red}, out.target(false), 0, 0, 0, 0);
    // Tinted black is (128, 0, 0); 128/255 of it over white.
    EXPECT_EQ(out.planes[0][0], 191);
    EXPECT_EQ(out.planes[1][0], 127);
    EXPECT_EQ(out.planes[2][0], 127);

    // White paper over a black drawing leaves the drawing black.
    red.planes = current.view(false);
    BlendOnion(black.view(false), {red}, out.target(false), 0, 0, 0, 0);
    EXPECT_EQ(out.planes[0][0], 0);
    EXPECT_EQ(out.planes[1][0], 0);

    // The same frame over itself changes nothing, whatever the opacity.
    red.planes = current.view(false);
    red.opacity = 255;
    BlendOnion(current.view(false), {red}, out.target(false), 0, 0, 0, 0);
    EXPECT_EQ(out.planes[0][0], 255);
    EXPECT_EQ(out.planes[1][0], 255);
}

TEST(OnionBlend, OpaquePictureMatchesFloatingPoint) {
    CheckAgainstExpected(false, false, 0);
    CheckAgainstExpected(false, true, 0);
}

TEST(OnionBlend, CoveredPictureMatchesFloatingPoint) {
    // Rounding a quotient at exactly one half may go either way.
    CheckAgainstExpected(true, true, 1);
    CheckAgainstExpected(true, false, 1);
}

}  // namespace
}  // namespace wib
