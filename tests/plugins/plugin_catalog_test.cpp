// SPDX-License-Identifier: GPL-3.0-or-later
#include <dirent.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "plugins/plugin_catalog.h"

namespace wib {
namespace {

namespace fs = std::filesystem;

// A fresh folder under the temporary folder, removed afterwards.
class PluginFolderTest : public ::testing::Test {
  protected:
    void SetUp() override {
        root = fs::temp_directory_path() /
               ("wib-catalog-" + std::to_string(::getpid()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(root);
        fs::create_directories(root);
    }
    void TearDown() override { fs::remove_all(root); }

    static void Write(const fs::path& file, bool executable) {
        fs::create_directories(file.parent_path());
        std::ofstream(file) << "#!/bin/sh\n";
        ::chmod(file.c_str(), executable ? 0755 : 0644);
    }

    // The names of the folder as the system's own directory reading returns them.
    static std::vector<std::string> ReaddirOrder(const fs::path& folder) {
        std::vector<std::string> names;
        DIR* dir = ::opendir(folder.c_str());
        while (const dirent* entry = ::readdir(dir)) {
            names.emplace_back(entry->d_name);
        }
        ::closedir(dir);
        return names;
    }

    static std::vector<std::string> Captions(const std::vector<PluginEntry>& entries,
                                             PluginKind kind) {
        std::vector<std::string> captions;
        for (const PluginEntry& entry : entries) {
            if (entry.kind == kind) {
                captions.push_back(entry.caption);
            }
        }
        return captions;
    }

    fs::path root;
};

TEST_F(PluginFolderTest, SuffixesCaptionsAndWhatIsSkipped) {
    Write(root / "Filmgrain_pf.exe", true);
    Write(root / "_pf.exe", true);  // an empty caption
    Write(root / "Loud_PF.EXE", true);
    Write(root / "Shy_pf.exe", false);  // not executable
    Write(root / "Reader_pi.exe", true);
    Write(root / "Writer_px.exe", true);
    Write(root / "Fx_brush_pb.exe", true);
    Write(root / "Clock2_pm.exe", true);
    Write(root / "notes.txt", true);
    Write(root / "pf.exe", true);  // too short for any suffix
    fs::create_directories(root / "Folder_pf.exe");

    const std::vector<PluginEntry> entries = ListPluginFolder(root);
    ASSERT_EQ(entries.size(), 7u);
    // Kind by kind: import, export, brush, filter, misc.
    const std::vector<PluginKind> kinds{PluginKind::Import, PluginKind::Export, PluginKind::Brush,
                                        PluginKind::Filter, PluginKind::Filter, PluginKind::Filter,
                                        PluginKind::Misc};
    for (std::size_t i = 0; i < entries.size(); ++i) {
        EXPECT_EQ(entries[i].kind, kinds[i]) << i;
        EXPECT_TRUE(entries[i].file.is_absolute());
    }
    EXPECT_EQ(Captions(entries, PluginKind::Import), std::vector<std::string>{"Reader"});
    EXPECT_EQ(Captions(entries, PluginKind::Brush), std::vector<std::string>{"Fx_brush"});
    EXPECT_EQ(Captions(entries, PluginKind::Misc), std::vector<std::string>{"Clock2"});
    EXPECT_EQ(PluginCommandId(entries[1]), "plugin.export.Writer");

    // The filters in the order the file system gives their names.
    std::vector<std::string> expected;
    for (const std::string& name : ReaddirOrder(root)) {
        if (name == "Filmgrain_pf.exe" || name == "_pf.exe" || name == "Loud_PF.EXE") {
            expected.push_back(name.substr(0, name.size() - 7));
        }
    }
    EXPECT_EQ(Captions(entries, PluginKind::Filter), expected);
}

TEST_F(PluginFolderTest, ListingComesBackToTheCurrentFolder) {
    Write(root / "a" / "A_pf.exe", true);
    const fs::path before = fs::current_path();
    EXPECT_EQ(ListPluginFolder(root / "a").size(), 1u);
    EXPECT_EQ(fs::current_path(), before);
    EXPECT_TRUE(ListPluginFolder(root / "missing").empty());
    EXPECT_EQ(fs::current_path(), before);
}

TEST_F(PluginFolderTest, RescanReplacesAndFirstFolderWinsACaption) {
    Write(root / "program" / "Same_pf.exe", true);
    Write(root / "program" / "Only_pm.exe", true);
    Write(root / "user" / "Same_pf.exe", true);
    Write(root / "user" / "Mine_pf.exe", true);
    PluginCatalog catalog;
    const std::vector<fs::path> folders{root / "program", root / "user"};
    catalog.rescan(folders);
    catalog.rescan(folders);
    ASSERT_EQ(catalog.entries().size(), 3u);
    const PluginEntry* same = catalog.find(PluginKind::Filter, "Same");
    ASSERT_NE(same, nullptr);
    EXPECT_EQ(same->file, root / "program" / "Same_pf.exe");
    // Misc comes after both folders' filters.
    EXPECT_EQ(catalog.entries().back().caption, "Only");

    fs::remove(root / "user" / "Mine_pf.exe");
    Write(root / "user" / "New_pi.exe", true);
    catalog.rescan(folders);
    EXPECT_EQ(catalog.find(PluginKind::Filter, "Mine"), nullptr);
    ASSERT_NE(catalog.find(PluginKind::Import, "New"), nullptr);
    EXPECT_EQ(catalog.entries().front().caption, "New");
}

TEST(PluginFolders, CommandLineThenPreferenceThenProgramAndUser) {
    EXPECT_EQ(PluginFolders({"/cli", "/pref", "/prog", "/user"}), std::vector<fs::path>{"/cli"});
    EXPECT_EQ(PluginFolders({"", "/pref", "/prog", "/user"}), std::vector<fs::path>{"/pref"});
    EXPECT_EQ(PluginFolders({"", "", "/prog", "/user"}), (std::vector<fs::path>{"/prog", "/user"}));
}

TEST_F(PluginFolderTest, SpecialPluginIsFoundByItsPrefix) {
    Write(root / "one" / "WibbyFX_old.txt", true);
    Write(root / "two" / "WibbyFX2.exe", false);
    Write(root / "two" / "WibbyFX3.EXE", true);
    EXPECT_EQ(FindPluginByPrefix({root / "one", root / "two"}, "WibbyFX"),
              root / "two" / "WibbyFX3.EXE");
    EXPECT_TRUE(FindPluginByPrefix({root / "one"}, "WibbyFX").empty());
}

TEST_F(PluginFolderTest, FixedPluginIsFoundByItsExactName) {
    Write(root / "one" / "Clock2_pm.exe", false);  // not startable: the next folder's wins
    Write(root / "one" / "clock2_pm.exe", true);   // another name
    Write(root / "two" / "Clock2_pm.exe", true);
    Write(root / "three" / "Audio Recorder_pm.exe", true);
    const std::vector<fs::path> folders = {root / "one", root / "two", root / "three"};
    EXPECT_EQ(FindPluginFile(folders, "Clock2_pm.exe"), root / "two" / "Clock2_pm.exe");
    EXPECT_EQ(FindPluginFile(folders, "Audio Recorder_pm.exe"),
              root / "three" / "Audio Recorder_pm.exe");
    // Found nowhere: the first folder's, which cannot start.
    EXPECT_EQ(FindPluginFile(folders, "Missing_pm.exe"), root / "one" / "Missing_pm.exe");
}

}  // namespace
}  // namespace wib
