// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace wib {

// The kinds of plug-in, in the order their menus are listed.
enum class PluginKind { Import, Export, Brush, Filter, Misc };

struct PluginKindInfo {
    PluginKind kind;
    const char* suffix;  // the end of the file name, always 7 characters
    const char* key;     // the middle part of the command id: plugin.<key>.<caption>
    const char* menu;    // the submenu of Plug-ins that lists them
    const char* menuObjectName;
};

const std::array<PluginKindInfo, 5>& PluginKinds();
const PluginKindInfo& KindInfo(PluginKind kind);

// One plug-in file as a listing found it.
struct PluginEntry {
    PluginKind kind;
    std::string caption;  // the file name without its last 7 characters
    std::filesystem::path file;
};

// The kind a file name's suffix gives (letter case aside), if any.
std::optional<PluginKind> KindOfFileName(const std::string& name);

// Whether the file is something the program can start: a regular file (or a
// link to one) that the user may execute.
bool IsStartable(const std::filesystem::path& file);

// The plug-ins of one folder, kind by kind, each kind in the order the file
// system returns the names. The listing changes into the folder and back, as
// the classic listing of "the current folder" did; a folder that cannot be
// entered gives nothing.
std::vector<PluginEntry> ListPluginFolder(const std::filesystem::path& folder);

// Where plug-ins are looked for, first to last: `--plugin-dir` when given;
// else the folder the PluginFolder preference names when set; else the
// program's own plug-in folder, then the user's.
struct PluginFolderChoice {
    std::filesystem::path commandLine;  // empty: not given
    std::filesystem::path preference;   // empty: not set
    std::filesystem::path program;
    std::filesystem::path user;
};
std::vector<std::filesystem::path> PluginFolders(const PluginFolderChoice& choice);

// Every plug-in of the folders, kind by kind; within a kind the first
// folder's files come first. A caption a kind already has (a file of the same
// name in a later folder) is left out.
class PluginCatalog {
  public:
    // Lists the folders afresh, replacing what an earlier listing found.
    void rescan(const std::vector<std::filesystem::path>& folders);
    const std::vector<PluginEntry>& entries() const { return entries_; }
    const PluginEntry* find(PluginKind kind, const std::string& caption) const;

  private:
    std::vector<PluginEntry> entries_;
};

// "plugin.filter.Filmgrain"
std::string PluginCommandId(const PluginEntry& entry);

// The first file of the folders whose name starts with `prefix` and ends in
// ".exe" (letter case aside) and that can be started; empty when none.
std::filesystem::path FindPluginByPrefix(const std::vector<std::filesystem::path>& folders,
                                         const std::string& prefix);

// The file of that exact name in the first of the folders that holds it as a
// startable file. A name found nowhere gives the name in the first folder all
// the same, so that starting it fails and the child list shows it as not
// started.
std::filesystem::path FindPluginFile(const std::vector<std::filesystem::path>& folders,
                                     const std::string& name);

}  // namespace wib
