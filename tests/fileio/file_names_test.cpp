// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "fileio/file_filters.h"
#include "fileio/file_names.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

TEST(FileNames, NumbersStandAtTheEndOnceAThreeLetterExtensionIsOff) {
    EXPECT_EQ(SafeRemoveExt("name.tga"), "name");
    EXPECT_EQ(SafeRemoveExt("name.jpeg"), "name.jpeg");
    EXPECT_EQ(SafeRemoveExt(".tga"), ".tga");
    EXPECT_FALSE(SafeHasNumeric("name.tga"));
    EXPECT_EQ(SafeCountNumeric("name.tga"), 0);
    EXPECT_TRUE(SafeHasNumeric("name12.tga"));
    EXPECT_EQ(SafeCountNumeric("name12.tga"), 2);
    EXPECT_EQ(SafeGetNumeric("name12.tga"), "12");
    EXPECT_EQ(SafeRemoveNumeric("name12.tga"), "name");
    EXPECT_FALSE(SafeHasNumeric("name12.jpeg"));
    EXPECT_FALSE(SafeHasNumeric("7"));
    EXPECT_EQ(SafeGetNumeric("frame0007"), "0007");
}

TEST(FileNames, ExtensionChecksIgnoreLetterCase) {
    EXPECT_TRUE(CheckforTGA("PIC.TGA"));
    EXPECT_FALSE(CheckforTGA("pic.tgax"));
    EXPECT_TRUE(CheckExtention("photo.JPEG"));
    EXPECT_TRUE(CheckExtention("page.shtml"));
    EXPECT_TRUE(CheckExtention("scan.tiff"));
    EXPECT_FALSE(CheckExtention("photo.jpg"));
    EXPECT_FALSE(CheckExtention("jpeg"));
}

TEST(FileNames, TheNextNumberedNameKeepsTheWidthOfTheNumber) {
    EXPECT_EQ(NextNumberedName("name0001.tga"), "name0002.tga");
    EXPECT_EQ(NextNumberedName("name0099.tga"), "name0100.tga");
    EXPECT_EQ(NextNumberedName("name9.tga"), "name10.tga");
    EXPECT_EQ(NextNumberedName("name.tga"), "name0001.tga");
    EXPECT_EQ(NextNumberedName("shot99999999999999999999"), "shot100000000000000000000");
}

TEST(FileNames, EnforceFilenameAsksOnlyWhenTheExtensionDiffers) {
    testing::RecordingPrompter prompter;
    prompter.answers = {1, 2, 1};
    EXPECT_EQ(EnforceFilename(prompter, "/tmp/pic.png", ".png"), "/tmp/pic.png");
    EXPECT_TRUE(prompter.questions.empty());
    EXPECT_EQ(EnforceFilename(prompter, "/tmp/pic.PNG", ".png"), "/tmp/pic.PNG");
    EXPECT_EQ(EnforceFilename(prompter, "/tmp/pic.jpeg", ".jpg"), "/tmp/pic.jpg");
    EXPECT_EQ(EnforceFilename(prompter, "/tmp/pic.jpeg", ".jpg"), "/tmp/pic.jpeg");
    EXPECT_EQ(EnforceFilename(prompter, "/tmp/picture", ".tga"), "/tmp/picture.tga");
    EXPECT_EQ(EnforceFilename(prompter, "a.b", ".tga"), "a.b");
    ASSERT_EQ(prompter.questions.size(), 3u);
    EXPECT_EQ(prompter.questions[0],
              "Extension did not match file type.\nFilename extension=.jpeg   Save type=.jpg\n"
              "Would you like to change to the correct extention?");
}

TEST(FileFilters, EntriesCarryTheirNameExtensionAndFormatWord) {
    const auto save = ParseFilter(kSaveFilter);
    ASSERT_EQ(save.size(), 10u);
    EXPECT_EQ(save[0].caption, "Default Targa (*.tga)");
    EXPECT_EQ(save[0].name, "Default Targa");
    EXPECT_EQ(save[8].name, "Layered format");
    EXPECT_EQ(SaveType("Layered")->extension, ".lyr");
    EXPECT_EQ(SaveTypeForExtension(".ora")->name, "OpenRaster");
    EXPECT_EQ(FormatWord(*SaveType("Jpg")), "JPEG");
    EXPECT_EQ(FormatWord(*SaveType("Tiff")), "TIFF");
    EXPECT_EQ(FormatWord(*SaveType("Open EXR")), "EXR");
    EXPECT_EQ(SaveType("Png")->extension, ".png");
    EXPECT_FALSE(SaveType("Gif"));
    EXPECT_EQ(SaveTypeForExtension(".tga")->name, "Default Targa");
    const auto open = ParseFilter(kOpenFilter);
    ASSERT_EQ(open.size(), 4u);
    EXPECT_EQ(open[1].extension, "");
    EXPECT_EQ(open[2].extension, ".lyr");
}

}  // namespace
}  // namespace wib
