// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

#include "anim/animation_commands.h"
#include "anim/frame_store.h"
#include "core/document_commands.h"
#include "tests/support/scratch_paths.h"
#include "tests/support/test_host.h"
#include "ui/animation_panels.h"
#include "ui/create_anim.h"
#include "ui/mdi_main_form.h"
#include "ui/playback_panel.h"
#include "ui/qt_controls.h"

namespace wib {
namespace {

class AnimationPanels : public ::testing::Test {
  protected:
    AnimationPanels() {
        RegisterDocumentCommands(commands);
        RegisterAnimationCommands(commands, store);
        host.newDocument(64, 48);
    }

    std::string control(const char* panel, const char* name) {
        const auto value = controls.get(panel, name);
        return value ? std::get<std::string>(*value) : "";
    }

    testing::TestHost host;
    testing::ScratchPaths scratch;
    ProgramPaths& paths = scratch.paths;
    FrameStore store{host.workspace, paths.tempDir / "CropAnim.tmp"};
    CommandRegistry commands;
    QtControls controls;
};

TEST_F(AnimationPanels, TheAnimationMenuAndPlaybackControlsAreThere) {
    MDI_MainForm form(host.workspace, commands, paths);
    form.show();
    AttachAnimationPanels(form, store, commands);
    auto* panel = form.findChild<PlaybackPanel*>("PlaybackPanel");
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    auto* menu = form.menuBar()->findChild<QMenu*>("mnuAnimation");
    ASSERT_NE(menu, nullptr);
    auto* next = form.menuBar()->findChild<QAction*>("anim.next_frame");
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->shortcut().toString(), ".");
    EXPECT_EQ(control("PlaybackPanel", "lblFrame"), "0 of 0");
    EXPECT_FALSE(panel->findChild<QToolButton*>("cmdPlay")->isEnabled());
}

TEST_F(AnimationPanels, TheControlsFollowTheStoreAndDriveIt) {
    MDI_MainForm form(host.workspace, commands, paths);
    AttachAnimationPanels(form, store, commands);
    ClearImage(host.workspace.document, {1, 2, 3});
    ASSERT_TRUE(store.CreateAnimation(5, 0));
    auto* slider = form.findChild<QSlider*>("HScroll1");
    EXPECT_EQ(slider->maximum(), 4);
    EXPECT_EQ(control("PlaybackPanel", "lblFrame"), "0 of 5");

    EXPECT_TRUE(controls.set("PlaybackPanel", "HScroll1", ParamValue{3LL}));
    EXPECT_EQ(store.CurrentFrame(), 3) << "the slider goes to the frame";
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 0);
    EXPECT_TRUE(controls.set("PlaybackPanel", "cmdFirst", ParamValue{-1LL}));
    EXPECT_EQ(store.CurrentFrame(), 0);
    EXPECT_EQ(slider->value(), 0);
    EXPECT_EQ(host.workspace.document.RBuffer.at(0, 0), 1);
    EXPECT_TRUE(controls.set("PlaybackPanel", "cmdBack", ParamValue{-1LL}));
    EXPECT_EQ(control("PlaybackPanel", "lblFrame"), "4 of 5");

    EXPECT_TRUE(controls.set("Frame_Rate", "txtFrameRate", ParamValue{std::string("30")}));
    EXPECT_EQ(store.FrameDelayMs(), 33) << "the field's change handler ran";
    store.rateField().setText("12");
    EXPECT_EQ(control("Frame_Rate", "txtFrameRate"), "12");
    store.setName("Walk cycle");
    EXPECT_EQ(form.findChild<PlaybackPanel*>("PlaybackPanel")->windowTitle(),
              "Playback - Walk cycle");
}

TEST_F(AnimationPanels, PlayRunsFromTheEventLoopUntilStopped) {
    MDI_MainForm form(host.workspace, commands, paths);
    AttachAnimationPanels(form, store, commands);
    ASSERT_TRUE(store.CreateAnimation(3, 255));
    host.clock.step = std::chrono::milliseconds(1);
    int shown = 0;
    host.view.pendingEvents = [&] {
        if (++shown == 4) {
            form.runFromMenu("anim.stop");
        }
    };
    form.runFromMenu("anim.play");
    EXPECT_EQ(store.PlayingFlag(), -1) << "the command returns at once";
    EXPECT_EQ(control("PlaybackPanel", "lblFrame"), "0 of 3 playing");
    QCoreApplication::processEvents();
    EXPECT_EQ(shown, 4);
    EXPECT_EQ(store.PlayingFlag(), 0);
    EXPECT_EQ(control("PlaybackPanel", "lblFrame"), "1 of 3");
}

TEST_F(AnimationPanels, ClosingTheMainWindowStopsPlayback) {
    MDI_MainForm form(host.workspace, commands, paths);
    AttachAnimationPanels(form, store, commands);
    ASSERT_TRUE(store.CreateAnimation(3, 255));
    host.clock.step = std::chrono::milliseconds(1);
    host.view.pendingEvents = [&] { form.close(); };
    store.PlayAnimation();
    QCoreApplication::processEvents();
    EXPECT_EQ(store.PlayingFlag(), 0);
}

TEST_F(AnimationPanels, TheCreationPanelShowsLengthAndMemoryAndRefusesOneFrame) {
    host.system.memory = std::uint64_t{3000} << 20;
    Create_Anim dialog(host.workspace);
    dialog.setValues({{"frames", 48LL}, {"rate", 24.0}, {"contents", 0LL}, {"colour", 0x332211LL}});
    EXPECT_EQ(control("Create_Anim", "lblLength"), "48 frames at 24 fps = 2. seconds");
    EXPECT_EQ(control("Create_Anim", "lblRequired"), "0 MB. required");
    EXPECT_EQ(control("Create_Anim", "lblMemory").rfind("3000 MB physical memory free of ", 0), 0u);
    controls.set("Create_Anim", "txtFrames", ParamValue{1000LL});
    EXPECT_EQ(control("Create_Anim", "lblRequired"), "8 MB. required");

    controls.set("Create_Anim", "txtFrames", ParamValue{1LL});
    dialog.accept();
    EXPECT_EQ(host.prompter.messages,
              (std::vector<std::string>{"You cannot create an animation with 1 or less frames."}));
    EXPECT_EQ(dialog.result(), QDialog::Rejected) << "it stays open";

    controls.set("Create_Anim", "txtFrames", ParamValue{12LL});
    controls.set("Create_Anim", "cboContents", ParamValue{2LL});
    controls.set("Create_Anim", "txtRate", ParamValue{std::string("12.5")});
    controls.set("Create_Anim", "cmdDefaultRate", ParamValue{-1LL});
    EXPECT_EQ(host.preferences.value("Settings", "DefaultFrameRate"), "12.5");
    EXPECT_EQ(host.prompter.messages.back(), "Default frame rate is 12.5");
    const auto values = dialog.values();
    EXPECT_EQ(std::get<long long>(values.at("frames")), 12);
    EXPECT_EQ(std::get<double>(values.at("rate")), 12.5);
    EXPECT_EQ(std::get<long long>(values.at("contents")), 2);
    EXPECT_EQ(std::get<long long>(values.at("colour")), 0x332211) << "the secondary colour";
    auto* contents = dialog.findChild<QComboBox*>("cboContents");
    EXPECT_EQ(contents->itemText(2), "Clear to secondary color");
}

}  // namespace
}  // namespace wib
