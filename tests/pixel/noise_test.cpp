// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <vector>

#include "pixel/noise.h"

namespace wib {
namespace {

TEST(Noise, ValuesSpanTheAmountAndDependOnlyOnTheirKey) {
    int low = 0, high = 0;
    long long sum = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const int n = NoiseAt(42, x, y, 0, 20);
            ASSERT_GE(n, -20);
            ASSERT_LE(n, 20);
            low += n == -20;
            high += n == 20;
            sum += n;
            EXPECT_EQ(n, NoiseAt(42, x, y, 0, 20));
        }
    }
    EXPECT_GT(low, 0);
    EXPECT_GT(high, 0);
    EXPECT_LT(std::abs(sum), 10000 * 2) << "centred on zero";
    EXPECT_EQ(NoiseAt(1, 3, 4, 2, 0), 0);
    EXPECT_NE(NoiseAt(1, 3, 4, 0, 255) * 1000 + NoiseAt(1, 4, 3, 0, 255),
              NoiseAt(2, 3, 4, 0, 255) * 1000 + NoiseAt(2, 4, 3, 0, 255));
}

TEST(Noise, AddNoiseMonoKeepsGreysGreyAndClamps) {
    std::vector<std::uint8_t> grey(50, 128), dark(50, 3);
    std::uint8_t o[3][50];
    AddNoiseRow({grey.data(), grey.data(), grey.data()}, {o[0], o[1], o[2]}, 5, 9, 100, true, 50);
    bool changed = false;
    for (int x = 0; x < 50; ++x) {
        EXPECT_EQ(o[0][x], o[1][x]);
        EXPECT_EQ(o[0][x], o[2][x]);
        EXPECT_EQ(o[0][x], 128 + NoiseAt(9, x, 5, 0, 100));
        changed |= o[0][x] != 128;
    }
    EXPECT_TRUE(changed);
    AddNoiseRow({dark.data(), dark.data(), dark.data()}, {o[0], o[1], o[2]}, 0, 9, 255, false, 50);
    for (int x = 0; x < 50; ++x) {
        EXPECT_EQ(o[1][x], std::max(0, 3 + NoiseAt(9, x, 0, 1, 255)));
    }
}

TEST(Noise, FilmGrainSparesBlackAndWhiteAndSharesCells) {
    std::vector<std::uint8_t> black(8, 0), white(8, 255), mid(8, 128);
    std::uint8_t o[3][8];
    FilmGrainRow({black.data(), black.data(), black.data()}, {o[0], o[1], o[2]}, 0, 3, 255, 1, 8);
    EXPECT_EQ(std::vector<std::uint8_t>(o[0], o[0] + 8), black);
    FilmGrainRow({white.data(), white.data(), white.data()}, {o[0], o[1], o[2]}, 0, 3, 255, 1, 8);
    EXPECT_EQ(std::vector<std::uint8_t>(o[2], o[2] + 8), white);
    FilmGrainRow({mid.data(), mid.data(), mid.data()}, {o[0], o[1], o[2]}, 0, 3, 100, 4, 8);
    for (int x = 0; x < 8; ++x) {
        EXPECT_EQ(o[0][x], o[0][x < 4 ? 0 : 4]) << "one value per 4 x 4 cell";
        // Weight at 128 is 4 x 128 x 127 / 255^2, just under 1.
        EXPECT_NEAR(o[1][x], 128 + NoiseAt(3, x / 4, 0, 0, 100) * 0.99985, 0.5 + 1e-9);
    }
}

}  // namespace
}  // namespace wib
