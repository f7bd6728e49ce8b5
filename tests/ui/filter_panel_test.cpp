// SPDX-License-Identifier: GPL-3.0-or-later
// Filter panels: values remembered from one OK to the next opening, Reset to
// the table's defaults, the preview drawn on the canvas and never into the
// image, OK applying once as one undo step, Cancel changing nothing.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <functional>

#include "core/undo.h"
#include "filters/filter_commands.h"
#include "tests/support/qt_wait.h"
#include "tests/support/test_host.h"
#include "ui/command_dialogs.h"
#include "ui/filter_panel.h"
#include "ui/filter_panels.h"
#include "ui/form1.h"
#include "ui/param_fields.h"

namespace wib {
namespace {

class Panels : public ::testing::Test {
  protected:
    Panels() : canvas(host.workspace), dialogs(nullptr) {
        QSettings().remove("FilterPanels");
        host.newDocument(40, 30);
        canvas.updateGeometryFromDocument();
        RegisterFilterCommands(commands);
        SetFilterPanels(dialogs, {host.workspace, canvas}, nullptr);
        commands.setDialog([this](const CommandSpec& command, auto& values) {
            return dialogs.ask(command, values);
        });
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 40; ++x) {
                const std::uint8_t v = x < 20 ? 100 : 200;
                doc.RBuffer.at(x, y) = doc.GBuffer.at(x, y) = doc.BBuffer.at(x, y) = v;
            }
        }
        canvas.show();
    }
    ~Panels() override { QSettings().remove("FilterPanels"); }

    FilterPanel panel(const std::string& id, const std::map<std::string, ParamValue>& start = {}) {
        const CommandSpec& command = *commands.find(id);
        auto values = commands.defaults(host.workspace, command);
        for (const auto& [name, value] : start) {
            values[name] = value;
        }
        return FilterPanel(command, values, {host.workspace, canvas});
    }

    // Opens the panel of `id` as its menu item does and lets `answer` work it.
    CommandOutcome runAsking(const std::string& id, std::function<void(FilterPanel&)> answer) {
        QTimer::singleShot(0, [answer] {
            auto* open = qobject_cast<FilterPanel*>(QApplication::activeModalWidget());
            ASSERT_NE(open, nullptr);
            answer(*open);
        });
        return commands.runAsking(host.workspace, id);
    }

    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry commands;
    Form1 canvas;
    CommandDialogs dialogs;
};

TEST_F(Panels, AcceptedValuesAreRememberedPerCommandAndResetGoesBackToTheTable) {
    {
        FilterPanel gaussian = panel("filter.blur.gaussian");
        gaussian.fields().setValues({{"sigma", 7.25}});
        gaussian.accept();
        FilterPanel kernel = panel("filter.convolve");
        kernel.fields().setValues(
            {{"kernel", IntegerList{1, 2, 1, 2, -4, 2, 1, 2, 1}}, {"divisor", -3LL}});
        kernel.accept();
        FilterPanel cancelled = panel("filter.blur.box");
        cancelled.fields().setValues({{"radius", 9LL}});
        cancelled.reject();
    }
    FilterPanel gaussian = panel("filter.blur.gaussian");
    EXPECT_EQ(gaussian.values().at("sigma"), ParamValue{7.25});
    FilterPanel kernel = panel("filter.convolve");
    EXPECT_EQ(kernel.values().at("kernel"), (ParamValue{IntegerList{1, 2, 1, 2, -4, 2, 1, 2, 1}}));
    EXPECT_EQ(kernel.values().at("divisor"), ParamValue{-3LL});
    EXPECT_EQ(kernel.values().at("offset"), ParamValue{0LL});
    EXPECT_EQ(panel("filter.blur.box").values().at("radius"), ParamValue{2LL});
    // A value the caller chose (Repeat with options: the last run's) wins.
    EXPECT_EQ(panel("filter.blur.gaussian", {{"sigma", 3.0}}).values().at("sigma"),
              ParamValue{3.0});

    gaussian.findChild<QPushButton*>("Reset")->click();
    EXPECT_EQ(gaussian.values().at("sigma"), ParamValue{2.0});
    kernel.findChild<QPushButton*>("Reset")->click();
    EXPECT_EQ(kernel.values().at("kernel"), (ParamValue{IntegerList{0, 0, 0, 0, 1, 0, 0, 0, 0}}));
    EXPECT_EQ(kernel.values().at("divisor"), ParamValue{1LL});
}

