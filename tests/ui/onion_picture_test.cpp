// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QImage>
#include <array>
#include <vector>

#include "ui/onion_picture.h"

namespace wib {
namespace {

constexpr int kSide = 300;  // large enough to be done in bands of rows
constexpr std::size_t kPixels = static_cast<std::size_t>(kSide) * kSide;
const QRect kWhole(0, 0, kSide, kSide);

// Black tinted halfway to red is (128, 0, 0); 128/255 of it over white.
constexpr QRgb kRedOverWhite = qRgb(191, 127, 127);
// Black tinted halfway to blue, likewise.
constexpr QRgb kBlueOverWhite = qRgb(127, 127, 191);

// A white current picture with a black frame, tinted red at opacity 128,
// laid over it.
class OnionPictureTest : public ::testing::Test {
  protected:
    OnionPictureTest() {
        current.fill(std::vector<std::uint8_t>(kPixels, 255));
        layer.planes = {frame.data(), frame.data(), frame.data(), nullptr, kSide};
        layer.tinted = true;
        layer.tint[0] = 255;
        layer.opacity = 128;
        key.frames = {{0, OnionSide::Before, 128}};
        key.tintBefore = {255, 0, 0};
    }

    const QImage& update(const QRect& area) {
        const OnionPlanes planes{current[0].data(), current[1].data(), current[2].data(), nullptr,
                                 kSide};
        return picture.update(planes, kSide, kSide, {layer}, key, area, 2);
    }
    void paint(int x, int y, std::uint8_t grey) {
        for (auto& plane : current) {
            plane[static_cast<std::size_t>(y) * kSide + x] = grey;
        }
    }

    std::array<std::vector<std::uint8_t>, 3> current;
    std::vector<std::uint8_t> frame = std::vector<std::uint8_t>(kPixels, 0);
    OnionLayer layer;
    OnionPictureKey key;
    OnionPicture picture;
};

TEST_F(OnionPictureTest, WhatThePainterChangedShowsAtTheNextUpdate) {
    EXPECT_EQ(update(kWhole).pixel(0, 0), kRedOverWhite);
    EXPECT_EQ(update(kWhole).pixel(kSide - 1, kSide - 1), kRedOverWhite);

    // Black where the frame is black: nothing of the frame shows there.
    paint(10, 20, 0);
    paint(250, 280, 0);
    paint(kSide - 1, 150, 0);
    const QImage& shown = update(kWhole);
    EXPECT_EQ(shown.pixel(10, 20), qRgb(0, 0, 0));
    EXPECT_EQ(shown.pixel(250, 280), qRgb(0, 0, 0));
    EXPECT_EQ(shown.pixel(kSide - 1, 150), qRgb(0, 0, 0));
    EXPECT_EQ(shown.pixel(9, 20), kRedOverWhite);
    EXPECT_EQ(shown.pixel(11, 20), kRedOverWhite);
    EXPECT_EQ(shown.pixel(250, 279), kRedOverWhite);

    // Grey 100 under the frame, redrawn through a small area: red keeps
    // min(128, 100); green and blue get 127/255 of 100.
    paint(10, 20, 100);
    EXPECT_EQ(update(QRect(5, 15, 10, 10)).pixel(10, 20), qRgb(100, 50, 50));
    // White again: as it was at first.
    paint(10, 20, 255);
    EXPECT_EQ(update(kWhole).pixel(10, 20), kRedOverWhite);
}

TEST_F(OnionPictureTest, AnotherTintOrChangedFramesLayEveryPixelOverAgain) {
    paint(40, 40, 0);
    update(kWhole);

    layer.tint[0] = 0;
    layer.tint[2] = 255;
    key.tintBefore = {0, 0, 255};
    const QImage& blue = update(QRect(0, 0, 1, 1));
    EXPECT_EQ(blue.pixel(0, 0), kBlueOverWhite);
    EXPECT_EQ(blue.pixel(kSide - 1, kSide - 1), kBlueOverWhite);
    EXPECT_EQ(blue.pixel(40, 40), qRgb(0, 0, 0));

    // The frame turned white where the picture is black: its paper leaves
    // the drawing black, and where it is white like the picture nothing shows.
    std::fill(frame.begin(), frame.end(), 255);
    ++key.framesRevision;
    const QImage& white = update(QRect(0, 0, 1, 1));
    EXPECT_EQ(white.pixel(kSide - 1, 0), qRgb(255, 255, 255));
    EXPECT_EQ(white.pixel(40, 40), qRgb(0, 0, 0));

    // No frames: the picture alone.
    key.frames.clear();
    const QImage& alone =
        picture.update({current[0].data(), current[1].data(), current[2].data(), nullptr, kSide},
                       kSide, kSide, {}, key, kWhole, 2);
    EXPECT_EQ(alone.pixel(40, 40), qRgb(0, 0, 0));
    EXPECT_EQ(alone.pixel(41, 40), qRgb(255, 255, 255));
}

}  // namespace
}  // namespace wib
