// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

class CommandRegistry;
class Workspace;
class ImageFiles;

// The File menu's open and save commands:
//   file.open          path, type ("targa" or "auto")
//   file.save          path, type (the save filter's entry name), targa_format (1 to 4), quality
//   file.save_current  saves to the document's own file as it was last written;
//                      an untitled image runs file.save with its dialog instead
// The menu asks for the values with its dialogs first; Wib_RunCommand gives
// them. `files` outlives the registry.
void RegisterFileCommands(CommandRegistry& registry, ImageFiles& files);

// False, telling the user "No file name was given.", for an empty path.
bool HasPath(Workspace& workspace, const std::string& path);

}  // namespace wib
