// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_commands.h"

#include <sstream>

#include "core/commands.h"
#include "core/host/preferences.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr const char* kPluginIdPrefix = "plugin.";

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
        // A name found nowhere is tried in the first folder all the same, so
        // that the child list shows it as not started.
        std::filesystem::path file =
            (folders_.empty() ? std::filesystem::path(".") : folders_.front()) / name;
        for (const std::filesystem::path& folder : folders_) {
            if (IsStartable(folder / name)) {
                file = folder / name;
                break;
            }
        }
        launcher_.start(file, WindowStyle::KeepsProgramFocus);
    }
}

}  // namespace wib
