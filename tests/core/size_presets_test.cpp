// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <fstream>

#include "core/size_presets.h"

namespace wib {
namespace {

TEST(SizePresets, ReadsQuotedAndPlainFieldsInOrder) {
    const auto presets = ParseSizePresets(
        "\"HD 1080, 16:9\",1920,1080\r\n"
        "Square, 512 , \"512\"\n"
        "\n"
        "Rounded,640.5,479.5\n");
    ASSERT_EQ(presets.size(), 3u);
    EXPECT_EQ(presets[0].label, "HD 1080, 16:9");
    EXPECT_EQ(presets[0].width, 1920);
    EXPECT_EQ(presets[0].height, 1080);
    EXPECT_EQ(presets[1].label, "Square");
    EXPECT_EQ(presets[1].height, 512);
    EXPECT_EQ(presets[2].width, 640) << "halves go to the even neighbour";
    EXPECT_EQ(presets[2].height, 480);
}

TEST(SizePresets, StopsQuietlyAtTheFirstRecordThatCannotBeStored) {
    EXPECT_EQ(ParseSizePresets("A,1,2\nShort,3\nC,5,6\n").size(), 1u);
    EXPECT_EQ(ParseSizePresets("A,1,2\nB,wide,6\nC,5,6\n").size(), 1u);
    EXPECT_EQ(ParseSizePresets("A,1,2\nB,40000,6\nC,5,6\n").size(), 1u);
    EXPECT_EQ(ParseSizePresets("A,1,2\nB,,6\n").size(), 1u);
    EXPECT_EQ(ParseSizePresets("\"Unclosed,1,2\n").size(), 0u);
    EXPECT_TRUE(ParseSizePresets("").empty());
}

TEST(SizePresets, TakesAtMostEightyPresets) {
    std::string text;
    for (int i = 1; i <= 100; ++i) {
        text.append("P").append(std::to_string(i)).append(",").append(std::to_string(i));
        text.append(",1\n");
    }
    const auto presets = ParseSizePresets(text);
    ASSERT_EQ(presets.size(), 80u);
    EXPECT_EQ(presets.back().label, "P80");
}

TEST(SizePresets, ShippedFileIsReadWholeAndMissingFileGivesNone) {
    const std::filesystem::path file = std::filesystem::path(WIB_DATA_DIR) / "Def_Res.txt";
    std::ifstream in(file);
    std::size_t records = 0;
    for (std::string line; std::getline(in, line);) {
        records += line.find_first_not_of(" \r") != std::string::npos;
    }
    const auto presets = ReadSizePresets(file);
    EXPECT_GE(presets.size(), 10u);
    EXPECT_EQ(presets.size(), records);
    for (const auto& preset : presets) {
        EXPECT_GT(preset.width, 0) << preset.label;
        EXPECT_GT(preset.height, 0) << preset.label;
    }
    EXPECT_TRUE(ReadSizePresets("/nonexistent/Def_Res.txt").empty());
}

}  // namespace
}  // namespace wib
