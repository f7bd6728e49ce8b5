// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdio>

#include "app/headless_prompter.h"
#include "app/launch_options.h"
#include "app/screen_check.h"

namespace wib {
namespace {

std::optional<LaunchOptions> Parse(std::vector<std::string> arguments) {
    std::string error;
    auto options = ParseLaunchOptions(arguments, error);
    EXPECT_EQ(options.has_value(), error.empty()) << error;
    return options;
}

TEST(LaunchOptions, ReadsEverySwitch) {
    const auto options = Parse(
        {"-nogpu", "--headless", "--listen", "wib-test", "--answer", "first", "--token", "T"});
    ASSERT_TRUE(options);
    EXPECT_TRUE(options->noGpu);
    EXPECT_TRUE(options->headless);
    EXPECT_EQ(options->listen, "wib-test");
    EXPECT_EQ(options->answer, 1);
    EXPECT_EQ(options->token, "T");
    EXPECT_TRUE(Parse({"-NoGpu"})->noGpu);
    EXPECT_TRUE(Parse({"/x-nOgPu2"})->noGpu) << "anywhere in an argument, in any case";
    EXPECT_FALSE(Parse({"--headless"})->noGpu);
    EXPECT_FALSE(Parse({"-NOGP"}));
    EXPECT_EQ(Parse({"--headless"})->answer, 2) << "nothing waits by default";
    EXPECT_EQ(Parse({"--plugin-dir", "/my/plugins"})->pluginDir, "/my/plugins")
        << "the window takes it too";
    EXPECT_FALSE(Parse({"--plugin-dir"}));
    EXPECT_EQ(Parse({"--headless", "--answer", "third"})->answer, 3);
}

TEST(LaunchOptions, RefusesWhatMakesNoSense) {
    EXPECT_FALSE(Parse({"--listen"}));
    EXPECT_FALSE(Parse({"--headless", "--answer", "maybe"}));
    EXPECT_FALSE(Parse({"--frobnicate"}));
    EXPECT_FALSE(Parse({"--listen", "x"})) << "only headless mode serves";
}

TEST(ScreenCheck, OnlyAScreenOtherThan96DpiIsAConflict) {
    EXPECT_FALSE(ScreenConflictText(96.0));
    EXPECT_FALSE(ScreenConflictText(95.6));
    EXPECT_EQ(ScreenConflictText(120.0).value_or(""),
              "Your screen DPI is set to 120 instead of the standard 96.\n"
              "This may result in window formatting errors.");
    EXPECT_EQ(ScreenConflictText(144.4).value_or("").substr(0, 29),
              "Your screen DPI is set to 144");
}

TEST(HeadlessPrompter, ThirdAnswersTheSaveQuestionCancelAndATwoButtonQuestionNo) {
    std::FILE* out = std::tmpfile();
    HeadlessPrompter prompter(3, out);
    EXPECT_EQ(prompter.threeChoiceBox("Save changes to \"a.tga\"?", "Wibbleton", "Save",
                                      "Don't Save", "Cancel"),
              3);
    EXPECT_EQ(prompter.question("Apply to all frames?"), 2);
    std::rewind(out);
    char buffer[256] = {};
    const std::size_t read = std::fread(buffer, 1, sizeof buffer - 1, out);
    std::fclose(out);
    EXPECT_EQ(std::string(buffer, read),
              "Question: Save changes to \"a.tga\"? -> 3\n"
              "Question: Apply to all frames? -> 2\n");
}

TEST(HeadlessPrompter, WritesOneLinePerBoxAndAnswersAsTold) {
    std::FILE* out = std::tmpfile();
    HeadlessPrompter prompter(1, out);
    prompter.message("Two\nlines\r\nhere");
    EXPECT_EQ(prompter.question("Apply to all frames?"), 1);
    EXPECT_EQ(prompter.valueBox("Radius", 3.5, 0, 10), 3.5);
    EXPECT_EQ(prompter.requestFileOpen("Open", "*"), "");
    std::rewind(out);
    char buffer[512] = {};
    const std::size_t read = std::fread(buffer, 1, sizeof buffer - 1, out);
    std::fclose(out);
    EXPECT_EQ(std::string(buffer, read),
              "MessageBox: Two\\nlines\\nhere\n"
              "Question: Apply to all frames? -> 1\n"
              "ValueBox: Radius -> 3.5\n"
              "RequestFile: Open -> cancelled\n");
}

}  // namespace
}  // namespace wib
