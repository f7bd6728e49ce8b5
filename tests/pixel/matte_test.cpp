// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

#include "pixel/gaussian.h"
#include "pixel/matte_feather.h"
#include "pixel/matte_morphology.h"
#include "pixel/matte_ops.h"
#include "pixel/matte_shapes.h"

namespace wib {
namespace {

// A matte with a spare column holding a marker, as the document's planes have.
struct TestMatte {
    int width, height;
    std::size_t stride;
    std::vector<std::uint8_t> data;

    TestMatte(int w, int h, std::uint8_t fill = 0)
        : width(w), height(h), stride(std::size_t(w) + 1), data(stride * std::size_t(h), fill) {
        for (int y = 0; y < h; ++y) {
            data[std::size_t(y) * stride + std::size_t(w)] = 77;
        }
    }
    MatteView view() { return {data.data(), stride, width, height}; }
    MatteSource source() const { return {data.data(), stride, width, height}; }
    std::uint8_t& at(int x, int y) { return data[std::size_t(y) * stride + x]; }
    double sum() const {
        double total = 0;
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                total += data[std::size_t(y) * stride + x];
            }
        }
        return total;
    }
    bool spareKept() const {
        for (int y = 0; y < height; ++y) {
            if (data[std::size_t(y) * stride + std::size_t(width)] != 77) {
                return false;
            }
        }
        return true;
    }
};

TEST(MatteCombine, EachModeOnSoftValues) {
    const std::vector<std::uint8_t> old{0, 100, 200, 255, 30};
    const std::vector<std::uint8_t> incoming{255, 50, 200, 0, 240};
    const struct {
        MatteMode mode;
        std::vector<std::uint8_t> expected;
    } cases[] = {
        {MatteMode::Replace, {255, 50, 200, 0, 240}},
        {MatteMode::Add, {255, 100, 200, 255, 240}},
        {MatteMode::Subtract, {0, 100, 55, 255, 15}},
        {MatteMode::Intersect, {0, 50, 200, 0, 30}},
    };
    for (const auto& c : cases) {
        std::vector<std::uint8_t> row = old;
        CombineMatteRow(row.data(), incoming.data(), c.mode, int(row.size()));
        EXPECT_EQ(row, c.expected) << int(c.mode);
    }
}

TEST(MatteCombine, InvertThresholdAndFillThroughTheMatte) {
    std::vector<std::uint8_t> row{0, 127, 128, 255};
    InvertMatteRow(row.data(), 4);
    EXPECT_EQ(row, (std::vector<std::uint8_t>{255, 128, 127, 0}));
    ThresholdMatteRow(row.data(), 4);
    EXPECT_EQ(row, (std::vector<std::uint8_t>{255, 255, 0, 0}));

    std::vector<std::uint8_t> target{10, 10, 10, 200};
    const std::vector<std::uint8_t> weight{0, 255, 128, 51};
    FillThroughMatteRow(target.data(), weight.data(), 250, 4);
    // target + (250 - target) w / 255, rounded: 10, 250, 130.47, 200 + 50 * 0.2.
    EXPECT_EQ(target, (std::vector<std::uint8_t>{10, 250, 130, 210}));
}

TEST(MatteShapes, RectangleIsClippedToTheMatte) {
    TestMatte matte(10, 6, 9);
    RectangleMatte(matte.view(), {-3, 2, 5, 10});
    EXPECT_EQ(matte.sum(), 255.0 * 2 * 4);
    EXPECT_EQ(matte.at(1, 2), 255);
    EXPECT_EQ(matte.at(2, 2), 0);
    EXPECT_EQ(matte.at(0, 1), 0);
    EXPECT_TRUE(matte.spareKept());
}

TEST(MatteShapes, HardEllipseSpansItsDiametersAndIsSymmetric) {
    TestMatte matte(64, 40);
    const MatteBox box{10, 5, 41, 21};
    EllipseMatte(matte.view(), box, false);
    // The middle row covers the whole width, the middle column the height.
    for (int x = 0; x < 64; ++x) {
        EXPECT_EQ(matte.at(x, 15), x >= 10 && x <= 50 ? 255 : 0) << x;
    }
    for (int y = 0; y < 40; ++y) {
        EXPECT_EQ(matte.at(30, y), y >= 5 && y <= 25 ? 255 : 0) << y;
    }
    for (int y = 5; y <= 25; ++y) {
        for (int x = 10; x <= 50; ++x) {
            EXPECT_EQ(matte.at(x, y), matte.at(60 - x, y));
            EXPECT_EQ(matte.at(x, y), matte.at(x, 30 - y));
        }
    }
    EXPECT_NEAR(matte.sum() / 255, std::numbers::pi * 20.5 * 10.5, 0.03 * 676);
    EXPECT_TRUE(matte.spareKept());
}

