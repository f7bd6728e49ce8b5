// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "plugins/plugin_catalog.h"
#include "plugins/plugin_launcher.h"

namespace wib {

class CommandRegistry;
class Preferences;

// The plug-ins as commands: every listed plug-in is the command
// plugin.<kind>.<caption> in its Plug-ins submenu, which starts it and answers
// its process id; plugins.rescan lists the folders again and plugins.wibbyfx
// starts the special-effects plug-in. Both must outlive the registry's use.
class PluginCommands {
  public:
    PluginCommands(CommandRegistry& registry, PluginLauncher& launcher);

    // Registers plugins.rescan, plugins.wibbyfx and the commands that start
    // the fixed plug-ins (plugins.start.<name>); the listed plug-ins come
    // with each rescan.
    void registerCommands();

    // Where plug-ins are looked for; takes effect at the next rescan.
    void setFolders(std::vector<std::filesystem::path> folders) { folders_ = std::move(folders); }
    const std::vector<std::filesystem::path>& folders() const { return folders_; }

    // Lists the folders again: the commands of the earlier listing go, those
    // of the files found now come.
    void rescan();
    const PluginCatalog& catalog() const { return catalog_; }

    // Starts the plug-ins the settings list for start-up, with the focus left
    // with the program. Names that are not found are skipped silently.
    void runStartupPlugins(const Preferences& preferences);

  private:
    CommandRegistry& registry_;
    PluginLauncher& launcher_;
    std::vector<std::filesystem::path> folders_;
    PluginCatalog catalog_;
};

// The start-up list in the settings (section "Settings"): Startup_Plugins_Count
// is how many names to take from Startup_Plugins, which holds plug-in file
// names separated by "|" ("Clock2_pm.exe|CalendarWidget_pm.exe").
std::vector<std::string> StartupPluginNames(const Preferences& preferences);

}  // namespace wib
