// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/animation_plan.h"

#include <gtest/gtest.h>

#include "tests/support/test_host.h"

namespace wib {
namespace {

TEST(AnimationPlan, TextsOfTheCreationPanel) {
    EXPECT_EQ(ProjectLengthText(12, "24"), "12 frames at 24 fps = .5 seconds");
    EXPECT_EQ(ProjectLengthText(100, "30"), "100 frames at 30 fps = 3.3 seconds");
    EXPECT_EQ(ProjectLengthText(5, "0"), "5 frames at 0 fps = 5. seconds");
    EXPECT_EQ(ProjectLengthText(1000, "8"), "1000 frames at 8 fps = 125. seconds");
    EXPECT_EQ(RequiredMemoryText(100, 1920, 1080), "593 MB. required");
    EXPECT_EQ(RequiredMemoryText(2, 640, 480), "1 MB. required");
    EXPECT_EQ(MemoryLineText(std::uint64_t{2048} << 20, (std::uint64_t{7936} << 20) + 5),
              "2048 MB physical memory free of 7936 MB");
    EXPECT_EQ(FrameCountProblem(1).value_or(""),
              "You cannot create an animation with 1 or less frames.");
    EXPECT_FALSE(FrameCountProblem(2));
}

TEST(AnimationPlan, OneDecimalWithoutZeros) {
    EXPECT_EQ(FormatOneDecimalNoZeros(0.04), ".");
    EXPECT_EQ(FormatOneDecimalNoZeros(0.05), ".1");
    EXPECT_EQ(FormatOneDecimalNoZeros(0.96), "1.");
    EXPECT_EQ(FormatOneDecimalNoZeros(12.25), "12.3");
    EXPECT_EQ(FormatOneDecimalNoZeros(-2.5), "-2.5");
}

TEST(AnimationPlan, MakingTheRateTheDefaultKeepsItAndSaysSo) {
    testing::TestHost host;
    MakeDefaultFrameRate(host.workspace, "30");
    EXPECT_EQ(host.preferences.value("Settings", "DefaultFrameRate"), "30");
    EXPECT_EQ(host.prompter.messages, (std::vector<std::string>{"Default frame rate is 30"}));
}

}  // namespace
}  // namespace wib
