// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

class QWidget;

namespace wib {

class CommandDialogs;
class Workspace;

// The hand-made dialogs of the document's commands: the size dialog of
// file.new and image.canvas_size (presets from `presetFile`), and the open
// and save dialogs of file.open and file.save.
void SetDocumentDialogs(CommandDialogs& dialogs, Workspace& workspace,
                        const std::filesystem::path& presetFile, QWidget* parent);

}  // namespace wib
