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
// Wider than the pixels laid over at a time, so that their seams are crossed.
constexpr int kWideWidth = 1301;
constexpr int kWideHeight = 2;

struct Picture {
    int width;
    int height;
    std::array<std::vector<std::uint8_t>, 4> planes;
    explicit Picture(std::uint8_t fill = 0, int w = kWidth, int h = kHeight) : width(w), height(h) {
        for (auto& plane : planes) {
            plane.assign(static_cast<std::size_t>(w) * h, fill);
        }
    }
    std::size_t size() const { return planes[0].size(); }
    OnionPlanes view(bool covered) const {
        return {planes[0].data(), planes[1].data(), planes[2].data(),
                covered ? planes[3].data() : nullptr, static_cast<std::size_t>(width)};
    }
    OnionTarget target() {
        return {planes[0].data(), planes[1].data(), planes[2].data(), planes[3].data(),
                static_cast<std::size_t>(width)};
    }
};

// The opaque kernel's output, one word a pixel.
struct Words {
    std::vector<std::uint32_t> pixels;
    std::size_t stride;
    Words(int width, int height, std::uint32_t fill)
        : pixels(static_cast<std::size_t>(width) * height, fill),
          stride(static_cast<std::size_t>(width)) {}
    OnionWords target() { return {pixels.data(), stride}; }
    // The word's channels: red, green, blue, alpha.
    std::array<int, 4> at(std::size_t i) const {
        const std::uint32_t w = pixels[i];
        return {static_cast<int>((w >> 16) & 255), static_cast<int>((w >> 8) & 255),
                static_cast<int>(w & 255), static_cast<int>(w >> 24)};
    }
};

Picture RandomPicture(std::mt19937& random, int width, int height) {
    Picture picture(0, width, height);
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

// Four random layers, some of whose pixels equal the current picture's, as
// a still background's would.
struct Scene {
    Picture current;
    std::vector<Picture> layers;
    std::vector<OnionLayer> specs;
};

Scene RandomScene(bool layersCovered, int width, int height, unsigned seed) {
    std::mt19937 random(seed);
    Scene scene{RandomPicture(random, width, height), {}, {}};
    for (int l = 0; l < 4; ++l) {
        scene.layers.push_back(RandomPicture(random, width, height));
        for (std::size_t i = 0; i < scene.current.size(); i += 3) {
            for (int c = 0; c < 4; ++c) {
                scene.layers.back().planes[c][i] = scene.current.planes[c][i];
            }
        }
    }
    for (int l = 0; l < 4; ++l) {
        OnionLayer spec;
        spec.planes = scene.layers[l].view(layersCovered);
        spec.tinted = l != 0;
        spec.tint[0] = static_cast<std::uint8_t>(60 * l);
        spec.tint[1] = 200;
        spec.tint[2] = static_cast<std::uint8_t>(255 - 50 * l);
        spec.opacity = static_cast<std::uint8_t>(40 + 70 * l);
        scene.specs.push_back(spec);
    }
    return scene;
}

// Only columns 2..width-3 of rows 1..height-2 (or the one row of a picture
// two rows high) are written.
struct Inside {
    int left, top, right, bottom;
    explicit Inside(const Picture& p)
        : left(2),
          top(p.height > 2 ? 1 : 0),
          right(p.width - 3),
          bottom(p.height > 2 ? p.height - 2 : 0) {}
    bool contains(int x, int y) const { return x >= left && x <= right && y >= top && y <= bottom; }
};

void CheckOpaque(bool layersCovered, int width, int height) {
    const Scene scene = RandomScene(layersCovered, width, height, 5);
    const Inside inside(scene.current);
    Words out(width, height, 0x99999999u);
    BlendOnionOpaque(scene.current.view(false), scene.specs, out.target(), inside.left, inside.top,
                     inside.right, inside.bottom);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * width + x;
            const std::array<int, 4> want =
                inside.contains(x, y)
                    ? Expected(scene.current, scene.layers, scene.specs, i, false, layersCovered)
                    : std::array<int, 4>{0x99, 0x99, 0x99, 0x99};
            ASSERT_EQ(out.at(i), want) << "x " << x << " y " << y;
        }
    }
}

void CheckCovered(bool layersCovered) {
    const Scene scene = RandomScene(layersCovered, kWidth, kHeight, 11);
    const Inside inside(scene.current);
    Picture out(99);
    BlendOnionCovered(scene.current.view(true), scene.specs, out.target(), inside.left, inside.top,
                      inside.right, inside.bottom);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * kWidth + x;
            const bool in = inside.contains(x, y);
            const std::array<int, 4> want =
                in ? Expected(scene.current, scene.layers, scene.specs, i, true, layersCovered)
                   : std::array<int, 4>{99, 99, 99, 99};
            for (int c = 0; c < 4; ++c) {
                // Rounding a quotient at exactly one half may go either way.
                ASSERT_NEAR(out.planes[c][i], want[c], in ? 1 : 0)
                    << "x " << x << " y " << y << " channel " << c;
            }
        }
    }
}

// One opaque pixel of `current` with `layer` over it.
std::array<int, 4> OnePixel(const Picture& current, const OnionLayer& layer) {
    Words out(kWidth, kHeight, 0);
    BlendOnionOpaque(current.view(false), {layer}, out.target(), 0, 0, 0, 0);
    return out.at(0);
}

TEST(OnionBlend, FixedPixels) {
    const Picture white(255);
    const Picture black(0);
    OnionLayer red;
    red.planes = black.view(false);
    red.tinted = true;
    red.tint[0] = 255;
    red.opacity = 128;
    // Tinted black is (128, 0, 0); 128/255 of it over white.
    EXPECT_EQ(OnePixel(white, red), (std::array<int, 4>{191, 127, 127, 255}));

    // White paper over a black drawing leaves the drawing black.
    red.planes = white.view(false);
    EXPECT_EQ(OnePixel(black, red), (std::array<int, 4>{0, 0, 0, 255}));

    // The same frame over itself changes nothing, whatever the opacity.
    red.opacity = 255;
    EXPECT_EQ(OnePixel(white, red), (std::array<int, 4>{255, 255, 255, 255}));
}

TEST(OnionBlend, OpaquePictureMatchesFloatingPoint) {
    CheckOpaque(false, kWidth, kHeight);
    CheckOpaque(true, kWidth, kHeight);
    CheckOpaque(false, kWideWidth, kWideHeight);
}

TEST(OnionBlend, CoveredPictureMatchesFloatingPoint) {
    CheckCovered(true);
    CheckCovered(false);
}

}  // namespace
}  // namespace wib
