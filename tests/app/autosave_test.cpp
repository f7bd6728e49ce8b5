// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/autosave.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "anim/frame_store.h"
#include "core/host/process_runner.h"
#include "core/image_edit.h"
#include "core/recovery_folder.h"
#include "fileio/converter_bridge.h"
#include "fileio/image_files.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class NoProcesses : public ProcessRunner {
  public:
    std::optional<int> start(const std::string&) override { return std::nullopt; }
    bool running(int) override { return false; }
    std::optional<ProcessEnd> ended(int) override { return std::nullopt; }
};

// One running copy of the program's work: document, frames and files on the
// fake host, with the recovery folder in a folder of the test's own.
struct Work {
    explicit Work(const fs::path& folder)
        : frames(host.workspace, folder / ("crop-" + std::to_string(++made))),
          recovery(folder / "recovery") {
        host.newDocument(6, 4);
    }
    static inline int made = 0;
    testing::TestHost host;
    NoProcesses processes;
    ConverterBridge converter{processes, fs::temp_directory_path()};
    ImageFiles files{converter};
    FrameStore frames;
    RecoveryFolder recovery;
    Autosave autosave{{host.workspace, frames, files}, recovery};
};

class AutosaveTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder =
            fs::temp_directory_path() /
            ("wib-autosave-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
             "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
    }
    void TearDown() override { fs::remove_all(folder); }
    static void modify(Work& work, std::uint8_t value) {
        const ImageEdit edit(work.host.workspace);
        work.host.workspace.document.RBuffer.at(1, 2) = value;
    }
    fs::path folder;
};

TEST_F(AutosaveTest, ModifiedWorkGetsASnapshotEveryIntervalAndTheNewestTwoAreKept) {
    Work work(folder);
    auto& clock = work.host.clock;
    work.autosave.tick();
    modify(work, 7);
    work.autosave.tick();  // the interval starts now
    clock.time += 119s;
    work.autosave.tick();
    work.autosave.waitIdle();
    EXPECT_TRUE(work.recovery.own().empty()) << "not yet";
    clock.time += 1s;
    work.autosave.tick();
    work.autosave.waitIdle();
    EXPECT_EQ(work.recovery.own().size(), 1u);
    for (int i = 0; i < 3; ++i) {
        clock.time += 120s;
        work.autosave.tick();
        work.autosave.waitIdle();
    }
    EXPECT_EQ(work.recovery.own().size(), 2u);

    SetModified(work.host.workspace, false);  // saved
    EXPECT_TRUE(work.recovery.own().empty());
}

TEST_F(AutosaveTest, ZeroSecondsTurnsItOffAndThePreferenceSetsTheInterval) {
    Work work(folder);
    work.host.preferences.setValue("Settings", "AutosaveSeconds", "0");
    modify(work, 7);
    for (int i = 0; i < 3; ++i) {
        work.autosave.tick();
        work.host.clock.time += 1000s;
    }
    work.autosave.waitIdle();
    EXPECT_TRUE(work.recovery.own().empty());
    work.host.preferences.setValue("Settings", "AutosaveSeconds", "5");
    work.autosave.tick();
    work.host.clock.time += 5s;
    work.autosave.tick();
    work.autosave.waitIdle();
    EXPECT_EQ(work.recovery.own().size(), 1u);
}

