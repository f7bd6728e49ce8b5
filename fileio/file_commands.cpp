// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/file_commands.h"

#include "core/commands.h"
#include "core/discard_question.h"
#include "core/workspace.h"
#include "fileio/file_filters.h"
#include "fileio/image_files.h"

namespace wib {

namespace {}  // namespace

bool HasPath(Workspace& workspace, const std::string& path) {
    if (path.empty()) {
        workspace.host.prompter.message("No file name was given.");
        return false;
    }
    return true;
}

void RegisterFileCommands(CommandRegistry& registry, ImageFiles& files) {
    registry.add({"file.open",
                  "&Open...",
                  "File",
                  "Ctrl+O",
                  {TextParam("path", "File", ""), TextParam("type", "Type", kOpenTypeAuto)},
                  [&files, &registry](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      return HasPath(workspace, path) && MayDiscardChanges(workspace, registry) &&
                             files.open(workspace, path, values.text("type"));
                  }});
    registry.add({"file.save_current",
                  "&Save",
                  "File",
                  "Ctrl+S",
                  {},
                  [&files, &registry](Workspace& workspace, const ParamValues&) {
                      // An image that has never been saved is saved as a new
                      // file, asking for its name as Save As does.
                      if (workspace.document.FileName.empty()) {
                          return registry.runAsking(workspace, "file.save").status ==
                                 CommandOutcome::Status::Done;
                      }
                      return files.saveCurrent(workspace);
                  }});
    registry.add({"file.save",
                  "Save &As...",
                  "File",
                  "Ctrl+Shift+S",
                  {TextParam("path", "File", ""), TextParam("type", "Type", kSaveTypeDefaultTarga),
                   IntegerParam("targa_format", "Targa pixel format", 1, 4, 2),
                   IntegerParam("quality", "Quality", 1, 100, 90)},
                  [&files](Workspace& workspace, const ParamValues& values) {
                      const std::string& path = values.text("path");
                      return HasPath(workspace, path) &&
                             files.save(workspace, path,
                                        {values.text("type"),
                                         static_cast<int>(values.integer("targa_format")),
                                         static_cast<int>(values.integer("quality"))});
                  }});
}

}  // namespace wib