TEST_F(Panels, APreviewIsDrawnOverTheCanvasAndOkAppliesOnceAsOneUndoStep) {
    const CommandOutcome outcome =
        runAsking("filter.colour.brightness_contrast", [&](FilterPanel& p) {
            p.fields().setValues({{"brightness", 10LL}});
            p.findChild<QCheckBox*>("Preview")->setChecked(true);
            EXPECT_TRUE(testing::PumpUntil([&] { return !canvas.preview().isNull(); }));
            // The whole 40 x 30 image is in view.
            EXPECT_EQ(canvas.previewArea(), QRect(0, 0, 40, 30));
            EXPECT_EQ(qRed(canvas.preview().pixel(5, 5)), 110);
            EXPECT_EQ(qRed(canvas.preview().pixel(25, 5)), 210);
            EXPECT_EQ(doc.RBuffer.at(5, 5), 100);
            p.accept();
        });
    EXPECT_EQ(outcome.status, CommandOutcome::Status::Done);
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(5, 5), 110);
    EXPECT_EQ(doc.BBuffer.at(25, 29), 210);
    ASSERT_TRUE(EditUndo(host.workspace));
    EXPECT_EQ(doc.RBuffer.at(5, 5), 100);
    EXPECT_EQ(doc.GBuffer.at(25, 29), 200);
}

TEST_F(Panels, CancelLeavesTheImageAndTheUndoAsTheyWereAndTakesThePreviewAway) {
    const bool couldUndo = CanUndo(host.workspace);
    const CommandOutcome outcome = runAsking("filter.colour.curves", [&](FilterPanel& p) {
        p.fields().setValues({{"midtones", 200LL}});
        p.findChild<QCheckBox*>("Preview")->setChecked(true);
        EXPECT_TRUE(testing::PumpUntil([&] { return !canvas.preview().isNull(); }));
        p.reject();
    });
    EXPECT_EQ(outcome.status, CommandOutcome::Status::Cancelled);
    EXPECT_TRUE(canvas.preview().isNull());
    EXPECT_EQ(doc.RBuffer.at(5, 5), 100);
    EXPECT_EQ(doc.RBuffer.at(25, 5), 200);
    EXPECT_EQ(CanUndo(host.workspace), couldUndo);
}

TEST_F(Panels, DraggingACurvePointSetsItsParameterAndLevelsShowsAHistogram) {
    const CommandOutcome curves = runAsking("filter.colour.curves", [](FilterPanel& p) {
        auto* editor = p.findChild<QWidget*>("Curve");
        ASSERT_NE(editor, nullptr);
        p.fields().setValues({{"shadows", 30LL}, {"midtones", 140LL}, {"highlights", 250LL}});
        editor->resize(271, 271);  // 255 steps between the 8-pixel margins
        // The middle point (input 128) dragged from output 140 to 64.
        const QPointF from(8 + 128, 8 + 255 - 140);
        const QPointF to(8 + 128, 8 + 255 - 64);
        QMouseEvent press(QEvent::MouseButtonPress, from, editor->mapToGlobal(from), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QMouseEvent move(QEvent::MouseMove, to, editor->mapToGlobal(to), Qt::NoButton,
                         Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(editor, &press);
        QApplication::sendEvent(editor, &move);
        const auto values = p.values();
        EXPECT_EQ(values.at("shadows"), ParamValue{30LL});
        EXPECT_EQ(values.at("midtones"), ParamValue{64LL});
        EXPECT_EQ(values.at("highlights"), ParamValue{250LL});
        p.accept();
    });
    EXPECT_EQ(curves.status, CommandOutcome::Status::Done);
    // 100 lies on the line from (64, 30) to (128, 64): 30 + 36 * 34 / 64 = 49.1.
    EXPECT_EQ(doc.RBuffer.at(5, 5), 49);

    const CommandOutcome levels = runAsking("filter.colour.levels", [](FilterPanel& p) {
        EXPECT_NE(p.findChild<QWidget*>("Histogram"), nullptr);
        p.reject();
    });
    EXPECT_EQ(levels.status, CommandOutcome::Status::Cancelled);
}

}  // namespace
}  // namespace wib
