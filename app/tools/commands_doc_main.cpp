// SPDX-License-Identifier: GPL-3.0-or-later
// Prints the menu command reference; docs/commands.md is its output.

#include <QCoreApplication>
#include <iostream>

#include "anim/frame_store.h"
#include "app/builtin_commands.h"
#include "app/command_reference.h"
#include "app/headless_prompter.h"
#include "app/system_host.h"
#include "core/commands.h"
#include "core/workspace.h"
#include "fileio/converter_bridge.h"
#include "fileio/image_files.h"
#include "paint/paint_session.h"
#include "plugins/plugin_commands.h"
#include "ui/error_console_form.h"
#include "ui/host/qt_process_runner.h"
#include "ui/window_commands.h"

namespace {

// The reference shows the table's own starting values, never a user's.
class NoPreferences : public wib::Preferences {
  public:
    std::optional<std::string> value(const std::string&, const std::string&) const override {
        return std::nullopt;
    }
    void setValue(const std::string&, const std::string&, const std::string&) override {}
};

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    wib::HeadlessPrompter prompter(0);
    NoPreferences preferences;
    wib::SteadyClock clock;
    wib::ViewList view;
    wib::MachineInfo machine;
    wib::ProgramLog log;
    wib::Workspace workspace(wib::HostServices{prompter, preferences, clock, view, machine, log});
    const auto temp = std::filesystem::temp_directory_path();
    wib::PaintSession paint(workspace, temp);
    wib::QtProcessRunner processes;
    wib::ConverterBridge converter(processes, temp);
    wib::ImageFiles files(converter);
    wib::FrameStore frames(workspace, temp / "wib-commands-doc.tmp");
    const wib::WindowActions window;

    wib::CommandRegistry commands;
    wib::PluginLauncher launcher;
    wib::PluginCommands plugins(commands, launcher);
    wib::RegisterBuiltinCommands(commands, {paint, files, frames, window, plugins, processes});
    std::cout << wib::CommandReference(commands);
    return std::cout.good() ? 0 : 1;
}
