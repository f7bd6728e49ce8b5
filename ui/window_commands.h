// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace wib {

class CommandRegistry;

// What the main frame's own commands do. The commands are registered before
// the main frame exists, so they call through these, filled in once it does;
// an empty one does nothing.
struct WindowActions {
    std::function<void()> zoomIn;
    std::function<void()> zoomOut;
    std::function<void()> zoomActual;
    std::function<void()> toggleLog;
    std::function<void()> toggleLayers;
    std::function<void()> exit;
    std::function<void()> openPluginFolder;
    std::function<void()> showRunningPlugins;
    std::function<void()> showSwapImage;
    std::function<void()> toggleFillSettings;
    // Not the main frame's: the program's recovery snapshot, filled in by main().
    std::function<void()> autosave;
};

// view.zoom_in, view.zoom_out, view.zoom_actual, window.log, window.layers, file.exit,
// plugins.open_folder, plugins.running, swap.show, file.autosave (a
// recovery snapshot of the work, written at once) and window.fill_settings.
// `actions` must outlive the registry's use.
void RegisterWindowCommands(CommandRegistry& registry, const WindowActions& actions);

}  // namespace wib
