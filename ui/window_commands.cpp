// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window_commands.h"

#include <array>

#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr std::array<DockCommand, 10> kDockCommands{{
    {"window.log", "&Log", "Ctrl+L", "ErrorConsoleForm"},
    {"window.layers", "La&yers", "F7", "Layers_panel"},
    {"window.brush_keys", "Brush &keys", "F8", "BrushKeysPanel"},
    {"window.tools", "&Tools", "", "Tool_Panel"},
    {"window.tool_options", "Tool &options", "", "Tool_Options"},
    {"window.brush", "&Brush", "", "BrushOptions"},
    {"window.paper", "P&aper", "", "Paper_Panel"},
    {"window.playback", "&Playback", "", "PlaybackPanel"},
    {"window.timeline", "Ti&meline", "", "TimelineForm"},
    {"window.fill_settings", "&Fill settings", "", "Fill_Settings"},
}};

}  // namespace

std::span<const DockCommand> DockCommands() {
    return kDockCommands;
}

void RegisterWindowCommands(CommandRegistry& registry, const WindowActions& actions) {
    using Action = std::function<void()> WindowActions::*;
    const auto add = [&registry, &actions](const char* id, const char* caption, const char* menu,
                                           const char* shortcut, Action action) {
        registry.add(
            {id, caption, menu, shortcut, {}, [&actions, action](Workspace&, const ParamValues&) {
                 if (actions.*action) {
                     (actions.*action)();
                 }
                 return true;
             }});
    };
    add("view.zoom_in", "Zoom &in", "View", "Ctrl++", &WindowActions::zoomIn);
    add("view.zoom_out", "Zoom &out", "View", "Ctrl+-", &WindowActions::zoomOut);
    add("view.zoom_actual", "&Actual pixels", "View", "Ctrl+0", &WindowActions::zoomActual);
    registry.add({"view.show_grid",
                  "Show &grid",
                  "View",
                  "Ctrl+'",
                  {},
                  [](Workspace& workspace, const ParamValues&) {
                      GridState& grid = workspace.view.grid;
                      grid.shown = !grid.shown;
                      workspace.host.view.refresh();
                      return true;
                  }});
    for (const DockCommand& dock : kDockCommands) {
        registry.add({dock.id,
                      dock.caption,
                      "Window",
                      dock.shortcut,
                      {},
                      [&actions, name = std::string(dock.dock)](Workspace&, const ParamValues&) {
                          if (actions.toggleDock) {
                              actions.toggleDock(name);
                          }
                          return true;
                      }});
    }
    add("file.exit", "E&xit", "File", "Ctrl+Q", &WindowActions::exit);
    add("plugins.open_folder", "Open plug-in &folder", "Plug-ins", "",
        &WindowActions::openPluginFolder);
    add("plugins.running", "Running &plug-ins...", "Plug-ins", "",
        &WindowActions::showRunningPlugins);
    add("swap.show", "&Show swap image...", "Image/Swap image", "", &WindowActions::showSwapImage);
    add("file.autosave", "Save recovery snapshot", "File", "", &WindowActions::autosave);
}

}  // namespace wib
