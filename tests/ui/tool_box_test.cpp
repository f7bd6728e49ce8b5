// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>
#include <filesystem>
#include <tuple>

#include "core/document_commands.h"
#include "filters/selection_commands.h"
#include "filters/transform_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/form1.h"
#include "ui/matte_overlay.h"
#include "ui/mdi_main_form.h"
#include "ui/tool_options_panel.h"
#include "ui/tool_panel.h"

namespace wib {
namespace {

class ToolBoxWindow : public ::testing::Test {
  protected:
    ToolBoxWindow() {
        host.newDocument(64, 48);
        RegisterDocumentCommands(commands);
        RegisterSelectionCommands(commands);
        RegisterPaintCommands(commands, paint);
        RegisterTransformCommands(commands);
        form.createToolPanel();
        form.documentResized();  // the canvas was made before the document
    }
    void mouse(QEvent::Type type, QPointF at, Qt::MouseButtons held,
               Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QMouseEvent event(type, at, form.canvas()->mapToGlobal(at), Qt::LeftButton, held, keys);
        QApplication::sendEvent(form.canvas(), &event);
    }
    void dragOnCanvas(QPointF from, QPointF to, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, keys);
        mouse(QEvent::MouseMove, (from + to) / 2, Qt::LeftButton);
        mouse(QEvent::MouseMove, to, Qt::LeftButton);
        mouse(QEvent::MouseButtonRelease, to, Qt::NoButton);
    }
    QString optionsPage() {
        auto* pages = form.findChild<ToolOptionsPanel*>()->findChild<QStackedWidget*>();
        return pages->currentWidget()->objectName();
    }
    void key(Qt::Key which) {
        // As the window delivers it: the override first, which decides whether
        // a menu shortcut on the same key gets it instead.
        QKeyEvent override(QEvent::ShortcutOverride, which, Qt::NoModifier);
        QApplication::sendEvent(form.canvas(), &override);
        ASSERT_TRUE(override.isAccepted()) << "the tool, not a menu, takes the key";
        QKeyEvent press(QEvent::KeyPress, which, Qt::NoModifier);
        QApplication::sendEvent(form.canvas(), &press);
    }
    testing::TestHost host;
    CommandRegistry commands;
    testing::ScratchPaths scratch;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    MDI_MainForm form{host.workspace, commands, scratch.paths, &paint};
};

TEST_F(ToolBoxWindow, AButtonChoosesItsToolAndTheOptionsFollow) {
    Tool_Panel* box = form.toolPanel();
    QToolButton* wand = box->button(ToolId::MagicWand);
    ASSERT_NE(wand, nullptr);
    EXPECT_TRUE(wand->toolTip().endsWith("(W)")) << wand->toolTip().toStdString();
    EXPECT_FALSE(wand->icon().isNull());
    EXPECT_TRUE(box->button(ToolId::Brush)->isChecked());
    EXPECT_EQ(optionsPage(), "BrushOptions");

    wand->click();
    EXPECT_EQ(paint.state().activeTool, ToolId::MagicWand);
    EXPECT_TRUE(wand->isChecked());
    EXPECT_FALSE(box->button(ToolId::Brush)->isChecked());
    EXPECT_EQ(optionsPage(), "WandOptions");

    // The menu command moves the highlight too.
    ASSERT_EQ(commands.run(host.workspace, "tool.gradient", {}).status,
              CommandOutcome::Status::Done);
    EXPECT_TRUE(box->button(ToolId::Gradient)->isChecked());
    EXPECT_FALSE(wand->isChecked());
    EXPECT_EQ(optionsPage(), "GradientOptions");

    // The command buttons live on the tool bar now.
    auto* bar = form.findChild<QToolBar*>("CommandToolBar");
    ASSERT_NE(bar, nullptr);
    EXPECT_NE(bar->findChild<QAction*>("Tool_file_new"), nullptr);
}

TEST_F(ToolBoxWindow, ARectangleDragSelectsAndTheAntsRunAlongItsSides) {
    ASSERT_EQ(commands.run(host.workspace, "tool.select_rectangle", {}).status,
              CommandOutcome::Status::Done);
    dragOnCanvas(QPointF(10, 8), QPointF(30, 20));
    const Document& doc = host.workspace.document;
    EXPECT_EQ(doc.AlphaBitsFlag, 255);
    EXPECT_EQ(doc.ABuffer.at(10, 8), 255);
    EXPECT_EQ(doc.ABuffer.at(29, 19), 255);
    EXPECT_EQ(doc.ABuffer.at(30, 19), 0);

    form.canvas()->grab();
    std::vector<std::tuple<int, int, int, int>> edges;
    for (const OutlineEdge& e : form.canvas()->marchingAnts().outline()) {
        edges.emplace_back(e.x0, e.y0, e.x1, e.y1);
    }
    std::sort(edges.begin(), edges.end());
    const std::vector<std::tuple<int, int, int, int>> sides{
        {10, 8, 10, 20}, {10, 8, 30, 8}, {10, 20, 30, 20}, {30, 8, 30, 20}};
    EXPECT_EQ(edges, sides);

    // Alt subtracts: the left half goes, and the outline follows.
    dragOnCanvas(QPointF(0, 0), QPointF(20, 48), Qt::AltModifier);
    EXPECT_EQ(doc.ABuffer.at(15, 10), 0);
    EXPECT_EQ(doc.ABuffer.at(25, 10), 255);
    form.canvas()->grab();
    ASSERT_EQ(form.canvas()->marchingAnts().outline().size(), 4U);
    EXPECT_EQ(form.canvas()->marchingAnts().outline().front().x0, 20);

    ASSERT_EQ(commands.run(host.workspace, "select.none", {}).status, CommandOutcome::Status::Done);
    form.canvas()->grab();
    EXPECT_TRUE(form.canvas()->marchingAnts().outline().empty());
}

TEST_F(ToolBoxWindow, InitMarqueeRestartsTheAntsFromTheFirstStep) {
    ASSERT_EQ(commands
                  .run(host.workspace, "select.rectangle",
                       {{"x", 4LL}, {"y", 4LL}, {"width", 10LL}, {"height", 10LL}})
                  .status,
              CommandOutcome::Status::Done);
    form.canvas()->grab();
    const MarchingAnts& ants = form.canvas()->marchingAnts();
    EXPECT_EQ(ants.outline().size(), 4U);
    host.workspace.events.marqueeRestarted.notify();
    EXPECT_EQ(ants.phase(), 1) << "restarted, then one step drawn";
}

TEST_F(ToolBoxWindow, SpaceDragAsksTheViewToScrollWithAnyTool) {
    std::vector<QPoint> pans;
    QObject::connect(form.canvas(), &Form1::panBy,
                     [&pans](QPoint delta) { pans.push_back(delta); });
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
    QApplication::sendEvent(form.canvas(), &space);
    dragOnCanvas(QPointF(40, 30), QPointF(24, 20));
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, " ");
    QApplication::sendEvent(form.canvas(), &up);
    EXPECT_EQ(pans, (std::vector<QPoint>{{8, 5}, {8, 5}})) << "the image follows the pointer";
    EXPECT_EQ(host.workspace.document.RBuffer.at(30, 25), 255) << "nothing painted";
}

