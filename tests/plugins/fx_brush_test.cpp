// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "plugins/bundled/fx_brush.h"

namespace fxbrush {
namespace {

std::map<std::pair<int, int>, double> ByPosition(const std::vector<Spot>& spots) {
    std::map<std::pair<int, int>, double> covers;
    for (const Spot& spot : spots) {
        EXPECT_TRUE(covers.emplace(std::make_pair(spot.x, spot.y), spot.cover).second)
            << "twice: " << spot.x << "," << spot.y;
    }
    return covers;
}

TEST(FxBrushTest, PressureSizesTheStar) {
    EXPECT_EQ(StarRadius(0.0), 1);
    EXPECT_EQ(StarRadius(1.0), 6);
    EXPECT_EQ(StarRadius(3.0), 6);
    EXPECT_EQ(StarRadius(-1.0), 1);
}

TEST(FxBrushTest, SmallestStarIsCoreArmsAndGlints) {
    // Radius 1: the core pixel, arms of 2 fading by thirds, glints at a quarter.
    const auto covers = ByPosition(StarDab({10, 10}, 0.0, 21, 21));
    const std::map<std::pair<int, int>, double> expected = {
        {{10, 10}, 1.0},    {{11, 10}, 2.0 / 3}, {{9, 10}, 2.0 / 3}, {{10, 11}, 2.0 / 3},
        {{10, 9}, 2.0 / 3}, {{12, 10}, 1.0 / 3}, {{8, 10}, 1.0 / 3}, {{10, 12}, 1.0 / 3},
        {{10, 8}, 1.0 / 3}, {{11, 11}, 0.25},    {{9, 11}, 0.25},    {{11, 9}, 0.25},
        {{9, 9}, 0.25}};
    ASSERT_EQ(covers.size(), expected.size());
    for (const auto& [at, cover] : expected) {
        ASSERT_TRUE(covers.contains(at)) << at.first << "," << at.second;
        EXPECT_NEAR(covers.at(at), cover, 1e-9) << at.first << "," << at.second;
    }
}

TEST(FxBrushTest, StarAtTheCornerStaysInsideTheImage) {
    const auto covers = ByPosition(StarDab({0, 0}, 0.0, 3, 3));
    EXPECT_EQ(covers.size(), 6u);  // centre, two arms of two, one glint
    for (const auto& [at, cover] : covers) {
        EXPECT_TRUE(at.first >= 0 && at.first < 3 && at.second >= 0 && at.second < 3);
    }
    // A full-pressure star has a solid core of radius 3 and reaches 12 along its arms.
    const auto big = ByPosition(StarDab({20, 20}, 1.0, 41, 41));
    EXPECT_DOUBLE_EQ(big.at({23, 20}), 1.0);
    EXPECT_DOUBLE_EQ(big.at({22, 22}), 1.0);
    EXPECT_TRUE(big.contains({32, 20}));
    EXPECT_FALSE(big.contains({33, 20}));
}

TEST(FxBrushTest, BlendMixesByCover) {
    EXPECT_EQ(Blend({0, 100, 200}, {255, 0, 0}, 0.5), (Rgb{128, 50, 100}));
    EXPECT_EQ(Blend({0, 100, 200}, {255, 0, 0}, 0.0), (Rgb{0, 100, 200}));
    EXPECT_EQ(Blend({0, 100, 200}, {255, 0, 0}, 1.0), (Rgb{255, 0, 0}));
    EXPECT_EQ(Unpack(255 + 256 * 128 + 65536 * 7), (Rgb{255, 128, 7}));
}

TEST(FxBrushTest, TrailPutsStarsAtTheSpacing) {
    EXPECT_EQ(TrailCentres({0, 0}, {10, 0}, 4), (std::vector<Point>{{4, 0}, {8, 0}}));
    EXPECT_EQ(TrailCentres({0, 0}, {3, 4}, 5), (std::vector<Point>{{3, 4}}));
    EXPECT_EQ(TrailCentres({0, 0}, {2, 2}, 5), (std::vector<Point>{}));
    EXPECT_EQ(TrailCentres({5, 5}, {5, 5}, 2), (std::vector<Point>{}));
}

}  // namespace
}  // namespace fxbrush
