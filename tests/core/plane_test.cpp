// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

#include "core/plane.h"
#include "core/plane_memory.h"

namespace wib {
namespace {

TEST(Plane, UpperBoundsAreInclusiveAndRowMajor) {
    Plane plane(4, 2, 9);
    EXPECT_EQ(plane.count(), 15u);
    plane.at(4, 2) = 1;
    plane.at(0, 1) = 2;
    EXPECT_EQ(plane.data()[14], 1);
    EXPECT_EQ(plane.data()[5], 2);
    EXPECT_EQ(plane.at(3, 2), 9);
    EXPECT_THROW(plane.at(5, 0), SubscriptError);
    EXPECT_THROW(plane.at(0, 3), SubscriptError);
    EXPECT_THROW(plane.at(-1, 0), SubscriptError);
    EXPECT_THROW(plane.at(0, -1), SubscriptError);
}

TEST(Plane, CopiesAreIndependentAndMovesEmptyTheSource) {
    Plane original(2, 2, 5);
    Plane copy = original;
    copy.at(1, 1) = 6;
    EXPECT_EQ(original.at(1, 1), 5);

    Plane taken = std::move(copy);
    EXPECT_TRUE(copy.empty());
    EXPECT_EQ(copy.ubX(), -1);
    EXPECT_EQ(taken.at(1, 1), 6);

    FloatPlane heights(1, 1, -20000.0f);
    EXPECT_EQ(heights.at(1, 1), -20000.0f);
    EXPECT_EQ(heights.byteCount(), 16u);
}

TEST(PlaneMemory, LargePlanesAreMappedInWholeLargePagesUnlessThatWastesTooMuch) {
    constexpr std::size_t kLarge = std::size_t{2} << 20;
    EXPECT_EQ(PlaneMappingSize(4096), 0u);
    EXPECT_EQ(PlaneMappingSize(kLarge / 2), 0u);
    // A 1920 x 1080 plane with its spare column and row rounds up to one
    // large page; 8 MB plus one byte would waste a quarter, so only its last
    // small page is rounded.
    EXPECT_EQ(PlaneMappingSize(std::size_t{1921} * 1081), kLarge);
    EXPECT_EQ(PlaneMappingSize(4 * kLarge), 4 * kLarge);
    EXPECT_EQ(PlaneMappingSize(4 * kLarge + 1), 4 * kLarge + 4096);
}

TEST(PlaneMemory, MappedPlanesHoldTheirPixelsThroughCopiesMovesAndAdoption) {
    // 2049 x 2049 bytes lie in mapped memory, 2049 x 2049 floats too.
    Plane large(2048, 2048, 7);
    large.at(2048, 2048) = 1;
    large.at(1000, 3) = 2;
    Plane copy = large;
    copy.at(1000, 3) = 3;
    EXPECT_EQ(large.at(1000, 3), 2);
    EXPECT_EQ(copy.at(2048, 2048), 1);
    EXPECT_EQ(copy.at(0, 0), 7);

    Plane moved = std::move(large);
    EXPECT_EQ(moved.at(1000, 3), 2);
    moved = Plane(3, 3, 4);
    EXPECT_EQ(moved.at(3, 3), 4);
    moved = copy;
    EXPECT_EQ(moved.at(1000, 3), 3);

    FloatPlane heights(2048, 2048, 0.5f);
    EXPECT_EQ(heights.at(2048, 0), 0.5f);

    auto elements = std::make_unique<std::uint8_t[]>(6);
    elements[5] = 8;
    const Plane adopted = Plane::Adopt(2, 1, std::move(elements));
    EXPECT_EQ(adopted.at(2, 1), 8);
}

}  // namespace
}  // namespace wib