TEST_F(ToolBoxWindow, TheTransformToolPreviewsThenEnterAppliesAndEscCancels) {
    Document& doc = host.workspace.document;
    doc.RBuffer.at(12, 12) = 0;
    ASSERT_EQ(commands
                  .run(host.workspace, "select.rectangle",
                       {{"x", 10LL}, {"y", 10LL}, {"width", 6LL}, {"height", 6LL}})
                  .status,
              CommandOutcome::Status::Done);
    QToolButton* button = form.toolPanel()->button(ToolId::Transform);
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->toolTip().endsWith("(Ctrl+T)")) << button->toolTip().toStdString();
    button->click();
    EXPECT_EQ(optionsPage(), "TransformOptions");

    // Inside the outline a drag moves; Esc drops it.
    dragOnCanvas(QPointF(13, 13), QPointF(33, 23));
    EXPECT_FALSE(form.canvas()->preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(12, 12), 0) << "only the preview has moved";
    key(Qt::Key_Escape);
    EXPECT_TRUE(form.canvas()->preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(12, 12), 0);
    EXPECT_EQ(doc.RBuffer.at(32, 22), 255);

    dragOnCanvas(QPointF(13, 13), QPointF(33, 23));
    key(Qt::Key_Return);
    EXPECT_TRUE(form.canvas()->preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(32, 22), 0) << "moved by (20, 10)";
    EXPECT_EQ(doc.ABuffer.at(32, 22), 255);

    // Choosing another tool applies a transform still in progress.
    dragOnCanvas(QPointF(33, 23), QPointF(35, 23));
    form.toolPanel()->button(ToolId::Brush)->click();
    EXPECT_TRUE(form.canvas()->preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(34, 22), 0);
    QKeyEvent idle(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(form.canvas(), &idle);
    EXPECT_FALSE(idle.isAccepted()) << "with nothing pending, Esc stays the menu's";
}

