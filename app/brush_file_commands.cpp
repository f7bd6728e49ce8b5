// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/brush_file_commands.h"

#include "core/commands.h"
#include "fileio/bitmap_reader.h"
#include "fileio/file_names.h"
#include "fileio/targa_reader.h"
#include "paint/paint_session.h"

namespace wib {

void RegisterBrushFileCommands(CommandRegistry& registry, PaintSession& paint) {
    ParamSpec path;
    path.name = "path";
    path.caption = "Brush file";
    path.type = ParamType::FilePath;
    path.fallback = std::string();
    path.choices = {"Brush images (*.tga *.bmp);;All files (*)"};
    registry.add({"brush.load",
                  "&Load brush...",
                  "Brush",
                  "",
                  {path},
                  [&paint](Workspace& workspace, const ParamValues& values) {
                      const std::string& file = values.text("path");
                      const bool loaded = LowerExtension(file) == ".bmp"
                                              ? LoadBMPToBrush(workspace, file)
                                              : LoadTargaToBrush(workspace, file).has_value();
                      if (loaded) {
                          paint.setImageBrushActive(true);
                          paint.optionsChanged();
                      }
                      return loaded;
                  }});
}

}  // namespace wib
