// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <filesystem>

#include "core/document_commands.h"
#include "core/undo.h"
#include "paint/paint_session.h"
#include "tests/support/pixels.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/form1.h"
#include "ui/mdi_main_form.h"
#include "ui/qt_controls.h"

namespace wib {
namespace {

class Painting : public ::testing::Test {
  protected:
    Painting() {
        host.newDocument(200, 120);
        RegisterDocumentCommands(commands);
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, at, at, button, held, Qt::NoModifier);
        QApplication::sendEvent(form.canvas(), &event);
    }
    testing::TestHost host;
    CommandRegistry commands;
    testing::ScratchPaths scratch;
    ProgramPaths& paths = scratch.paths;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    MDI_MainForm form{host.workspace, commands, paths, &paint};
};

TEST_F(Painting, PanelControlsReachTheBrushByName) {
    QtControls controls;
    ASSERT_TRUE(controls.set("BrushOptions", "HScroll1", ParamValue{40LL}));
    EXPECT_EQ(paint.state().options.brushSize, 40);
    EXPECT_EQ(paint.state().tip.width, 40) << "the change handler rebuilt the tip";
    ASSERT_TRUE(controls.set("BrushOptions", "Option3", ParamValue{-1LL}));
    EXPECT_EQ(paint.state().options.transformQuality, 2);
    ASSERT_TRUE(controls.set("BrushOptions", "kq_button2", ParamValue{-1LL}));
    EXPECT_EQ(paint.state().options.alphaUse, AlphaUse::IgnoreSelection);
    ASSERT_TRUE(controls.set("BrushOptions", "kq_button2", ParamValue{0LL}));
    EXPECT_EQ(paint.state().options.alphaUse, AlphaUse::RespectSelection) << "none down";
    ASSERT_TRUE(controls.set("BrushOptions", "KQ_Dropslider3", ParamValue{5LL}));
    EXPECT_EQ(paint.state().options.paintMode, 5);
    ASSERT_TRUE(controls.set("Paper_Panel", "Check1", ParamValue{-1LL}));
    EXPECT_TRUE(paint.state().options.paperInvert);
    ASSERT_TRUE(controls.set("BrushOptions", "kq_button5", ParamValue{-1LL}));
    EXPECT_EQ(paint.brushType(), BrushType::Smooth);

    // A change made elsewhere shows in the panel.
    paint.state().options.dryOut = 99;
    paint.optionsChanged();
    EXPECT_EQ(std::get<long long>(*controls.get("BrushOptions", "Hscroll8")), 99);
}

TEST_F(Painting, ADragPaintsOneUndoableStroke) {
    paint.setPrimaryColour({0, 255, 0});
    const QPointF from(40, 60), to(160, 60);
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int x = 50; x <= 160; x += 10) {
        mouse(QEvent::MouseMove, QPointF(x, 60), Qt::NoButton, Qt::LeftButton);
    }
    mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
    const Document& doc = host.workspace.document;
    EXPECT_EQ(PackedPixel(doc, 100, 60), 0x00FF00);
    EXPECT_EQ(PackedPixel(doc, 100, 100), 0xFFFFFF);
    EXPECT_GT(host.view.areaRefreshes, 0) << "only dirty rectangles were redrawn";

    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(PackedPixel(doc, 100, 60), 0xFFFFFF) << "the stroke was one step";
}

TEST_F(Painting, RightButtonPaintsSecondaryAltPicksCtrlSetsTheCloneSource) {
    paint.setSecondaryColour({0x56, 0x34, 0x12});
    mouse(QEvent::MouseButtonPress, QPointF(30, 30), Qt::RightButton, Qt::RightButton);
    mouse(QEvent::MouseButtonRelease, QPointF(30, 30), Qt::RightButton, Qt::NoButton);
    EXPECT_EQ(PackedPixel(host.workspace.document, 30, 30), 0x123456);

    QMouseEvent pick(QEvent::MouseButtonPress, QPointF(30, 30), QPointF(30, 30), Qt::LeftButton,
                     Qt::LeftButton, Qt::AltModifier);
    QApplication::sendEvent(form.canvas(), &pick);
    EXPECT_EQ(host.workspace.colours.primary.packed(), 0x123456);

    QMouseEvent source(QEvent::MouseButtonPress, QPointF(12, 34), QPointF(12, 34), Qt::LeftButton,
                       Qt::LeftButton, Qt::ControlModifier);
    QApplication::sendEvent(form.canvas(), &source);
    ASSERT_TRUE(paint.state().cloneSource);
    EXPECT_EQ((*paint.state().cloneSource)[0], 12);
    EXPECT_EQ((*paint.state().cloneSource)[1], 34);
    EXPECT_EQ(paint.state().activeTool, ToolId::Brush) << "Ctrl chose the tool for one press";
}

}  // namespace
}  // namespace wib