// The work of a copy that ended without saving comes back whole in the next
// copy: image, alpha, swap, brush, frames, names; a copy still running is
// never offered another's work.
TEST_F(AutosaveTest, ACopyThatEndedUnsavedHasItsWorkRestoredByTheNext) {
    auto first = std::make_unique<Work>(folder);
    {
        Workspace& w = first->host.workspace;
        w.document.FileName = "/pictures/cat.tga";
        first->files.restoreSettings("/pictures/cat.tga", {"Default Targa", 3, 90});
        w.document.SwapG.at(5, 3) = 99;
        w.document.ABuffer.at(0, 0) = 12;
        Plane r(1, 1, 1), g(1, 1, 2), b(1, 1, 3), a(1, 1, 200);
        w.brush.assign(std::move(r), std::move(g), std::move(b), std::move(a));
        ASSERT_TRUE(first->frames.CreateAnimation(3, 1));
        first->frames.GotoFrame(2);
        modify(*first, 42);  // frame 2, in the image
        first->frames.GotoFrame(1);
        first->frames.rateField().setText("12");
        first->autosave.snapshotNow();
        first->autosave.waitIdle();
    }
    Work second(folder);
    EXPECT_FALSE(second.autosave.offerRecovery()) << "the first copy is still running";
    EXPECT_TRUE(second.host.prompter.questions.empty());

    first.reset();  // ends without Exit: the snapshot stays
    second.host.prompter.answers = {1};
    ASSERT_TRUE(second.autosave.offerRecovery());
    EXPECT_EQ(second.host.prompter.questions, std::vector<std::string>{kRecoverQuestion});
    const Workspace& w = second.host.workspace;
    EXPECT_EQ(w.document.width, 6);
    EXPECT_EQ(w.document.FileName, "/pictures/cat.tga");
    EXPECT_TRUE(w.document.modified);
    EXPECT_EQ(second.files.saveSettings().targaFormat, 3);
    EXPECT_EQ(w.document.SwapG.at(5, 3), 99);
    EXPECT_EQ(w.document.ABuffer.at(0, 0), 12);
    EXPECT_EQ(w.brush.G.at(1, 1), 2);
    EXPECT_EQ(w.brush.A().at(0, 0), 200);
    ASSERT_EQ(second.frames.FrameCount(), 3);
    EXPECT_EQ(second.frames.CurrentFrame(), 1);
    EXPECT_EQ(second.frames.rateField().text(), "12");
    EXPECT_EQ(second.frames.framePlane(FrameColour::Red, 2).at(1, 2), 42);
    EXPECT_EQ(w.document.RBuffer.at(1, 2), 255) << "frame 1 is shown, as it was";
    EXPECT_EQ(second.recovery.own().size(), 1u) << "the restored work is this copy's now";
    EXPECT_TRUE(second.recovery.orphans().empty());
}

TEST_F(AutosaveTest, DeclinedWorkIsMovedToTheOldFolderNotDeleted) {
    {
        Work first(folder);
        modify(first, 9);
        first.autosave.snapshotNow();
        first.autosave.snapshotNow();
    }
    Work second(folder);
    second.host.prompter.answers = {2};
    EXPECT_FALSE(second.autosave.offerRecovery());
    EXPECT_EQ(second.host.workspace.document.RBuffer.at(1, 2), 255);
    EXPECT_FALSE(second.host.workspace.document.modified);
    EXPECT_TRUE(second.recovery.orphans().empty());
    EXPECT_FALSE(fs::is_empty(folder / "recovery" / "old"));
    Work third(folder);
    EXPECT_FALSE(third.autosave.offerRecovery());
    EXPECT_TRUE(third.host.prompter.questions.empty()) << "asked once only";
}

TEST_F(AutosaveTest, ALockLeftWithoutASnapshotIsClearedAndOneWithWorkIsKept) {
    fs::create_directories(folder / "recovery");
    const fs::path empty = folder / "recovery" / "1-1.lock";
    const fs::path withWork = folder / "recovery" / "2-2.lock";
    const fs::path work = folder / "recovery" / "2-2.00000001.snap";
    for (const fs::path& file : {empty, withWork, work}) {
        std::ofstream(file) << "x";
    }
    const RecoveryFolder recovery(folder / "recovery");
    EXPECT_FALSE(fs::exists(empty));
    EXPECT_TRUE(fs::exists(withWork));
    EXPECT_TRUE(fs::exists(work));
}

}  // namespace
}  // namespace wib
