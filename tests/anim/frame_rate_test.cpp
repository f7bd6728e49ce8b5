// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_rate.h"

#include <gtest/gtest.h>

#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

TEST(FrameRate, DelayIsAThousandMillisecondsOverTheRateRoundedDown) {
    const std::pair<double, int> cases[] = {{24, 41},  {30, 33},    {25, 40},  {29.97, 33},
                                            {1, 1000}, {0.5, 1000}, {0, 1000}, {-5, 1000},
                                            {999, 1},  {2000, 1}};
    for (auto [rate, delay] : cases) {
        EXPECT_EQ(FrameDelayFromRate(rate), delay) << rate;
    }
}

TEST(FrameRate, TheFieldIsReadAsTyped) {
    EXPECT_EQ(FrameRateFromText("24"), 24);
    EXPECT_EQ(FrameRateFromText(" 12.5 fps"), 12.5);
    EXPECT_EQ(FrameRateFromText("abc"), 0);
    EXPECT_EQ(FrameRateFromText(""), 0);
    EXPECT_EQ(FrameRateFromText("nan"), 0);
    EXPECT_EQ(FrameRateFieldValue("29.5"), 30);
    EXPECT_EQ(FrameRateFieldValue("30.5"), 30) << "halves go to the even neighbour";
    EXPECT_EQ(FrameRateFieldValue("1e99"), 2147483647);
    EXPECT_EQ(FrameRateText(24), "24");
    EXPECT_EQ(FrameRateText(29.97), "29.97");
}

TEST(FrameRate, TheDefaultComesFromThePreferences) {
    MemoryPreferences preferences;
    EXPECT_EQ(DefaultFrameRateText(preferences), "24");
    preferences.setValue("Settings", "DefaultFrameRate", "12");
    EXPECT_EQ(DefaultFrameRateText(preferences), "12");
    preferences.setValue("Settings", "DefaultFrameRate", "none");
    EXPECT_EQ(DefaultFrameRateText(preferences), "24");
}

TEST_F(FrameStoreTest, SettingTheRateFieldRecomputesTheDelay) {
    EXPECT_EQ(store.FrameDelayMs(), 41) << "24 fps to start";
    store.rateField().setRate(12);
    EXPECT_EQ(store.rateField().text(), "12");
    EXPECT_EQ(store.FrameDelayMs(), 83);
    EXPECT_EQ(store.rateField().rate(), 12);
    store.rateField().setText("fast");
    EXPECT_EQ(store.FrameDelayMs(), 1000);
    EXPECT_EQ(store.rateField().rate(), 0);
}

}  // namespace
}  // namespace wib::testing