TEST(MatteShapes, AntialiasedEllipseHasTheExactAreaAndSoftEdges) {
    TestMatte matte(256, 128);
    const MatteBox box{20, 10, 200, 100};
    EllipseMatte(matte.view(), box, true);
    // Rounding each pixel to 1/255 and 16 sub-rows leave well under a pixel.
    EXPECT_NEAR(matte.sum() / 255, std::numbers::pi * 100 * 50, 1.5);
    int soft = 0;
    for (int y = 10; y < 110; ++y) {
        for (int x = 20; x < 220; ++x) {
            EXPECT_EQ(matte.at(x, y), matte.at(239 - x, y));
            EXPECT_EQ(matte.at(x, y), matte.at(x, 119 - y));
            soft += matte.at(x, y) > 0 && matte.at(x, y) < 255 ? 1 : 0;
        }
    }
    EXPECT_GT(soft, 300);
    EXPECT_EQ(matte.at(120, 60), 255);
    EXPECT_EQ(matte.at(21, 11), 0);
}

// The largest value within the disc, by brute force.
int DiscMaximum(TestMatte& matte, int x, int y, int radius) {
    int best = 0;
    for (int dy = -radius; dy <= radius; ++dy) {
        for (int dx = -radius; dx <= radius; ++dx) {
            const int nx = x + dx, ny = y + dy;
            if (dx * dx + dy * dy <= radius * radius && nx >= 0 && ny >= 0 && nx < matte.width &&
                ny < matte.height) {
                best = std::max(best, int(matte.at(nx, ny)));
            }
        }
    }
    return best;
}

TEST(MatteMorphology, GrowTakesTheDiscMaximum) {
    TestMatte dot(41, 41);
    dot.at(20, 20) = 180;
    TestMatte grown(41, 41);
    GrowMatte(dot.source(), grown.data.data(), grown.stride, 5);
    // 81 lattice points lie within a disc of radius 5.
    EXPECT_EQ(grown.sum(), 180.0 * 81);
    EXPECT_EQ(grown.at(25, 20), 180);
    EXPECT_EQ(grown.at(24, 23), 180);
    EXPECT_EQ(grown.at(24, 24), 0);

    std::mt19937 random(3);
    TestMatte noisy(30, 17);
    for (int y = 0; y < 17; ++y) {
        for (int x = 0; x < 30; ++x) {
            noisy.at(x, y) = random() % 9 == 0 ? std::uint8_t(random()) : 0;
        }
    }
    for (int radius : {1, 2, 4, 7}) {
        TestMatte out(30, 17);
        GrowMatte(noisy.source(), out.data.data(), out.stride, radius);
        for (int y = 0; y < 17; ++y) {
            for (int x = 0; x < 30; ++x) {
                ASSERT_EQ(out.at(x, y), DiscMaximum(noisy, x, y, radius))
                    << radius << " at " << x << "," << y;
            }
        }
    }
}

TEST(MatteMorphology, ShrinkPullsEdgesInButNotAtTheImageBorder) {
    TestMatte square(41, 41);
    RectangleMatte(square.view(), {10, 10, 21, 21});
    TestMatte shrunk(41, 41);
    ShrinkMatte(square.source(), shrunk.data.data(), shrunk.stride, 3);
    EXPECT_EQ(shrunk.sum(), 255.0 * 15 * 15);
    EXPECT_EQ(shrunk.at(13, 13), 255);
    EXPECT_EQ(shrunk.at(12, 20), 0);

    TestMatte all(20, 12, 255);
    TestMatte kept(20, 12);
    ShrinkMatte(all.source(), kept.data.data(), kept.stride, 4);
    EXPECT_EQ(kept.sum(), 255.0 * 20 * 12);
}

TEST(MatteFeather, TilesAgreeWithBlurringTheWholeMatte) {
    // An ellipse and a speck, so that some tiles are flat and some are not.
    TestMatte matte(700, 300);
    EllipseMatte(matte.view(), {150, 40, 420, 200}, true);
    matte.at(20, 280) = 255;
    for (double radius : {3.0, 20.0}) {
        TestMatte tiled(700, 300);
        TestMatte whole(700, 300);
        FeatherMatte(matte.source(), tiled.view(), radius, 0, 300);
        GaussianBlur({matte.data.data(), whole.data.data(), matte.stride, 700, 300, 0, 300},
                     radius / 2);
        int worst = 0;
        for (int y = 0; y < 300; ++y) {
            for (int x = 0; x < 700; ++x) {
                worst = std::max(worst, std::abs(tiled.at(x, y) - whole.at(x, y)));
            }
        }
        EXPECT_LE(worst, 1) << radius;
        EXPECT_TRUE(tiled.spareKept());
    }
}

}  // namespace
}  // namespace wib
