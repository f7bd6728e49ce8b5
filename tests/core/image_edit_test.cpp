// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/image_edit.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/undo.h"
#include "core/workspace.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

constexpr const char* kQuestion = "Apply filter to all frames?";

// Frames kept as one red value each; the main buffer shows the current one.
class ShadeFrames : public FrameSequence {
  public:
    ShadeFrames(Workspace& workspace, std::vector<std::uint8_t> shades)
        : workspace_(workspace), shades(std::move(shades)) {}
    int frameCount() const override { return static_cast<int>(shades.size()); }
    void gotoFrame(int index) override {
        shades[current] = workspace_.document.RBuffer.at(0, 0);
        current = index;
        workspace_.document.RBuffer.fill(shades[current]);
        gotoRefreshFlags.push_back(workspace_.document.NoRefreshFlag);
    }

    Workspace& workspace_;
    std::vector<std::uint8_t> shades;
    int current = 0;
    std::vector<int> gotoRefreshFlags;
};

class Bracket : public ::testing::Test {
  protected:
    void SetUp() override {
        host.newDocument(4, 3);
        host.workspace.pointerShape = 3;  // some tool's own pointer
    }
    std::uint8_t red() { return host.workspace.document.RBuffer.at(0, 0); }
    // Adds 10 to red, as a filter would.
    bool brighten() {
        Plane& r = host.workspace.document.RBuffer;
        r.fill(static_cast<std::uint8_t>(r.at(0, 0) + 10));
        ++runs;
        return true;
    }

    testing::TestHost host;
    int runs = 0;
};

TEST_F(Bracket, SavesUndoMarksRedrawsAndGivesThePointerBack) {
    int titleChanges = 0;
    const Subscription title =
        host.workspace.events.modifiedChanged.subscribe([&] { ++titleChanges; });
    host.workspace.document.RBuffer.fill(50);
    const int refreshes = host.view.refreshes;
    {
        const ImageEdit edit(host.workspace);
        EXPECT_EQ(host.workspace.pointerShape, kBusyPointerShape);
        host.workspace.document.RBuffer.fill(60);
    }
    EXPECT_TRUE(host.workspace.document.modified);
    EXPECT_EQ(titleChanges, 1);
    EXPECT_EQ(host.view.refreshes, refreshes + 1);
    EXPECT_EQ(host.workspace.pointerShape, 3);
    EXPECT_EQ(host.view.pointerShapes, (std::vector<int>{kBusyPointerShape, 3}));
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(red(), 50);
}

TEST_F(Bracket, AnOperationThatChangedNothingLeavesTheDocumentUnmarked) {
    {
        ImageEdit edit(host.workspace, kPluginEdit);
        edit.nothingChanged();
    }
    EXPECT_FALSE(host.workspace.document.modified);
    EXPECT_TRUE(host.view.pointerShapes.empty()) << "a plug-in's edit shows no busy pointer";
}

TEST_F(Bracket, WithoutAnAnimationTheQuestionNeverComes) {
    host.workspace.document.RBuffer.fill(100);
    EXPECT_TRUE(RunImageOperation(
        host.workspace, [this] { return brighten(); }, kQuestion));
    EXPECT_TRUE(host.prompter.questions.empty());
    EXPECT_EQ(red(), 110);

    ShadeFrames one(host.workspace, {110});
    host.workspace.attachFrames(&one);
    EXPECT_TRUE(RunImageOperation(
        host.workspace, [this] { return brighten(); }, kQuestion));
    EXPECT_TRUE(host.prompter.questions.empty());
    EXPECT_EQ(red(), 120);
    host.workspace.attachFrames(nullptr);
}

TEST_F(Bracket, RepeatFiltersEveryFrameOnceAndEndsOnFrameZero) {
    ShadeFrames frames(host.workspace, {100, 40, 70});
    host.workspace.attachFrames(&frames);
    host.workspace.document.RBuffer.fill(100);
    frames.gotoFrame(1);
    host.prompter.defaultAnswer = 1;

    EXPECT_TRUE(RunImageOperation(
        host.workspace, [this] { return brighten(); }, kQuestion));
    ASSERT_EQ(host.prompter.questions, (std::vector<std::string>{kQuestion}));
    EXPECT_EQ(runs, 4) << "the trial, then each frame once";
    // The trial on frame 1 was taken back before frame 1 had its own turn.
    EXPECT_EQ(frames.shades, (std::vector<std::uint8_t>{110, 50, 80}));
    EXPECT_EQ(frames.current, 0);
    EXPECT_EQ(red(), 110);
    // The frame changes of the repeat draw nothing; the last go-to draws.
    EXPECT_EQ(frames.gotoRefreshFlags, (std::vector<int>{0, -1, -1, -1, 0}));
    EXPECT_EQ(host.workspace.pointerShape, 3);
    host.workspace.attachFrames(nullptr);
}

TEST_F(Bracket, TheRepeatShowsItsProgressAndStopsBetweenFramesWhenCancelled) {
    ShadeFrames frames(host.workspace, {100, 40, 70});
    host.workspace.attachFrames(&frames);
    host.workspace.document.RBuffer.fill(100);
    host.prompter.defaultAnswer = 1;
    host.prompter.cancelAfterPolls = 2;  // the user cancels before the third frame

    EXPECT_TRUE(RunImageOperation(
        host.workspace, [this] { return brighten(); }, kQuestion));
    EXPECT_EQ(frames.shades, (std::vector<std::uint8_t>{110, 50, 70}));
    EXPECT_EQ(frames.current, 0);
    EXPECT_EQ(host.prompter.statusLog,
              (std::vector<std::string>{"open:Applying to all frames", "text:Frame 1 of 3",
                                        "text:Frame 2 of 3", "text:Frame 3 of 3", "close"}));
    EXPECT_EQ(host.prompter.progressLog, (std::vector<int>{0, 33, 66}));
    ASSERT_FALSE(host.log.lines.empty());
    EXPECT_EQ(host.log.lines.back(), "Stopped after 2 of 3 frames; those frames stay changed.");
    host.workspace.attachFrames(nullptr);
}

TEST_F(Bracket, AnsweringNoKeepsTheTrialAndARefusalAsksNothing) {
    ShadeFrames frames(host.workspace, {100, 40});
    host.workspace.attachFrames(&frames);
    host.workspace.document.RBuffer.fill(100);
    host.prompter.defaultAnswer = 2;
    EXPECT_TRUE(RunImageOperation(
        host.workspace, [this] { return brighten(); }, kQuestion));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(red(), 110);
    EXPECT_EQ(frames.shades[1], 40);

    host.prompter.questions.clear();
    EXPECT_FALSE(RunImageOperation(
        host.workspace, [] { return false; }, kQuestion));
    EXPECT_TRUE(host.prompter.questions.empty());
    host.workspace.attachFrames(nullptr);
}

}  // namespace
}  // namespace wib
