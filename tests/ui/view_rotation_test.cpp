// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <cmath>
#include <filesystem>
#include <limits>

#include "core/undo.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/form1.h"
#include "ui/mdi_main_form.h"
#include "ui/view_commands.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

// A 200 x 120 picture shown turned a quarter clockwise and mirrored: window
// point (wx, wy) shows image point (200 - wy, 120 - wx).
class ViewRotation : public ::testing::Test {
  protected:
    ViewRotation() {
        host.newDocument(200, 120);
        RegisterViewCommands(commands);
        host.workspace.view.rotation = 90;
        host.workspace.view.mirrored = true;
        form.viewChanged();
        paint.setPrimaryColour({0, 255, 0});
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, Qt::LeftButton, held, Qt::NoModifier);
        QApplication::sendEvent(form.canvas(), &event);
    }
    const Document& doc() const { return host.workspace.document; }
    // The painted pixels' bounding box: left, top, right, bottom.
    std::array<int, 4> paintedBox() const {
        std::array<int, 4> box{doc().width, doc().height, -1, -1};
        for (int y = 0; y < doc().height; ++y) {
            for (int x = 0; x < doc().width; ++x) {
                if (PackedPixel(doc(), x, y) != 0xFFFFFF) {
                    box = {std::min(box[0], x), std::min(box[1], y), std::max(box[2], x),
                           std::max(box[3], y)};
                }
            }
        }
        return box;
    }
    CommandOutcome run(const std::string& id, const std::map<std::string, ParamValue>& values) {
        return commands.run(host.workspace, id, values);
    }

    testing::TestHost host;
    CommandRegistry commands;
    testing::ScratchPaths scratch;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    MDI_MainForm form{host.workspace, commands, scratch.paths, &paint};
};

TEST_F(ViewRotation, AClickPaintsAroundThePixelUnderThePointer) {
    ASSERT_EQ(form.canvas()->size(), QSize(120, 200));
    mouse(QEvent::MouseButtonPress, QPointF(30.5, 50.5), Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, QPointF(30.5, 50.5), Qt::NoButton);
    EXPECT_EQ(PackedPixel(doc(), 149, 89), 0x00FF00);
    EXPECT_EQ(PackedPixel(doc(), 30, 50), 0xFFFFFF) << "not where an unturned view would put it";
    const auto [left, top, right, bottom] = paintedBox();
    ASSERT_GE(right, left);
    EXPECT_NEAR((left + right) / 2.0, 149.5, 1.0);
    EXPECT_NEAR((top + bottom) / 2.0, 89.5, 1.0);
}

TEST_F(ViewRotation, ADownwardDragPaintsALeftwardLine) {
    mouse(QEvent::MouseButtonPress, QPointF(20.5, 40.5), Qt::LeftButton);
    for (double y = 42.5; y <= 100.5; y += 2) {
        mouse(QEvent::MouseMove, QPointF(20.5, y), Qt::LeftButton);
    }
    mouse(QEvent::MouseButtonRelease, QPointF(20.5, 100.5), Qt::NoButton);
    // From image (159.5, 99.5) to (99.5, 99.5).
    for (int x = 100; x <= 159; x += 3) {
        EXPECT_EQ(PackedPixel(doc(), x, 99), 0x00FF00) << x;
    }
    const auto [left, top, right, bottom] = paintedBox();
    ASSERT_GE(right, left);
    EXPECT_NEAR((top + bottom) / 2.0, 99.5, 1.0);
    EXPECT_LT(bottom - top, right - left) << "a line across the image, not down it";
}

TEST_F(ViewRotation, CommandsTurnAndMirrorTheViewOnlyAndRefuseBadValues) {
    ViewState& view = host.workspace.view;
    const bool couldUndo = CanUndo(host.workspace);
    view.rotation = 0;
    view.mirrored = false;
    const std::pair<const char*, ParamValue> bad[] = {
        {"angle", 361.0},
        {"angle", std::string("ninety")},
        {"angle", std::numeric_limits<double>::quiet_NaN()},
        {"angle", std::numeric_limits<double>::infinity()},
        {"mirrored", 5LL},
        {"turned", 1LL}};
    for (const auto& [name, value] : bad) {
        const char* id = std::string(name) == "mirrored" ? "view.mirror" : "view.rotate";
        EXPECT_EQ(run(id, {{name, value}}).status, Status::BadParameter) << name;
    }
    EXPECT_EQ(view.rotation, 0);
    EXPECT_FALSE(view.mirrored);
    EXPECT_EQ(host.view.viewChanges, 0) << "a refused command leaves the view alone";

    ASSERT_EQ(run("view.rotate", {{"angle", -90.0}}).status, Status::Done);
    EXPECT_EQ(view.rotation, 270);
    EXPECT_EQ(host.view.viewChanges, 1);
    ASSERT_EQ(run("view.rotate_right", {}).status, Status::Done);
    EXPECT_EQ(view.rotation, 285);
    ASSERT_EQ(run("view.rotate_left", {}).status, Status::Done);
    ASSERT_EQ(run("view.rotate_left", {}).status, Status::Done);
    EXPECT_EQ(view.rotation, 255);

    // Without a value mirror flips; with one it sets.
    ASSERT_EQ(run("view.mirror", {}).status, Status::Done);
    EXPECT_TRUE(view.mirrored);
    ASSERT_EQ(run("view.mirror", {}).status, Status::Done);
    EXPECT_FALSE(view.mirrored);
    ASSERT_EQ(run("view.mirror", {{"mirrored", -1LL}}).status, Status::Done);
    ASSERT_EQ(run("view.mirror", {{"mirrored", -1LL}}).status, Status::Done);
    EXPECT_TRUE(view.mirrored);

    ASSERT_EQ(run("view.reset_rotation", {}).status, Status::Done);
    EXPECT_EQ(view.rotation, 0);
    EXPECT_FALSE(view.mirrored);
    EXPECT_FALSE(doc().modified) << "the view is no part of the picture";
    EXPECT_EQ(CanUndo(host.workspace), couldUndo) << "no undo step";
}

}  // namespace
}  // namespace wib
