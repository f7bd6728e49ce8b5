// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/plugin_catalog.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <system_error>

namespace wib {

namespace {

constexpr std::size_t kSuffixLength = 7;

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool EndsWithFolded(const std::string& name, const std::string& ending) {
    return name.size() >= ending.size() &&
           Lower(name.substr(name.size() - ending.size())) == Lower(ending);
}

// The names of the folder's entries in the order the file system returns
// them, read from inside the folder.
std::vector<std::string> NamesInFolder(const std::filesystem::path& folder) {
    std::error_code error;
    const std::filesystem::path before = std::filesystem::current_path(error);
    if (error) {
        return {};
    }
    std::filesystem::current_path(folder, error);
    if (error) {
        return {};
    }
    std::vector<std::string> names;
    for (std::filesystem::directory_iterator it(".", error), end; !error && it != end;
         it.increment(error)) {
        names.push_back(it->path().filename().string());
    }
    std::filesystem::current_path(before, error);
    return names;
}

}  // namespace

const std::array<PluginKindInfo, 5>& PluginKinds() {
    static const std::array<PluginKindInfo, 5> kinds{{
        {PluginKind::Import, "_pi.exe", "import", "Import plug-ins", "ImportPlugins"},
        {PluginKind::Export, "_px.exe", "export", "Export plug-ins", "ExportPlugins"},
        {PluginKind::Brush, "_pb.exe", "brush", "Brush plug-ins", "BrushPlugins"},
        {PluginKind::Filter, "_pf.exe", "filter", "Filter plug-ins", "AllPluginsFilters"},
        {PluginKind::Misc, "_pm.exe", "misc", "Misc plug-ins", "AllPluginsMisc"},
    }};
    return kinds;
}

const PluginKindInfo& KindInfo(PluginKind kind) {
    return PluginKinds()[static_cast<std::size_t>(kind)];
}

std::optional<PluginKind> KindOfFileName(const std::string& name) {
    for (const PluginKindInfo& info : PluginKinds()) {
        if (EndsWithFolded(name, info.suffix)) {
            return info.kind;
        }
    }
    return std::nullopt;
}

bool IsStartable(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && ::access(file.c_str(), X_OK) == 0;
}

std::vector<PluginEntry> ListPluginFolder(const std::filesystem::path& where) {
    std::error_code error;
    const std::filesystem::path folder = std::filesystem::absolute(where, error);
    const std::vector<std::string> names = NamesInFolder(folder);
    std::vector<PluginEntry> entries;
    for (const PluginKindInfo& info : PluginKinds()) {
        for (const std::string& name : names) {
            const std::filesystem::path file = folder / name;
            if (KindOfFileName(name) == info.kind && IsStartable(file)) {
                entries.push_back({info.kind, name.substr(0, name.size() - kSuffixLength), file});
            }
        }
    }
    return entries;
}

std::vector<std::filesystem::path> PluginFolders(const PluginFolderChoice& choice) {
    if (!choice.commandLine.empty()) {
        return {choice.commandLine};
    }
    if (!choice.preference.empty()) {
        return {choice.preference};
    }
    std::vector<std::filesystem::path> folders{choice.program};
    if (choice.user != choice.program) {
        folders.push_back(choice.user);
    }
    return folders;
}

void PluginCatalog::rescan(const std::vector<std::filesystem::path>& folders) {
    std::vector<PluginEntry> found;
    for (const std::filesystem::path& folder : folders) {
        for (PluginEntry& entry : ListPluginFolder(folder)) {
            const bool known = std::any_of(found.begin(), found.end(), [&](const PluginEntry& e) {
                return e.kind == entry.kind && e.caption == entry.caption;
            });
            if (!known) {
                found.push_back(std::move(entry));
            }
        }
    }
    // Kind by kind across all folders, keeping each kind's order.
    std::stable_sort(found.begin(), found.end(),
                     [](const PluginEntry& a, const PluginEntry& b) { return a.kind < b.kind; });
    entries_ = std::move(found);
}

const PluginEntry* PluginCatalog::find(PluginKind kind, const std::string& caption) const {
    for (const PluginEntry& entry : entries_) {
        if (entry.kind == kind && entry.caption == caption) {
            return &entry;
        }
    }
    return nullptr;
}

std::string PluginCommandId(const PluginEntry& entry) {
    return std::string("plugin.") + KindInfo(entry.kind).key + "." + entry.caption;
}

std::filesystem::path FindPluginByPrefix(const std::vector<std::filesystem::path>& folders,
                                         const std::string& prefix) {
    for (const std::filesystem::path& folder : folders) {
        for (const std::string& name : NamesInFolder(folder)) {
            if (name.rfind(prefix, 0) == 0 && EndsWithFolded(name, ".exe") &&
                IsStartable(folder / name)) {
                return folder / name;
            }
        }
    }
    return {};
}

std::filesystem::path FindPluginFile(const std::vector<std::filesystem::path>& folders,
                                     const std::string& name) {
    for (const std::filesystem::path& folder : folders) {
        if (IsStartable(folder / name)) {
            return folder / name;
        }
    }
    return (folders.empty() ? std::filesystem::path(".") : folders.front()) / name;
}

}  // namespace wib
