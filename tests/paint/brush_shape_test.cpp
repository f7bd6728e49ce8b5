// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "core/text_file.h"
#include "paint/brush_shape.h"

namespace wib {
namespace {

int Covered(const Plane& mask) {
    int count = 0;
    for (std::size_t i = 0; i < mask.count(); ++i) {
        count += mask.data()[i] < 128;
    }
    return count;
}

TEST(BrushShape, RoundTipsCoverTheirDiscAndSoftenWithHardness) {
    const BrushTip hard = MakeRoundBrush(21, 100);
    EXPECT_EQ(hard.at(10, 10), 255);
    EXPECT_EQ(hard.at(0, 0), 0);
    const BrushTip soft = MakeRoundBrush(21, 0);
    EXPECT_LT(soft.at(10, 3), hard.at(10, 3));
    const BrushTip air = MakeAirbrush(21);
    EXPECT_GT(air.at(10, 10), air.at(10, 5));
    EXPECT_GT(air.at(10, 5), air.at(10, 1));
}

TEST(BrushShape, TransformsScaleTurnAndKeepACentre) {
    // A bar 3 wide and 15 long, standing upright.
    BrushTip bar;
    bar.width = bar.height = 15;
    bar.coverage.assign(225, 0);
    for (int y = 0; y < 15; ++y) {
        for (int x = 6; x <= 8; ++x) {
            bar.coverage[static_cast<std::size_t>(y * 15 + x)] = 255;
        }
    }
    for (int quality = 0; quality <= 2; ++quality) {
        const Plane upright = TransformBrush(bar, 0, 1.0, quality);
        EXPECT_EQ(upright.rows() % 2, 1u);
        EXPECT_EQ(upright.stride() % 16, 0u) << "rows padded to whole vectors";
        EXPECT_EQ(upright.at(static_cast<int>(upright.stride()) - 1, 7), 255);
        EXPECT_LT(upright.at(7, 0), 128) << quality;
        EXPECT_EQ(upright.at(7, 7), 0) << quality;
        EXPECT_EQ(upright.at(0, 7), 255) << quality;
        const Plane turned = TransformBrush(bar, 90, 1.0, quality);
        const int c = static_cast<int>(turned.rows() / 2);
        EXPECT_LT(turned.at(c - 6, c), 128) << "lying down at quality " << quality;
        EXPECT_GT(turned.at(c, c - 6), 128) << quality;
        const Plane half = TransformBrush(bar, 0, 0.5, quality);
        EXPECT_NEAR(Covered(half), Covered(upright) / 4.0, Covered(upright) / 6.0) << quality;
    }
}

TEST(BrushShape, BristlesAndChalkAreRepeatableAndBroken) {
    const BrushTip a = MakeBristleBrush(31, 12, 5);
    const BrushTip b = MakeBristleBrush(31, 12, 5);
    EXPECT_EQ(a.coverage, b.coverage);
    const BrushTip round = MakeRoundBrush(31, 100);
    int gaps = 0;
    for (std::size_t i = 0; i < a.coverage.size(); ++i) {
        gaps += round.coverage[i] == 255 && a.coverage[i] < 64;
    }
    EXPECT_GT(gaps, 50) << "hairs leave gaps inside the disc";

    const BrushTip chalk = MakeChalkBrush(31, EdgeProfile{255, 255, 128, 0}, 9);
    EXPECT_EQ(chalk.at(0, 0), 0);
    EXPECT_GT(chalk.at(15, 15), 0);
}

TEST(BrushShape, EdgeProfilesLoadOnlyWhenWellFormed) {
    const auto dir = std::filesystem::temp_directory_path();
    WriteTextFile(dir / "wib-good.profile", "255 200\n100 0\n");
    WriteTextFile(dir / "wib-bad.profile", "255 300 0");
    WriteTextFile(dir / "wib-word.profile", "255 soft 0");
    EXPECT_EQ(LoadEdgeprofile(dir / "wib-good.profile"), (EdgeProfile{255, 200, 100, 0}));
    EXPECT_TRUE(LoadEdgeprofile(dir / "wib-bad.profile").empty());
    EXPECT_TRUE(LoadEdgeprofile(dir / "wib-word.profile").empty());
    EXPECT_TRUE(LoadEdgeprofile(dir / "missing.profile").empty());
}

}  // namespace
}  // namespace wib
