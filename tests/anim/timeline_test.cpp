// SPDX-License-Identifier: GPL-3.0-or-later
// Timeline edits: the order, exposures and pixels of frames after each edit,
// its undo and redo, with one layer and with several.

#include <gtest/gtest.h>

#include "anim/timeline_commands.h"
#include "core/commands.h"
#include "core/image_edit.h"
#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "tests/anim/frame_store_fixture.h"

namespace wib::testing {
namespace {

using Order = std::vector<int>;

class Timeline : public FrameStoreTest {
  protected:
    Timeline() { RegisterTimelineCommands(commands, store); }

    CommandOutcome::Status run(const std::string& id,
                               const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(host.workspace, id, values).status;
    }

    // Each frame by the red value it was painted with; the image on screen
    // stands for the current frame.
    Order order() {
        Order values;
        const int current = std::min(store.CurrentFrame(), store.FrameCount() - 1);
        for (int f = 0; f < store.FrameCount(); ++f) {
            values.push_back(f == current ? host.workspace.document.RBuffer.at(0, 0)
                                          : store.AnimR().frame(f)[0]);
        }
        return values;
    }

    Order exposures() const { return {store.exposures().begin(), store.exposures().end()}; }

    bool undo() { return EditUndo(host.workspace); }
    bool redo() { return EditRedo(host.workspace); }

