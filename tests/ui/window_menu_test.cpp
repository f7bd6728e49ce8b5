// SPDX-License-Identifier: GPL-3.0-or-later
// The Window menu: one ticked entry per dock, which closes and reopens it,
// and the docks' open or closed state kept from one session to the next.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>
#include <filesystem>
#include <memory>

#include "anim/animation_commands.h"
#include "anim/frame_store.h"
#include "core/document_commands.h"
#include "paint/paint_commands.h"
#include "paint/paint_session.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/animation_panels.h"
#include "ui/mdi_main_form.h"
#include "ui/window_commands.h"

namespace wib {
namespace {

class WindowMenu : public ::testing::Test {
  protected:
    WindowMenu() {
        host.newDocument(64, 48);
        RegisterDocumentCommands(commands);
        RegisterPaintCommands(commands, paint);
        RegisterAnimationCommands(commands, store);
        RegisterWindowCommands(commands, actions);
        openWindow();
    }

    // The main frame with every dock the program gives it, laid out as the
    // last session left it.
    void openWindow() {
        form.reset();
        form = std::make_unique<MDI_MainForm>(host.workspace, commands, scratch.paths, &paint);
        actions = form->windowActions();
        form->createToolPanel();
        AttachAnimationPanels(*form, store, commands);
        form->show();
        QApplication::processEvents();
    }

    QMenu* menu() const { return form->menuBar()->findChild<QMenu*>("mnuWindow"); }

    // The Window menu's entry whose caption, without its mnemonic, is `title`.
    QAction* entry(const QString& title) const {
        for (QAction* action : menu()->actions()) {
            if (action->text().remove('&') == title) {
                return action;
            }
        }
        return nullptr;
    }

    QDockWidget* dock(const char* name) const {
        return form->findChild<QDockWidget*>(name, Qt::FindDirectChildrenOnly);
    }

    testing::TestHost host;
    testing::ScratchPaths scratch;
    PaintSession paint{host.workspace, std::filesystem::temp_directory_path()};
    FrameStore store{host.workspace, scratch.paths.tempDir / "CropAnim.tmp"};
    CommandRegistry commands;
    WindowActions actions;
    std::unique_ptr<MDI_MainForm> form;
};

TEST_F(WindowMenu, EveryDockHasAnEntryTickedWhileItIsOpen) {
    ASSERT_NE(menu(), nullptr);
    const QList<QDockWidget*> docks = form->findChildren<QDockWidget*>(Qt::FindDirectChildrenOnly);
    ASSERT_GE(docks.size(), 9) << "log, layers, tools, tool options, brush, paper, playback, "
                                  "timeline and brush keys";
    for (QDockWidget* widget : docks) {
        SCOPED_TRACE(widget->windowTitle().toStdString());
        QAction* action = entry(widget->windowTitle());
        ASSERT_NE(action, nullptr);
        EXPECT_TRUE(action->isCheckable());
        EXPECT_TRUE(action->isChecked());

        action->trigger();
        EXPECT_TRUE(widget->isHidden());
        Q_EMIT menu()->aboutToShow();
        EXPECT_FALSE(action->isChecked());

        action->trigger();
        EXPECT_FALSE(widget->isHidden());
        EXPECT_TRUE(action->isChecked());
    }
}

TEST_F(WindowMenu, AClosedBrushKeysPanelReopensWithItsOwnShortcut) {
    QDockWidget* keys = dock("BrushKeysPanel");
    ASSERT_NE(keys, nullptr);
    keys->close();
    Q_EMIT menu()->aboutToShow();
    QAction* action = entry("Brush keys");
    ASSERT_NE(action, nullptr);
    EXPECT_FALSE(action->isChecked()) << "closed by its title bar, not by the menu";
    EXPECT_EQ(action->shortcut().toString(), "F8");
    for (QAction* other : form->menuBar()->findChildren<QAction*>()) {
        if (other != action) {
            EXPECT_NE(other->shortcut(), action->shortcut()) << other->objectName().toStdString();
        }
    }
    action->trigger();
    EXPECT_TRUE(keys->isVisible());
}

TEST_F(WindowMenu, TheNextSessionOpensTheDocksAsTheLastLeftThem) {
    dock("BrushKeysPanel")->close();
    dock("TimelineForm")->close();
    form->SaveWindowPos();
    openWindow();
    EXPECT_TRUE(dock("BrushKeysPanel")->isHidden());
    EXPECT_TRUE(dock("TimelineForm")->isHidden());
    EXPECT_FALSE(dock("Layers_panel")->isHidden());

    entry("Brush keys")->trigger();
    form->SaveWindowPos();
    openWindow();
    EXPECT_FALSE(dock("BrushKeysPanel")->isHidden());
    EXPECT_TRUE(dock("TimelineForm")->isHidden());
}

TEST_F(WindowMenu, WithEveryDockOpenTheLayerListStillShowsFourRows) {
    form->resize(1400, 950);
    QApplication::processEvents();
    QApplication::processEvents();
    ASSERT_FALSE(dock("BrushKeysPanel")->isHidden());
    const auto* list = form->findChild<QScrollArea*>("LayerList");
    const auto* row = form->findChild<QWidget*>("LayerRow");
    ASSERT_NE(list, nullptr);
    ASSERT_NE(row, nullptr);
    EXPECT_GE(list->viewport()->height(), 4 * row->height());
}

}  // namespace
}  // namespace wib
