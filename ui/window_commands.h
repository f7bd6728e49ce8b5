// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <span>
#include <string>

namespace wib {

class CommandRegistry;

// What the main frame's own commands do. The commands are registered before
// the main frame exists, so they call through these, filled in once it does;
// an empty one does nothing.
struct WindowActions {
    std::function<void()> zoomIn;
    std::function<void()> zoomOut;
    std::function<void()> zoomActual;
    // Shows the dock with that object name when it is closed, else closes it.
    std::function<void(const std::string&)> toggleDock;
    std::function<void()> exit;
    std::function<void()> openPluginFolder;
    std::function<void()> showRunningPlugins;
    std::function<void()> showSwapImage;
    // Not the main frame's: the program's recovery snapshot, filled in by main().
    std::function<void()> autosave;
};

// A Window menu entry that shows or closes one dock, ticked while it is open.
struct DockCommand {
    const char* id;
    const char* caption;
    const char* shortcut;
    const char* dock;  // the dock's object name
};

// One entry for every dock the main frame can have.
std::span<const DockCommand> DockCommands();

// view.zoom_in, view.zoom_out, view.zoom_actual, the dock commands, file.exit,
// plugins.open_folder, plugins.running, swap.show and file.autosave (a
// recovery snapshot of the work, written at once).
// `actions` must outlive the registry's use.
void RegisterWindowCommands(CommandRegistry& registry, const WindowActions& actions);

}  // namespace wib