TEST_F(ToolBoxWindow, TheFillSettingsPanelAndTheFillToolsPageShareOneSetting) {
    auto* panel = form.findChild<QDockWidget*>("Fill_Settings");
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->windowTitle(), "Fill settings");
    const QList<QComboBox*> sources = form.findChildren<QComboBox*>("FillSource");
    ASSERT_EQ(sources.size(), 2) << "one in the panel, one on the fill tool's page";
    QComboBox* inPanel = panel->findChild<QComboBox*>("FillSource");
    QComboBox* onPage = sources[0] == inPanel ? sources[1] : sources[0];

    inPanel->setCurrentIndex(2);
    EXPECT_EQ(host.workspace.fill.source, FillSource::Pattern);
    EXPECT_EQ(onPage->currentIndex(), 2);
    onPage->setCurrentIndex(1);
    EXPECT_EQ(host.workspace.fill.source, FillSource::Secondary);
    EXPECT_EQ(inPanel->currentIndex(), 1);
    panel->findChild<QCheckBox*>("FillAntialias")->setChecked(true);
    EXPECT_TRUE(host.workspace.fill.antialias);

    // A plug-in's or a script's change shows in both.
    host.workspace.fill.source = FillSource::Gradient;
    host.workspace.events.paintOptionsChanged.notify();
    EXPECT_EQ(inPanel->currentIndex(), 3);
    EXPECT_EQ(onPage->currentIndex(), 3);

    paint.tools().choose(ToolId::Fill);
    EXPECT_EQ(optionsPage(), "FillOptions");
    paint.tools().choose(ToolId::SelectByColour);
    EXPECT_EQ(optionsPage(), "ColourSelectOptions");
}

TEST(MatteOverlay, UnselectedPixelsGetTheRedVeilSelectedOnesNone) {
    testing::TestHost host;
    host.newDocument(8, 4);
    Document& doc = host.workspace.document;
    doc.ABuffer.fill(255);
    doc.ABuffer.at(2, 1) = 0;
    doc.ABuffer.at(3, 1) = 128;
    const QImage veil = MatteOverlay(doc, QRect(2, 1, 3, 2));
    ASSERT_EQ(veil.size(), QSize(3, 2));
    const QColor none = veil.pixelColor(0, 0);
    EXPECT_EQ(none.alpha(), 128) << "half-covering over an unselected pixel";
    EXPECT_EQ(none.red(), 255);
    EXPECT_EQ(none.green(), 0);
    EXPECT_EQ(veil.pixelColor(1, 0).alpha(), 127 * 128 / 255);
    EXPECT_EQ(veil.pixelColor(2, 0).alpha(), 0);
    EXPECT_EQ(veil.pixelColor(0, 1).alpha(), 0);
}

}  // namespace
}  // namespace wib
