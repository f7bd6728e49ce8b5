// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "plugins/file_filter.h"
#include "tests/plugins/method_fixture.h"

namespace wib::testing {
namespace {

using Status = MethodFixture;

TEST_F(Status, StatusWindowOpensWithCaptionAndCloseResetsIt) {
    call("Wib_StatusOpen", Params(std::string("Inverting")));
    EXPECT_TRUE(connection.statusOpen);
    call("Wib_Status", Params(std::string("Row 3")));
    call("Wib_StatusClose");
    EXPECT_FALSE(connection.statusOpen);
    call("Wib_StatusOpen");
    EXPECT_EQ(host.prompter.statusLog, (std::vector<std::string>{"open:Inverting", "text:Row 3",
                                                                 "close", "open:Processing..."}));
}

TEST_F(Status, ProgressRoundsHalvesToEvenAndStaysWithinPercent) {
    for (const double value : {2.5, 3.5, 49.6, -5.0, 250.0, 0.5}) {
        call("Wib_SetProgress", Params(value));
    }
    call("Wib_SetProgress", Params(7));
    EXPECT_EQ(host.prompter.progressLog, (std::vector<int>{2, 4, 50, 0, 100, 0, 7}));
    EXPECT_EQ(errorOf("Wib_SetProgress", Params(1e300)), 5);
}

TEST_F(Status, MessagesQuestionsAndValuesGoThroughThePrompter) {
    EXPECT_EQ(answer("Wib_MessageBox", Params(std::string("Done"))).get().as<int>(), 1);
    EXPECT_EQ(host.prompter.messages, std::vector<std::string>{"Done"});

    host.prompter.answers = {1};
    EXPECT_EQ(answer("Wib_QuestionBox", Params(std::string("Again?"))).get().as<int>(), 1);
    EXPECT_EQ(answer("Wib_QuestionBox", Params(std::string("Sure?"), std::string("Title")))
                  .get()
                  .as<int>(),
              2);

    EXPECT_EQ(answer("Wib_ValueBox", Params(std::string("Radius"), 4, 1, 10)).get().as<double>(),
              4.0);
    EXPECT_EQ(answer("Wib_ValueBox2", Params(std::string("Blur"), std::string("Radius"), 2.5, 0, 9))
                  .get()
                  .as<double>(),
              2.5);
    EXPECT_EQ(errorOf("Wib_ValueBox", Params(std::string("Radius"), 4, 10, 1)), 5);

    host.prompter.fileAnswer = "/home/a/pic.tga";
    EXPECT_EQ(answer("Wib_RequestFile_Open", Params(std::string("Open"), std::string("*.tga")))
                  .get()
                  .as<std::string>(),
              "/home/a/pic.tga");
    host.prompter.fileAnswer.clear();
    EXPECT_EQ(answer("Wib_DirectoryBrowse", Params(std::string("Folder"))).get().as<std::string>(),
              "");
    EXPECT_EQ(host.prompter.requests,
              (std::vector<std::string>{"Radius", "Radius", "Open", "Folder"}));
}

TEST_F(Status, PrintErrorWritesTheLog) {
    call("Wib_PrintError", Params(std::string("plug-in: no selection")));
    ASSERT_FALSE(host.log.lines.empty());
    EXPECT_EQ(host.log.lines.back(), "plug-in: no selection");
}

TEST(FileFilter, ClassicPairsBecomeTheDialogsForm) {
    EXPECT_EQ(DialogFileFilter("Targa|*.tga;*.tpic|All files|*.*"),
              "Targa (*.tga *.tpic);;All files (*)");
    EXPECT_EQ(DialogFileFilter("Images (*.tga *.bmp);;All files (*)"),
              "Images (*.tga *.bmp);;All files (*)");
    EXPECT_EQ(DialogFileFilter(""), "");
}

}  // namespace
}  // namespace wib::testing
