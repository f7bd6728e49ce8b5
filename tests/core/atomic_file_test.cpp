// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/atomic_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/file_size_limit.h"

namespace wib {
namespace {

namespace fs = std::filesystem;

class AtomicWrite : public ::testing::Test {
  protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "wib-atomic-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        target = folder / "picture.tga";
    }
    void TearDown() override { fs::remove_all(folder); }
    static std::string contents(const fs::path& file) {
        std::ifstream in(file, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }
    // Only the target: no temporary file is ever left beside it.
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
    }
    fs::path folder;
    fs::path target;
};

TEST_F(AtomicWrite, WritesAFileAndReplacesItWholeKeepingItsPermissions) {
    std::string error;
    ASSERT_TRUE(WriteFileAtomically(target, "first", error)) << error;
    ::chmod(target.c_str(), 0640);
    ASSERT_TRUE(WriteFileAtomically(target, "second, longer", error)) << error;
    EXPECT_EQ(contents(target), "second, longer");
    EXPECT_EQ(fs::status(target).permissions() & fs::perms::all,
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(AtomicWrite, AWriteThatIsNeverCommittedLeavesTheOldFile) {
    std::string error;
    ASSERT_TRUE(WriteFileAtomically(target, "old", error));
    {
        AtomicFile file(target);
        ASSERT_TRUE(file.write("new", 3));
    }
    EXPECT_EQ(contents(target), "old");
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(AtomicWrite, AFolderThatIsNotThereGivesTheSystemsReason) {
    std::string error;
    EXPECT_FALSE(WriteFileAtomically(folder / "missing" / "x.tga", "x", error));
    EXPECT_EQ(error, "No such file or directory");
}

// A file-size limit stands in for a full disk: the write fails part way,
// and the file written before stays whole.
TEST_F(AtomicWrite, AFileSizeLimitLeavesTheOldFileAndSaysFileTooLarge) {
    const std::string old(3000, 'o');
    std::string error;
    ASSERT_TRUE(WriteFileAtomically(target, old, error));
    const int status = testing::RunWithFileSizeLimit(4096, [this] {
        std::string reason;
        const bool written = WriteFileAtomically(target, std::string(100000, 'n'), reason);
        return !written && reason == "File too large" ? 0 : 1;
    });
    EXPECT_EQ(status, 0) << "the write failed with the system's reason";
    EXPECT_EQ(contents(target), old);
    EXPECT_EQ(filesInFolder(), 1u);
}

TEST_F(AtomicWrite, MovingAFinishedFileIntoPlaceKeepsItsExtension) {
    const fs::path temp = TempPathBeside(target);
    EXPECT_EQ(temp.parent_path(), folder);
    EXPECT_EQ(temp.extension(), ".tga");
    EXPECT_NE(TempPathBeside(target), temp) << "each call a fresh name";
    { std::ofstream(temp) << "converted"; }
    std::string error;
    ASSERT_TRUE(MoveIntoPlace(temp, target, error)) << error;
    EXPECT_EQ(contents(target), "converted");
    EXPECT_FALSE(MoveIntoPlace(temp, target, error));
    EXPECT_EQ(error, "No such file or directory");
}

}  // namespace
}  // namespace wib
