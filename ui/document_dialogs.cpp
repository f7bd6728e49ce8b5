// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document_dialogs.h"

#include "core/workspace.h"
#include "ui/canvas_size.h"
#include "ui/command_dialogs.h"
#include "ui/file_dialogs.h"

namespace wib {

namespace {

CommandDialog SizeDialog(CanvasSize::Purpose purpose, Workspace& workspace,
                         const std::filesystem::path& presetFile, QWidget* parent) {
    return [purpose, &workspace, presetFile, parent](const CommandSpec&, auto& values) {
        CanvasSize dialog(purpose, presetFile, workspace.general ? &*workspace.general : nullptr,
                          parent);
        dialog.setValues(values);
        if (dialog.exec() != QDialog::Accepted) {
            return false;
        }
        values = dialog.values();
        return true;
    };
}

}  // namespace

void SetDocumentDialogs(CommandDialogs& dialogs, Workspace& workspace,
                        const std::filesystem::path& presetFile, QWidget* parent) {
    dialogs.set("file.new",
                SizeDialog(CanvasSize::Purpose::NewDocument, workspace, presetFile, parent));
    dialogs.set("image.canvas_size",
                SizeDialog(CanvasSize::Purpose::ChangeCanvas, workspace, presetFile, parent));
    dialogs.set("file.open", [&workspace, parent](const CommandSpec&, auto& values) {
        return AskOpenValues(parent, workspace.document.FileName, values);
    });
    dialogs.set("file.save", [&workspace, parent](const CommandSpec&, auto& values) {
        return AskSaveValues(parent, workspace.host.prompter, workspace.document.FileName, values);
    });
}

}  // namespace wib
