// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMenuBar>
#include <filesystem>
#include <fstream>

#include "core/document_commands.h"
#include "core/recent_files.h"
#include "core/undo.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/clipboard_commands.h"
#include "ui/form1.h"
#include "ui/mdi_main_form.h"

namespace wib {
namespace {

class MainForm : public ::testing::Test {
  protected:
    MainForm() {
        RegisterDocumentCommands(commands);
        host.newDocument(64, 48);
    }
    testing::TestHost host;
    CommandRegistry commands;
    testing::ScratchPaths scratch;
    ProgramPaths& paths = scratch.paths;
};

TEST_F(MainForm, EveryCommandHasItsMenuItemWithShortcut) {
    MDI_MainForm form(host.workspace, commands, paths);
    for (const CommandSpec& command : commands.all()) {
        auto* action = form.menuBar()->findChild<QAction*>(QString::fromStdString(command.id));
        ASSERT_NE(action, nullptr) << command.id;
        EXPECT_EQ(action->shortcut().toString().toStdString(), command.shortcut) << command.id;
    }
}

TEST_F(MainForm, TheMenuBarFollowsTheTableKnownMenusFirstOthersAfter) {
    MDI_MainForm form(host.workspace, commands, paths);
    const auto menus = [&form] {
        QStringList names;
        for (QAction* action : form.menuBar()->actions()) {
            names << action->menu()->objectName();
        }
        return names;
    };
    EXPECT_EQ(menus(), (QStringList{"mnuFile", "mnuEdit", "mnuImage"}));
    const auto noop = [](Workspace&, const ParamValues&) { return true; };
    commands.add({"plugin.misc.Clock", "Clock", "Layers", "", {}, noop});
    commands.add({"plugin.filter.Grain", "Grain", "Plug-ins", "", {}, noop});
    commands.add({"view.x", "X", "View", "", {}, noop});
    commands.add({"select.x", "X", "Select", "", {}, noop});
    QCoreApplication::processEvents();
    EXPECT_EQ(menus(), (QStringList{"mnuFile", "mnuEdit", "mnuImage", "mnuSelect", "mnuPlugins",
                                    "mnuView", "mnuLayers"}));
    EXPECT_NE(form.menuBar()->findChild<QAction*>("plugin.filter.Grain"), nullptr);
    EXPECT_NE(form.menuBar()->findChild<QMenu*>("mnuRecent"), nullptr);
}

TEST_F(MainForm, MenuCommandsWithoutDialogsRunAtOnce) {
    MDI_MainForm form(host.workspace, commands, paths);
    SaveUndo(host.workspace);
    ClearImage(host.workspace.document, {1, 1, 1});
    form.runFromMenu("edit.undo");
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 255);
    form.runFromMenu("edit.redo");
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 1);
    form.runFromMenu("edit.redo");  // nothing to redo: refused quietly
    EXPECT_TRUE(host.prompter.messages.empty());
}

TEST_F(MainForm, ZoomStepsResizeTheCanvas) {
    MDI_MainForm form(host.workspace, commands, paths);
    form.zoomIn();
    EXPECT_EQ(host.workspace.view.zoom, 150);
    EXPECT_EQ(form.canvas()->width(), 96);
    form.zoomActual();
    form.zoomOut();
    EXPECT_EQ(host.workspace.view.zoom, 67);
    for (int i = 0; i < 20; ++i) {
        form.zoomOut();
    }
    EXPECT_EQ(host.workspace.view.zoom, 10);
    EXPECT_EQ(form.canvas()->width(), 7);
}

TEST_F(MainForm, ShutDownWritesTheRecentListOnceAndRemovesTemporaryAnimations) {
    const auto crop = paths.tempDir / "CropAnim.tmp";
    std::filesystem::create_directories(paths.tempDir);
    { std::ofstream(crop) << "x"; }
    {
        MDI_MainForm form(host.workspace, commands, paths);
        form.addRecentFile("/a.tga");
        form.addRecentFile("/b.tga");
        form.shutDown();
        form.addRecentFile("/c.tga");
        form.shutDown();
    }
    EXPECT_FALSE(std::filesystem::exists(crop));
    EXPECT_EQ(LoadMruds(paths.userDir / "Mruds.txt"),
              (std::vector<std::string>{"/b.tga", "/a.tga"}));
    EXPECT_TRUE(host.preferences.value("Windows", "MDI_MainForm").has_value());

    MDI_MainForm again(host.workspace, commands, paths);
    EXPECT_EQ(again.recentFiles(), (std::vector<std::string>{"/b.tga", "/a.tga"}));
}

// Exit (the menu, Ctrl+Q and the close button all close the window) asks
// about unsaved changes; Cancel keeps the window and the work.
TEST_F(MainForm, ClosingOverUnsavedChangesAsksAndCancelKeepsTheWindowOpen) {
    MDI_MainForm form(host.workspace, commands, paths);
    form.show();
    host.workspace.document.modified = true;
    host.prompter.answers = {3, 2};
    form.windowActions().exit();
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(host.prompter.questions, std::vector<std::string>{"Save changes to \"Untitled\"?"});
    EXPECT_TRUE(host.workspace.document.modified);

    form.close();
    EXPECT_FALSE(form.isVisible()) << "Don't Save closes";
    EXPECT_EQ(host.prompter.questions.size(), 2u);
}

TEST_F(MainForm, AnEndBySignalClosesWithoutAsking) {
    MDI_MainForm form(host.workspace, commands, paths);
    form.show();
    host.workspace.document.modified = true;
    host.prompter.answers = {3};
    form.closeWithoutQuestion();
    form.close();
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(host.prompter.questions.empty());
}

// A picture pasted as a new image takes the document's place: unsaved changes
// are asked about.
TEST_F(MainForm, PastingAsANewImageOverUnsavedChangesAsksFirst) {
    RegisterClipboardCommands(commands);
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QGuiApplication::clipboard()->setImage(image);
    host.workspace.document.modified = true;
    host.prompter.answers = {3, 2};
    EXPECT_EQ(commands.run(host.workspace, "edit.paste_new_image", {}).status,
              CommandOutcome::Status::Refused);
    EXPECT_EQ(host.workspace.document.width, 64);
    EXPECT_EQ(commands.run(host.workspace, "edit.paste_new_image", {}).status,
              CommandOutcome::Status::Done);
    EXPECT_EQ(host.workspace.document.width, 3);
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 255);
    EXPECT_EQ(host.workspace.document.GBuffer.at(0, 0), 0);
    EXPECT_EQ(host.prompter.questions.size(), 2u);
}

}  // namespace
}  // namespace wib
