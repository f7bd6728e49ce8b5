// SPDX-License-Identifier: GPL-3.0-or-later
// The timeline: where frames lie with their exposures, what the grid's clicks
// and drags run, and its onion skin switch.

#include <gtest/gtest.h>

#include <unistd.h>
#include <QCoreApplication>
#include <QMouseEvent>
#include <filesystem>

#include <QToolButton>

#include "anim/frame_store.h"
#include "anim/onion_commands.h"
#include "core/commands.h"
#include "tests/support/test_host.h"
#include "ui/frame_thumbnail.h"
#include "ui/timeline_form.h"
#include "ui/timeline_grid.h"

namespace wib {
namespace {

using Call = std::pair<std::string, std::map<std::string, ParamValue>>;

class TimelineGridTest : public ::testing::Test {
  protected:
    TimelineGridTest() {
        host.newDocument(16, 12);
        store.CreateAnimation(4, 255);
        store.setExposures({1, 3, 1, 2});
    }
    ~TimelineGridTest() override { std::filesystem::remove(CropFile()); }

    static std::filesystem::path CropFile() {
        return std::filesystem::temp_directory_path() /
               ("wib-timeline-grid-" + std::to_string(::getpid()) + ".tmp");
    }

    void click(int x, int y, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(x, y), QPointF(x, y), Qt::LeftButton,
                          Qt::LeftButton, modifiers);
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(x, y), QPointF(x, y),
                            Qt::LeftButton, Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(&grid, &press);
        QCoreApplication::sendEvent(&grid, &release);
    }

    void drag(int fromX, int toX, int y) {
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(fromX, y), QPointF(fromX, y),
                          Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent move(QEvent::MouseMove, QPointF(toX, y), QPointF(toX, y), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(toX, y), QPointF(toX, y),
                            Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&grid, &press);
        QCoreApplication::sendEvent(&grid, &move);
        QCoreApplication::sendEvent(&grid, &release);
    }

    static constexpr int kTick = TimelineGrid::kTick;
    static constexpr int kLeft = TimelineGrid::kGutter;
    static constexpr int kRowY = TimelineGrid::kHeader + 10;

    testing::TestHost host;
    FrameStore store{host.workspace, CropFile()};
    std::vector<Call> calls;
    TimelineGrid grid{store, [this](const std::string& id, const auto& values) {
                          calls.emplace_back(id, values);
                          return true;
                      }};
};

TEST_F(TimelineGridTest, HeldFramesAreLongerCells) {
    EXPECT_EQ(grid.columnX(0), kLeft);
    EXPECT_EQ(grid.columnX(2), kLeft + 4 * kTick) << "frame 1 is held three ticks";
    EXPECT_EQ(grid.columnX(4), kLeft + 7 * kTick);
    EXPECT_EQ(grid.frameAt(kLeft + kTick), 1);
    EXPECT_EQ(grid.frameAt(kLeft + 4 * kTick - 1), 1);
    EXPECT_EQ(grid.frameAt(kLeft + 4 * kTick), 2);
    EXPECT_EQ(grid.frameAt(kLeft - 1), -1);
    EXPECT_EQ(grid.frameAt(kLeft + 7 * kTick), -1);
    EXPECT_EQ(grid.gapAt(kLeft + 2 * kTick), 1) << "before the middle of frame 1";
    EXPECT_EQ(grid.gapAt(kLeft + 3 * kTick), 2);
    EXPECT_EQ(grid.gapAt(kLeft + 100 * kTick), 4);
}

TEST_F(TimelineGridTest, ClicksGoToFramesAndShiftClickSelectsARange) {
    click(kLeft + 4 * kTick + 10, 5);
    ASSERT_EQ(calls.size(), 1u) << "the header moves the playhead";
    EXPECT_EQ(calls[0].first, "anim.goto_frame");
    EXPECT_EQ(std::get<long long>(calls[0].second.at("frame")), 2);

    click(kLeft + kTick / 2, kRowY);
    click(kLeft + 6 * kTick, kRowY, Qt::ShiftModifier);
    EXPECT_EQ(grid.selection(), std::make_pair(0, 3));
}

TEST_F(TimelineGridTest, DraggingTheSelectionMovesIt) {
    click(kLeft + kTick / 2, kRowY);
    click(kLeft + 2 * kTick, kRowY, Qt::ShiftModifier);
    ASSERT_EQ(grid.selection(), std::make_pair(0, 1));
    calls.clear();
    // Dropped in the gap before frame 3: two frames without the range.
    drag(kLeft + kTick / 2, grid.columnX(3) + 10, kRowY);
    ASSERT_FALSE(calls.empty());
    const Call& move = calls.back();
    EXPECT_EQ(move.first, "anim.move_frames");
    EXPECT_EQ(std::get<long long>(move.second.at("first")), 0);
    EXPECT_EQ(std::get<long long>(move.second.at("last")), 1);
    EXPECT_EQ(std::get<long long>(move.second.at("to")), 1);
    EXPECT_EQ(grid.selection(), std::make_pair(1, 2)) << "the selection follows the frames";
}

TEST_F(TimelineGridTest, TheOnionSwitchTurnsTheOnionSkinAndFollowsItsCommand) {
    CommandRegistry commands;
    RegisterOnionCommands(commands, store);
    TimelineForm form(store, commands, nullptr);
    auto* onion = form.findChild<QToolButton*>();
    ASSERT_NE(onion, nullptr);
    EXPECT_FALSE(onion->isChecked());

    onion->click();
    EXPECT_TRUE(host.workspace.view.onion.shown);
    EXPECT_TRUE(onion->isChecked());

    commands.run(host.workspace, "view.onion_toggle", {});
    EXPECT_FALSE(host.workspace.view.onion.shown);
    EXPECT_FALSE(onion->isChecked()) << "turned off from the menu or a plug-in";
}

TEST(FrameThumbnail, APictureOfAnotherShapeLeavesClearMargins) {
    // A 4 x 1 picture in 8 x 8: drawn 8 x 2 from row 3, one sample per pixel.
    const std::uint8_t r[] = {10, 20, 30, 40};
    const std::uint8_t g[] = {1, 2, 3, 4};
    const std::uint8_t b[] = {5, 6, 7, 8};
    const QImage image = Thumbnail({r, g, b, nullptr, 4, 4, 1}, 8, 8);
    ASSERT_EQ(image.size(), QSize(8, 8));
    for (const int y : {0, 2, 5, 7}) {
        EXPECT_EQ(qAlpha(image.pixel(0, y)), 0) << "row " << y;
    }
    EXPECT_EQ(image.pixel(0, 3), qRgb(10, 1, 5));
    EXPECT_EQ(image.pixel(3, 4), qRgb(20, 2, 6));
    EXPECT_EQ(image.pixel(7, 3), qRgb(40, 4, 8));
}

}  // namespace
}  // namespace wib
