// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/layers_panel.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSlider>
#include <QToolButton>
#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/layer_commands.h"
#include "core/layer_edit.h"
#include "core/undo.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/layer_list_row.h"
#include "ui/layer_thumbnail.h"
#include "ui/mdi_main_form.h"

namespace wib {
namespace {

void Mouse(QWidget* widget, QEvent::Type type, QPoint at, Qt::MouseButtons held) {
    QMouseEvent event(type, QPointF(at), widget->mapToGlobal(QPointF(at)), Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

void Click(QWidget* widget, QPoint at) {
    Mouse(widget, QEvent::MouseButtonPress, at, Qt::LeftButton);
    Mouse(widget, QEvent::MouseButtonRelease, at, Qt::NoButton);
}

class LayersPanel : public ::testing::Test {
  protected:
    LayersPanel() {
        host.newDocument(40, 20);
        RegisterLayerCommands(commands);
        SaveUndo(ws());
        // Made once the commands are there, as the main window's is: its
        // buttons are the commands it finds.
        panel_ = std::make_unique<Layers_panel>(host.workspace, commands, nullptr);
        panel().resize(260, 400);
        panel().show();
    }
    Layers_panel& panel() { return *panel_; }
    Workspace& ws() { return host.workspace; }
    void run(const std::string& id, const std::map<std::string, ParamValue>& values = {}) {
        ASSERT_EQ(commands.run(ws(), id, values).status, CommandOutcome::Status::Done) << id;
        QApplication::processEvents();
    }
    // The names as the panel lists them, top row first.
    std::vector<std::string> rowNames() {
        std::vector<LayerListRow*> rows;
        for (int i = 0; i < panel().rowCount(); ++i) {
            rows.push_back(panel().rowOfLayer(i));
        }
        std::sort(rows.begin(), rows.end(),
                  [](const LayerListRow* a, const LayerListRow* b) { return a->y() < b->y(); });
        std::vector<std::string> names;
        for (const LayerListRow* row : rows) {
            names.push_back(row->name().toStdString());
        }
        return names;
    }
    std::vector<std::string> layerNamesTopFirst() {
        std::vector<std::string> names;
        for (int i = LayerCount(ws()) - 1; i >= 0; --i) {
            names.push_back(LayerAt(ws(), i).name);
        }
        return names;
    }

    testing::TestHost host;
    CommandRegistry commands;
    std::unique_ptr<Layers_panel> panel_;
};

TEST_F(LayersPanel, ListsTheLayersTopFirstAndFollowsTheLayerCommands) {
    ASSERT_EQ(rowNames(), std::vector<std::string>{"Background"});
    run("layer.new");
    run("layer.new");
    run("layer.set", {{"index", 1LL}, {"name", std::string("ink")}});
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"Layer 2", "ink", "Background"}));
    EXPECT_TRUE(panel().rowOfLayer(2)->property("current").toBool());
    EXPECT_FALSE(panel().rowOfLayer(1)->property("current").toBool());
    run("layer.delete");
    EXPECT_EQ(rowNames(), (std::vector<std::string>{"ink", "Background"}));
    EXPECT_TRUE(panel().rowOfLayer(1)->property("current").toBool());
    EXPECT_EQ(panel().rowOfLayer(2), nullptr);
    // Bottom layer current: nothing below to merge with or move down into.
    run("layer.select", {{"index", 0LL}});
    EXPECT_FALSE(panel().findChild<QToolButton*>("cmdMergeDown")->isEnabled());
    EXPECT_TRUE(panel().findChild<QToolButton*>("cmdMoveUp")->isEnabled());
}

TEST_F(LayersPanel, AClickMakesTheLayerCurrentWithoutAnUndoStep) {
    run("layer.new");
    run("layer.new");
    const int steps = ws().undo.UndoSteps;
    Click(panel().rowOfLayer(0), {4, 4});
    EXPECT_EQ(CurrentLayer(ws()), 0);
    EXPECT_TRUE(panel().rowOfLayer(0)->property("current").toBool());
    EXPECT_EQ(ws().undo.UndoSteps, steps);
}

TEST_F(LayersPanel, TheEyeAndLockChangeTheLayerAndUndoBringsThemBack) {
    run("layer.new");
    LayerListRow* lower = panel().rowOfLayer(0);
    ASSERT_TRUE(lower->eye()->isChecked());
    lower->eye()->click();
    EXPECT_FALSE(LayerAt(ws(), 0).visible);
    EXPECT_EQ(CurrentLayer(ws()), 1) << "the eye does not select";
    lower->lock()->click();
    EXPECT_TRUE(LayerAt(ws(), 0).lockPixels);
    EXPECT_FALSE(LayerAt(ws(), 0).visible);

    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_FALSE(LayerAt(ws(), 0).lockPixels);
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_TRUE(LayerAt(ws(), 0).visible);
    EXPECT_TRUE(panel().rowOfLayer(0)->eye()->isChecked());
    EXPECT_FALSE(panel().rowOfLayer(0)->lock()->isChecked());
}

TEST_F(LayersPanel, DoubleClickOnTheNameRenamesInPlaceAndEscapeCancels) {
    run("layer.new");
    LayerListRow* row = panel().rowOfLayer(1);
    QPoint onName;
    for (int x = 0; x < row->width() && onName.isNull(); ++x) {
        if (row->onName({x, row->height() / 2})) {
            onName = {x + 2, row->height() / 2};
        }
    }
    ASSERT_FALSE(onName.isNull());
    Mouse(row, QEvent::MouseButtonDblClick, onName, Qt::LeftButton);
    ASSERT_NE(row->nameEditor(), nullptr);
    row->nameEditor()->setText("  sky ");
    Q_EMIT row->nameEditor()->editingFinished();
    EXPECT_EQ(LayerAt(ws(), 1).name, "sky");
    EXPECT_EQ(row->nameEditor(), nullptr);

    row->beginRename();
    row->nameEditor()->setText("ground");
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(row->nameEditor(), &escape);
    EXPECT_EQ(row->nameEditor(), nullptr);
    EXPECT_EQ(LayerAt(ws(), 1).name, "sky");
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 1");
}

TEST_F(LayersPanel, DraggingARowMovesItsLayerInOneStep) {
    run("layer.new");
    run("layer.new");
    ASSERT_EQ(layerNamesTopFirst(), (std::vector<std::string>{"Layer 2", "Layer 1", "Background"}));
    // The top row, dragged below the bottom row's middle, goes to the bottom.
    LayerListRow* top = panel().rowOfLayer(2);
    LayerListRow* bottom = panel().rowOfLayer(0);
    const int below = bottom->y() + bottom->height() * 3 / 4 - top->y();
    Mouse(top, QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton);
    Mouse(top, QEvent::MouseMove, {5, below / 2}, Qt::LeftButton);
    Mouse(top, QEvent::MouseMove, {5, below}, Qt::LeftButton);
    Mouse(top, QEvent::MouseButtonRelease, {5, below}, Qt::NoButton);
    EXPECT_EQ(layerNamesTopFirst(), (std::vector<std::string>{"Layer 1", "Background", "Layer 2"}));
    EXPECT_EQ(rowNames(), layerNamesTopFirst());
    EXPECT_EQ(CurrentLayer(ws()), 0) << "the dragged current layer stays current";

    // Dropping a row into the gap just above or below itself changes nothing.
    const int steps = ws().undo.UndoSteps;
    panel().dropRow(1, 1);
    panel().dropRow(1, 2);
    EXPECT_EQ(ws().undo.UndoSteps, steps);
    panel().dropRow(2, 0);  // the bottom row to the top
    EXPECT_EQ(layerNamesTopFirst(), (std::vector<std::string>{"Layer 2", "Layer 1", "Background"}));
    ASSERT_TRUE(EditUndo(ws()));
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_EQ(layerNamesTopFirst(), (std::vector<std::string>{"Layer 2", "Layer 1", "Background"}));
    EXPECT_EQ(rowNames(), layerNamesTopFirst());
}

TEST_F(LayersPanel, ModeAndOpacityControlsSetTheCurrentLayer) {
    run("layer.new");
    auto* mode = panel().findChild<QComboBox*>("cboMode");
    auto* opacity = panel().findChild<QSlider*>("sldOpacity");
    ASSERT_EQ(mode->count(), 18);
    EXPECT_EQ(mode->itemText(7).toStdString(), "color-burn");
    EXPECT_EQ(mode->itemText(17).toStdString(), "subtract");
    mode->setCurrentIndex(2);
    Q_EMIT mode->activated(2);
    opacity->setValue(100);
    EXPECT_EQ(LayerAt(ws(), 1).mode, BlendMode::Screen);
    EXPECT_EQ(LayerAt(ws(), 1).opacity, 100);
    EXPECT_EQ(LayerAt(ws(), 0).opacity, 255);
    // Selecting another layer shows its values.
    run("layer.select", {{"index", 0LL}});
    EXPECT_EQ(mode->currentIndex(), 0);
    EXPECT_EQ(opacity->value(), 255);
}

TEST(LayerThumbnail, KeepsTheAspectAndLaysCoverageOverTheCheckerboard) {
    // A 4 x 2 picture: planes with the spare column and row.
    const Plane r(4, 2, 200), g(4, 2, 100), b(4, 2, 0);
    Plane a(4, 2, 255);
    a.at(1, 0) = 128;
    a.at(2, 0) = 0;
    a.at(3, 1) = 0;
    a.at(0, 1) = 0;
    const QImage small = LayerThumbnail({&r, &g, &b, &a}, 4, 2, 8);
    ASSERT_EQ(small.size(), QSize(8, 4));
    EXPECT_EQ(small.pixel(0, 0), qRgb(200, 100, 0));
    EXPECT_EQ(small.pixel(3, 3), qRgb(200, 100, 0));
    // Half covered over white: 200 * 128/255 + 255 * 127/255 = 227.4.
    EXPECT_EQ(small.pixel(2, 0), qRgb(227, 177, 127));
    // Clear pixels show the squares of four: white first, grey beside it.
    EXPECT_EQ(small.pixel(0, 3), qRgb(255, 255, 255));
    EXPECT_EQ(small.pixel(5, 1), qRgb(204, 204, 204));
    EXPECT_EQ(small.pixel(7, 3), qRgb(204, 204, 204));
    const Plane r2(2, 4, 200), g2(2, 4, 100), b2(2, 4, 0);
    const QImage tall = LayerThumbnail({&r2, &g2, &b2, nullptr}, 2, 4, 48);
    EXPECT_EQ(tall.size(), QSize(24, 48));
    EXPECT_EQ(tall.pixel(23, 47), qRgb(200, 100, 0));
    EXPECT_TRUE(LayerThumbnail({&r, &g, &b, nullptr}, 9, 2, 8).isNull()) << "planes too small";
}

TEST(LayersPanelInWindow, HeightComesFromThePreferencesAndWindowTogglesIt) {
    testing::TestHost host;
    host.newDocument(64, 48);
    testing::ScratchPaths scratch;
    CommandRegistry commands;
    RegisterLayerCommands(commands);
    host.preferences.setValue("Sidebar", "Layers_Hight", "333");
    MDI_MainForm form(host.workspace, commands, scratch.paths);
    // Another panel on the same side, as the brush options are in the program:
    // alone, the layers panel would take the whole height.
    auto* other = new QDockWidget("Other", &form);
    other->setObjectName("Other");
    other->setWidget(new QWidget(other));
    form.addDockWidget(Qt::RightDockWidgetArea, other);
    form.show();
    QApplication::processEvents();
    form.restoreWindowPos();
    QApplication::processEvents();
    QApplication::processEvents();
    Layers_panel* layers = form.layersPanel();
    EXPECT_EQ(layers->height(), 333);
    form.SaveWindowPos();
    EXPECT_EQ(host.preferences.value("Sidebar", "Layers_Hight"), "333");

    form.windowActions().toggleDock("Layers_panel");
    EXPECT_FALSE(layers->isVisible());
    form.windowActions().toggleDock("Layers_panel");
    EXPECT_TRUE(layers->isVisible());
}

}  // namespace
}  // namespace wib
