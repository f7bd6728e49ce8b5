// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <filesystem>

#include "core/csv_fields.h"
#include "core/general_table.h"
#include "core/recent_files.h"
#include "core/text_file.h"

namespace wib {
namespace {

class TempFolder : public ::testing::Test {
  protected:
    void SetUp() override {
        folder = std::filesystem::temp_directory_path() /
                 ("wib-files-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::create_directories(folder);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }
    std::filesystem::path folder;
};

TEST(CsvFields, QuotedFieldsKeepCommasAndRoundTrip) {
    EXPECT_EQ(SplitCsvFields(" a , \"b, c\" ,d"), (std::vector<std::string>{"a", "b, c", "d"}));
    EXPECT_EQ(SplitCsvFields(""), (std::vector<std::string>{""}));
    for (const std::string text : {"plain", "with, comma", " padded ", "C:\\x\\y.tga"}) {
        EXPECT_EQ(SplitCsvFields(QuoteCsvField(text)).at(0), text);
    }
}

TEST_F(TempFolder, RecentListKeepsOrderDropsRepeatsAndRoundTrips) {
    std::vector<std::string> recent;
    for (int i = 0; i < 10; ++i) {
        AddRecentFile(recent, "/pictures/p" + std::to_string(i) + ".tga");
    }
    AddRecentFile(recent, "/pictures/p5.tga");
    AddRecentFile(recent, "/odd, name.tga");
    ASSERT_EQ(recent.size(), kMaxRecentFiles);
    EXPECT_EQ(recent[0], "/odd, name.tga");
    EXPECT_EQ(recent[1], "/pictures/p5.tga");
    EXPECT_EQ(std::count(recent.begin(), recent.end(), "/pictures/p5.tga"), 1);

    const auto file = folder / "Mruds.txt";
    ASSERT_TRUE(SaveMRuds(file, recent));
    EXPECT_EQ(LoadMruds(file), recent);
    EXPECT_TRUE(LoadMruds(folder / "missing.txt").empty());
}

TEST_F(TempFolder, GeneralTableNeedsItsExactShape) {
    std::string bytes(GeneralTable::kColumns * GeneralTable::kRows, '\0');
    bytes[3 * 5 + GeneralTable::kColumns * 2] = 10;  // palette 2, colour 5, red
    bytes[3 * 5 + 2 + GeneralTable::kColumns * 2] = 30;
    ASSERT_TRUE(WriteTextFile(folder / "General.dat", bytes));
    const auto table = GeneralTable::Load(folder / "General.dat");
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->colour(2, 5), (std::array<std::uint8_t, 3>{10, 0, 30}));

    ASSERT_TRUE(WriteTextFile(folder / "Short.dat", bytes.substr(1)));
    EXPECT_FALSE(GeneralTable::Load(folder / "Short.dat").has_value());
    EXPECT_FALSE(GeneralTable::Load(folder / "none.dat").has_value());
    EXPECT_TRUE(GeneralTable::Load(std::filesystem::path(WIB_DATA_DIR) / "General.dat"));
}

}  // namespace
}  // namespace wib
