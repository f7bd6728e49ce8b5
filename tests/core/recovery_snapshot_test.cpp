// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/recovery_snapshot.h"

#include <gtest/gtest.h>

namespace wib {
namespace {

RecoverySnapshot Sample() {
    RecoverySnapshot snapshot;
    snapshot.texts["file"] = "/pictures/cat.tga";
    snapshot.texts["empty"] = "";
    Plane ramp(300, 200);
    for (int y = 0; y <= 200; ++y) {
        for (int x = 0; x <= 300; ++x) {
            ramp.at(x, y) = static_cast<std::uint8_t>(x * 7 + y * 13);
        }
    }
    snapshot.planes.emplace_back("R", std::move(ramp));
    snapshot.planes.emplace_back("A", Plane(300, 200, 255));
    snapshot.planes.emplace_back("none", Plane());
    return snapshot;
}

TEST(RecoverySnapshot, ComesBackAsItWentInAndSmallerWhereThePlanesAreFlat) {
    const RecoverySnapshot sample = Sample();
    const auto bytes = EncodeSnapshot(sample);
    EXPECT_LT(bytes.size(), 2u * 301 * 201) << "the planes are compressed";
    std::string error;
    const auto back = DecodeSnapshot(bytes, error);
    ASSERT_TRUE(back) << error;
    EXPECT_EQ(back->texts, sample.texts);
    ASSERT_EQ(back->planes.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        const Plane& want = sample.planes[i].second;
        const Plane& got = back->planes[i].second;
        EXPECT_EQ(back->planes[i].first, sample.planes[i].first);
        ASSERT_TRUE(got.sameShape(want));
        EXPECT_TRUE(std::equal(want.data(), want.data() + want.count(), got.data()));
    }
    EXPECT_EQ(back->plane("R")->at(300, 200), static_cast<std::uint8_t>(300 * 7 + 200 * 13));
    EXPECT_EQ(back->text("file"), "/pictures/cat.tga");
    EXPECT_EQ(back->plane("G"), nullptr);
}

TEST(RecoverySnapshot, CutShortDamagedOrOversizedBytesAreRefused) {
    const auto bytes = EncodeSnapshot(Sample());
    std::string error;
    for (std::size_t size : {std::size_t{0}, std::size_t{7}, std::size_t{20}, bytes.size() - 1}) {
        EXPECT_FALSE(DecodeSnapshot({bytes.data(), size}, error)) << size;
        EXPECT_FALSE(error.empty());
    }
    auto damaged = bytes;
    damaged[damaged.size() - 40] ^= 0xFF;
    EXPECT_FALSE(DecodeSnapshot(damaged, error));

    RecoverySnapshot huge;
    huge.planes.emplace_back("R", Plane(2, 2));
    auto oversized = EncodeSnapshot(huge);
    // The upper bound x of the one plane: after the signature, the text
    // count, the plane count and the name.
    const std::size_t boundAt = 8 + 4 + 4 + 4 + 1;
    oversized[boundAt + 2] = 0x7F;
    EXPECT_FALSE(DecodeSnapshot(oversized, error));
    EXPECT_EQ(error, "a plane of the snapshot is larger than any document");
}

}  // namespace
}  // namespace wib
