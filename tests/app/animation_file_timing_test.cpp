// SPDX-License-Identifier: GPL-3.0-or-later
// What a stored animation keeps beside the pixels: exposures and the brush's
// keys, and the keys put in place as a stroke starts.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "anim/frame_store.h"
#include "app/stored_animation_commands.h"
#include "app/brush_keyframes.h"
#include "core/commands.h"
#include "paint/paint_session.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class AnimationTiming : public ::testing::Test {
  protected:
    AnimationTiming() {
        host.newDocument(8, 6);
        RegisterStoredAnimationCommands(commands, store);
        RegisterBrushKeyCommands(commands, paint, store);
    }
    ~AnimationTiming() override {
        std::filesystem::remove(file);
        std::filesystem::remove(Temp("crop"));
    }

    static std::filesystem::path Temp(const std::string& what) {
        return std::filesystem::temp_directory_path() /
               ("wib-timing-" + what + "-" + std::to_string(::getpid()));
    }

    CommandOutcome::Status run(const std::string& id,
                               const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(host.workspace, id, values).status;
    }

    testing::TestHost host;
    FrameStore store{host.workspace, Temp("crop")};
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    CommandRegistry commands;
    std::string file = Temp("file").string() + ".wta";
};

TEST_F(AnimationTiming, ExposuresAndBrushKeysSurviveTheFile) {
    ASSERT_TRUE(store.CreateAnimation(4, 255));
    store.setExposures({1, 4, 2, 1});
    paint.state().options.brushSize = 12;
    ASSERT_EQ(run("brush.add_key", {{"parameter", std::string("size")}, {"frame", 1LL}}),
              CommandOutcome::Status::Done);
    paint.workspace().colours.primary = {200, 100, 0};
    ASSERT_EQ(run("brush.add_key", {{"parameter", std::string("colour")}, {"frame", 3LL}}),
              CommandOutcome::Status::Done);
    ASSERT_EQ(run("brush.key_curve",
                  {{"parameter", std::string("colour")}, {"kind", std::string("catmull-rom")}}),
              CommandOutcome::Status::Done);
    ASSERT_EQ(run("anim.save", {{"path", file}}), CommandOutcome::Status::Done);

    store.setExposures({1, 1, 1, 1});
    store.brushKeys().clear();
    host.prompter.defaultAnswer = 1;
    ASSERT_EQ(run("anim.open", {{"path", file}}), CommandOutcome::Status::Done);
    ASSERT_EQ(store.FrameCount(), 4);
    EXPECT_EQ(store.exposures(), (std::vector<std::int32_t>{1, 4, 2, 1}));
    const BrushKeyframer& keys = store.brushKeys();
    EXPECT_EQ(keys.keys(BrushKey::Size), (BrushKeyframer::Keys{{1, {12.0f}}}));
    EXPECT_EQ(keys.keys(BrushKey::Colour), (BrushKeyframer::Keys{{3, {200.0f, 100.0f, 0.0f}}}));
    EXPECT_TRUE(keys.spline(BrushKey::Colour));
    EXPECT_FALSE(keys.spline(BrushKey::Size));
    EXPECT_TRUE(keys.keys(BrushKey::Angle).empty());
}

TEST_F(AnimationTiming, AStrokeOnAFramePaintsWithTheKeyedSize) {
    ASSERT_TRUE(store.CreateAnimation(6, 255));
    const BrushKeyHook hook(paint, store);
    store.brushKeys().addKey(BrushKey::Size, 0, {10});
    store.brushKeys().addKey(BrushKey::Size, 4, {30});
    store.brushKeys().addKey(BrushKey::Opacity, 4, {80});
    paint.state().options.brushSize = 99;

    store.GotoFrame(2);
    paint.brushDown(1, 1);
    EXPECT_EQ(paint.state().options.brushSize, 99) << "keyframing is off";

    ASSERT_EQ(run("brush.keyframing", {{"on", -1LL}}), CommandOutcome::Status::Done);
    paint.brushDown(1, 1);
    EXPECT_EQ(paint.state().options.brushSize, 20);
    EXPECT_EQ(paint.state().options.opacity, 80);
    store.GotoFrame(3);
    paint.brushDown(1, 1);
    EXPECT_EQ(paint.state().options.brushSize, 25);
    store.GotoFrame(5);
    paint.brushDown(1, 1);
    EXPECT_EQ(paint.state().options.brushSize, 30);
}

}  // namespace
}  // namespace wib
