// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "pixel/blit.h"

namespace wib {
namespace {

TEST(Blit, RectCopyHonoursBothStridesAndTouchesNothingElse) {
    // A 5 x 4 source with stride 7 into a destination with stride 9, 3 x 2 copied.
    std::vector<std::uint8_t> source(7 * 4);
    std::iota(source.begin(), source.end(), 1);
    std::vector<std::uint8_t> destination(9 * 4, 0);
    RectCopy(source.data() + 7 + 1, 7, destination.data() + 9 * 2 + 4, 9, 3, 2);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 9; ++x) {
            const bool inside = y >= 2 && x >= 4 && x < 7;
            const std::uint8_t expected =
                inside ? source[static_cast<std::size_t>((y - 1) * 7 + (x - 3))] : 0;
            EXPECT_EQ(destination[static_cast<std::size_t>(y * 9 + x)], expected) << x << "," << y;
        }
    }
}

TEST(Blit, BlockCopyAndFillCoverOddLengthsExactly) {
    for (std::size_t count : {0u, 1u, 15u, 33u, 4099u}) {
        std::vector<std::uint8_t> source(count + 2);
        std::iota(source.begin(), source.end(), 7);
        std::vector<std::uint8_t> destination(count + 2, 0xEE);
        BlockCopy(source.data(), destination.data(), count);
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(destination[i], source[i]);
        }
        EXPECT_EQ(destination[count], 0xEE);
        BlockFill(destination.data(), count, 3);
        EXPECT_EQ(std::count(destination.begin(), destination.end(), 3),
                  static_cast<std::ptrdiff_t>(count));
    }
}

}  // namespace
}  // namespace wib
