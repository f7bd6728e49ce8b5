// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/plane.h"

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

}  // namespace
}  // namespace wib
