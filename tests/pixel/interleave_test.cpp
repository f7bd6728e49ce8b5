// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <vector>

#include "pixel/interleave.h"

namespace wib {
namespace {

// Every length from 0 to 70 pixels, so that the 16-pixel steps and the rest
// after them are both covered, from a source that is not aligned.
TEST(Interleave, SplitAndJoinAreInversesAtEveryLength) {
    for (std::size_t count = 0; count <= 70; ++count) {
        std::vector<std::uint8_t> source(4 * count + 1);
        for (std::size_t i = 0; i < source.size(); ++i) {
            source[i] = static_cast<std::uint8_t>(i * 7 + 3);
        }
        const std::uint8_t* bgr = source.data() + 1;
        std::vector<std::uint8_t> r(count + 1, 0xEE), g(count + 1, 0xEE), b(count + 1, 0xEE),
            a(count + 1, 0xEE);
        SplitBGR(bgr, count, r.data(), g.data(), b.data());
        for (std::size_t i = 0; i < count; ++i) {
            ASSERT_EQ(b[i], bgr[3 * i]) << count << " " << i;
            ASSERT_EQ(g[i], bgr[3 * i + 1]) << count << " " << i;
            ASSERT_EQ(r[i], bgr[3 * i + 2]) << count << " " << i;
        }
        EXPECT_EQ(r[count], 0xEE);  // nothing written past the row
        std::vector<std::uint8_t> joined(3 * count);
        JoinBGR(r.data(), g.data(), b.data(), count, joined.data());
        EXPECT_TRUE(std::equal(joined.begin(), joined.end(), bgr));

        SplitBGRA(bgr, count, r.data(), g.data(), b.data(), a.data());
        std::vector<std::uint8_t> joined4(4 * count);
        JoinBGRA(r.data(), g.data(), b.data(), a.data(), count, joined4.data());
        EXPECT_TRUE(std::equal(joined4.begin(), joined4.end(), bgr));
    }
}

TEST(Interleave, GreyAndPaletteLookUps) {
    const std::uint8_t r[] = {255, 0, 0, 10};
    const std::uint8_t g[] = {0, 255, 0, 10};
    const std::uint8_t b[] = {0, 0, 255, 10};
    std::uint8_t grey[4];
    JoinGrey(r, g, b, 4, grey);
    EXPECT_EQ(grey[0], 76);   // 76.245
    EXPECT_EQ(grey[1], 150);  // 149.685
    EXPECT_EQ(grey[2], 29);   // 29.07
    EXPECT_EQ(grey[3], 10);

    std::uint8_t palette[768] = {};
    palette[3 * 200] = 1;
    palette[3 * 200 + 1] = 2;
    palette[3 * 200 + 2] = 3;
    const std::uint8_t indices[] = {200, 0};
    std::uint8_t pr[2], pg[2], pb[2];
    SplitIndexed(indices, 2, palette, pr, pg, pb);
    EXPECT_EQ(pr[0], 3);
    EXPECT_EQ(pg[0], 2);
    EXPECT_EQ(pb[0], 1);
    EXPECT_EQ(pr[1], 0);
}

}  // namespace
}  // namespace wib
