// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_commands.h"

#include <sstream>

#include "core/commands.h"
#include "core/host/preferences.h"
#include "core/workspace.h"
#include "plugins/fixed_plugins.h"

namespace wib {

namespace {

constexpr const char* kPluginIdPrefix = "plugin.";
constexpr const char* kFixedIdPrefix = "plugins.start.";

// Filters run while the user keeps working in the program.
WindowStyle StyleOf(PluginKind kind) {
    return kind == PluginKind::Filter ? WindowStyle::KeepsProgramFocus : WindowStyle::TakesFocus;
}

}  // namespace

PluginCommands::PluginCommands(CommandRegistry& registry, PluginLauncher& launcher)
    : registry_(registry), launcher_(launcher) {}

void PluginCommands::registerCommands() {
    CommandSpec rescan{"plugins.rescan", "&Rescan", "Plug-ins", "", {}, [this](Workspace&, auto&) {
                           this->rescan();
                           return true;
                       }};
    registry_.add(std::move(rescan));

    CommandSpec effects{"plugins.wibbyfx", "&WibbyFX...", "Plug-ins", "", {}, nullptr};
    effects.start = [this](Workspace& workspace, const ParamValues&) -> long long {
        const std::filesystem::path file = FindPluginByPrefix(folders_, "WibbyFX");
        if (file.empty()) {
            workspace.host.prompter.message("Couldn't find WibbyFX plugin.");
            return 0;
        }
        return launcher_.start(file, WindowStyle::TakesFocus);
    };
    registry_.add(std::move(effects));

    // Menu commands that start a plug-in by its file name; one that is not
    // there answers 0 without a word, as any plug-in that cannot start.
    for (const FixedPlugin& plugin : FixedPlugins()) {
        CommandSpec command{
            std::string(kFixedIdPrefix) + plugin.id, plugin.caption, plugin.menu, "", {}, nullptr};
        command.start = [this, &plugin](Workspace&, const ParamValues&) {
            return launcher_.start(FindPluginFile(folders_, plugin.file), plugin.style);
        };
        registry_.add(std::move(command));
    }
}

void PluginCommands::rescan() {
    catalog_.rescan(folders_);
    registry_.removeWhere(
        [](const CommandSpec& command) { return command.id.rfind(kPluginIdPrefix, 0) == 0; });
    for (const PluginEntry& entry : catalog_.entries()) {
        CommandSpec command{PluginCommandId(entry),
                            entry.caption,
                            std::string("Plug-ins/") + KindInfo(entry.kind).menu,
                            "",
                            {},
                            nullptr};
        command.start = [this, file = entry.file, style = StyleOf(entry.kind)](Workspace&,
                                                                               const ParamValues&) {
            return launcher_.start(file, style);
        };
        registry_.add(std::move(command));
    }
}

std::vector<std::string> StartupPluginNames(const Preferences& preferences) {
    const long long count = preferences.integer("Settings", "Startup_Plugins_Count", 0);
    const std::string list = preferences.value("Settings", "Startup_Plugins").value_or("");
    std::vector<std::string> names;
    std::istringstream parts(list);
    std::string name;
    while (static_cast<long long>(names.size()) < count && std::getline(parts, name, '|')) {
        if (!name.empty()) {
            names.push_back(name);
        }
    }
    return names;
}

void PluginCommands::runStartupPlugins(const Preferences& preferences) {
    for (const std::string& name : StartupPluginNames(preferences)) {
        launcher_.start(FindPluginFile(folders_, name), WindowStyle::KeepsProgramFocus);
    }
}

}  // namespace wib
