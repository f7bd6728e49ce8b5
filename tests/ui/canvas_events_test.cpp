// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <filesystem>
#include <string>
#include <vector>

#include "core/document_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "plugins/canvas_events.h"
#include "plugins/plugin_commands.h"
#include "tests/support/pixels.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/form1.h"
#include "ui/mdi_main_form.h"

namespace wib {
namespace {

struct Heard {
    std::string event;
    int button, shift, x, y;
};

// The main frame with a plug-in listening to its canvas.
class CanvasListening : public ::testing::Test {
  protected:
    CanvasListening() {
        host.newDocument(200, 120);
        RegisterDocumentCommands(commands);
        RegisterPaintCommands(commands, paint);
        form.attachPlugins(plugins, launcher, events);
        turn = events.listen([this](const std::string& event, const CanvasPointer& p) {
            heard.push_back({event, p.button, p.shift, p.x, p.y});
        });
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held,
               Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QMouseEvent event(type, at, at, button, held, keys);
        QApplication::sendEvent(form.canvas(), &event);
    }
    void drag(int y) {
        mouse(QEvent::MouseButtonPress, QPointF(30, y), Qt::LeftButton, Qt::LeftButton);
        mouse(QEvent::MouseMove, QPointF(150, y), Qt::NoButton, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, QPointF(150, y), Qt::LeftButton, Qt::NoButton);
    }

    testing::TestHost host;
    CommandRegistry commands;
    testing::ScratchPaths scratch;
    ProgramPaths& paths = scratch.paths;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    MDI_MainForm form{host.workspace, commands, paths, &paint};
    PluginLauncher launcher;
    PluginCommands plugins{commands, launcher};
    CanvasEvents events;
    Subscription turn;
    std::vector<Heard> heard;
};

TEST_F(CanvasListening, PointerGoesToThePluginInImagePixelsInsteadOfPainting) {
    paint.setPrimaryColour({0, 255, 0});
    form.zoomIn();  // 150 %: window (60, 90) is image (40, 60)
    ASSERT_EQ(host.workspace.view.zoom, 150);
    mouse(QEvent::MouseButtonPress, QPointF(60, 90), Qt::RightButton, Qt::RightButton,
          Qt::ShiftModifier | Qt::AltModifier);
    mouse(QEvent::MouseMove, QPointF(151, 91), Qt::NoButton, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, QPointF(151, 91), Qt::RightButton, Qt::NoButton);
    ASSERT_EQ(heard.size(), 3u);
    EXPECT_EQ(heard[0].event, "WibMouseDown");
    EXPECT_EQ(heard[0].button, 2);
    EXPECT_EQ(heard[0].shift, 1 + 4);
    EXPECT_EQ(heard[0].x, 40);
    EXPECT_EQ(heard[0].y, 60);
    EXPECT_EQ(heard[1].event, "WibMouseMove");
    EXPECT_EQ(heard[1].button, 2);
    EXPECT_EQ(heard[1].x, 100);  // 151 / 1.5 = 100.67
    EXPECT_EQ(heard[1].y, 60);
    EXPECT_EQ(heard[2].event, "WibMouseUp");
    for (int x = 0; x < 200; x += 10) {
        ASSERT_EQ(PackedPixel(host.workspace.document, x, 60), 0xFFFFFF) << x;
    }
}

TEST_F(CanvasListening, EscEndsTheTurnAndTheCanvasPaintsAgain) {
    paint.setPrimaryColour({0, 255, 0});
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(form.canvas(), &escape);
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].event, "WibEnd");
    EXPECT_FALSE(events.listening());
    drag(60);
    EXPECT_EQ(heard.size(), 1u);
    EXPECT_EQ(PackedPixel(host.workspace.document, 90, 60), 0x00FF00);
}

TEST_F(CanvasListening, ChoosingAToolEndsTheTurn) {
    form.runFromMenu("tool.brush");
    ASSERT_EQ(heard.size(), 1u);
    EXPECT_EQ(heard[0].event, "WibEnd");
    EXPECT_FALSE(events.listening());
}

}  // namespace
}  // namespace wib