    CommandRegistry commands;
};

TEST_F(Timeline, ExposuresFollowTheirFramesThroughInsertAndDelete) {
    makeNumberedFrames(4);
    EXPECT_EQ(exposures(), (Order{1, 1, 1, 1})) << "a new animation holds every frame one tick";
    for (int f = 0; f < 4; ++f) {
        EXPECT_EQ(run("anim.set_exposure", {{"frame", static_cast<long long>(f)},
                                            {"ticks", static_cast<long long>(f + 1)}}),
                  CommandOutcome::Status::Done);
    }
    ASSERT_TRUE(undo());
    EXPECT_EQ(exposures(), (Order{1, 2, 3, 1})) << "an exposure change is an undo step";
    ASSERT_TRUE(redo());
    store.InsertFrame(1);
    EXPECT_EQ(exposures(), (Order{1, 2, 2, 3, 4})) << "the copy is held as long as its frame";
    store.DeleteFrame(0);
    EXPECT_EQ(exposures(), (Order{2, 2, 3, 4}));
    EXPECT_EQ(run("anim.set_exposure", {{"frame", 0LL}, {"ticks", 0LL}}),
              CommandOutcome::Status::BadParameter);
    store.setExposure(1, -3);
    EXPECT_EQ(store.exposure(1), 1) << "a frame is held at least one tick";
    EXPECT_EQ(store.exposure(99), 1);
}

TEST_F(Timeline, MovingFramesIsOneUndoStep) {
    makeNumberedFrames(6);
    store.setExposure(1, 5);
    EXPECT_EQ(run("anim.move_frames", {{"first", 1LL}, {"last", 2LL}, {"to", 3LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(order(), (Order{10, 40, 50, 20, 30, 60}));
    EXPECT_EQ(exposures(), (Order{1, 1, 1, 5, 1, 1})) << "exposures move with their frames";
    EXPECT_EQ(store.CurrentFrame(), 0);

    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{10, 20, 30, 40, 50, 60}));
    EXPECT_EQ(exposures(), (Order{1, 5, 1, 1, 1, 1}));
    ASSERT_TRUE(redo());
    EXPECT_EQ(order(), (Order{10, 40, 50, 20, 30, 60}));
}

TEST_F(Timeline, MovingToTheFrontAndTheShownFrameMovesAlong) {
    makeNumberedFrames(5);
    store.GotoFrame(4);
    ASSERT_TRUE(store.MoveFrames(4, 3, 0)) << "a range given backwards";
    EXPECT_EQ(order(), (Order{40, 50, 10, 20, 30}));
    EXPECT_EQ(store.CurrentFrame(), 1) << "frame 50 is still the one shown";
}

TEST_F(Timeline, DuplicatedFramesComeBackOnRedo) {
    makeNumberedFrames(4);
    ASSERT_EQ(run("anim.duplicate_frames", {{"first", 1LL}, {"last", 2LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(order(), (Order{10, 20, 30, 20, 30, 40}));

    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{10, 20, 30, 40}));
    ASSERT_TRUE(redo());
    EXPECT_EQ(order(), (Order{10, 20, 30, 20, 30, 40}));
    // The copies are frames of their own: painting one leaves its original.
    store.GotoFrame(3);
    paint(90);
    store.GotoFrame(0);
    EXPECT_EQ(order(), (Order{10, 20, 30, 90, 30, 40}));
}

TEST_F(Timeline, ReversingARange) {
    makeNumberedFrames(6);
    store.GotoFrame(1);
    ASSERT_EQ(run("anim.reverse_frames", {{"first", 1LL}, {"last", 4LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(order(), (Order{10, 50, 40, 30, 20, 60}));
    EXPECT_EQ(store.CurrentFrame(), 4) << "the frame shown keeps being shown";
    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{10, 20, 30, 40, 50, 60}));
    EXPECT_EQ(store.CurrentFrame(), 1);
}

TEST_F(Timeline, CopyAndPasteBetweenPositions) {
    makeNumberedFrames(4);
    EXPECT_EQ(run("anim.paste_frames", {{"at", 0LL}}), CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages, (std::vector<std::string>{"No frames have been copied."}));

    store.setExposure(0, 3);
    ASSERT_EQ(run("anim.copy_frames", {{"first", 0LL}, {"last", 1LL}}),
              CommandOutcome::Status::Done);
    // Changes after the copy do not reach the copied frames.
    {
        const ImageEdit edit(host.workspace);
        paint(70);
    }
    ASSERT_EQ(run("anim.paste_frames", {{"at", 4LL}}), CommandOutcome::Status::Done);
    EXPECT_EQ(order(), (Order{70, 20, 30, 40, 10, 20}));
    EXPECT_EQ(exposures(), (Order{3, 1, 1, 1, 3, 1}));
    EXPECT_EQ(store.CurrentFrame(), 4) << "the first pasted frame is shown";

    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{70, 20, 30, 40}));
    ASSERT_TRUE(undo()) << "the paint before the paste is a step of its own";
    EXPECT_EQ(order(), (Order{10, 20, 30, 40}));
}

TEST_F(Timeline, InsertingABlankFrame) {
    makeNumberedFrames(3);
    store.GotoFrame(1);
    ASSERT_EQ(run("anim.insert_blank_frame"), CommandOutcome::Status::Done);
    EXPECT_EQ(order(), (Order{10, 20, 0, 30}));
    EXPECT_TRUE(frameIs(2, 0));
    EXPECT_EQ(store.CurrentFrame(), 2);
    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{10, 20, 30}));
}

TEST_F(Timeline, AStrokeAfterAnEditUndoesBeforeIt) {
    makeNumberedFrames(3);
    ASSERT_EQ(run("anim.reverse_frames", {{"first", 0LL}, {"last", 2LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(store.CurrentFrame(), 2);
    {
        const ImageEdit edit(host.workspace);
        paint(99);
    }
    EXPECT_EQ(order(), (Order{30, 20, 99}));
    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{30, 20, 10})) << "the stroke, the order kept";
    ASSERT_TRUE(undo());
    EXPECT_EQ(order(), (Order{10, 20, 30}));
    ASSERT_TRUE(redo());
    ASSERT_TRUE(redo());
    EXPECT_EQ(order(), (Order{30, 20, 99}));
}

TEST_F(Timeline, UndoGoesBackToTheFrameTheChangeWasMadeOn) {
    makeNumberedFrames(4);
    store.GotoFrame(1);
    {
        const ImageEdit edit(host.workspace);
        paint(77);
    }
    store.GotoFrame(3);
    ASSERT_TRUE(undo());
    EXPECT_EQ(store.CurrentFrame(), 1);
    EXPECT_EQ(order(), (Order{10, 20, 30, 40})) << "frame 3 keeps its own pixels";
    ASSERT_TRUE(redo());
    EXPECT_EQ(order(), (Order{10, 77, 30, 40}));
}

TEST_F(Timeline, EditsWithoutAnAnimationChangeNothing) {
    EXPECT_EQ(run("anim.move_frames", {{"first", 0LL}, {"last", 0LL}, {"to", 1LL}}),
              CommandOutcome::Status::Refused);
    EXPECT_EQ(run("anim.set_exposure", {{"frame", 0LL}, {"ticks", 2LL}}),
              CommandOutcome::Status::Refused);
    EXPECT_FALSE(store.DuplicateFrames(0, 0));
    EXPECT_FALSE(store.CopyFrames(0, 0));
}

TEST_F(Timeline, LayerCellsMoveWithTheirFrames) {
    paint(10);
    ASSERT_TRUE(store.CreateAnimation(3, 255));
    ASSERT_TRUE(AddLayer(host.workspace));
    // The upper layer covers pixel (0, 0) with 100 + frame.
    Document& doc = host.workspace.document;
    for (int f = 0; f < 3; ++f) {
        store.GotoFrame(f);
        doc.RBuffer.at(0, 0) = static_cast<std::uint8_t>(100 + f);
        doc.Coverage.at(0, 0) = 255;
    }
    store.GotoFrame(0);
    auto shown = [this](int f) {
        store.GotoFrame(f);
        return CompositePicture(host.workspace).r.at(0, 0);
    };
    ASSERT_EQ(run("anim.reverse_frames", {{"first", 0LL}, {"last", 2LL}}),
              CommandOutcome::Status::Done);
    EXPECT_EQ(shown(0), 102);
    EXPECT_EQ(shown(1), 101);
    EXPECT_EQ(shown(2), 100);
    ASSERT_TRUE(undo());
    EXPECT_EQ(shown(0), 100);
    EXPECT_EQ(shown(2), 102);
}

}  // namespace
}  // namespace wib::testing
