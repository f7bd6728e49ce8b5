// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/discard_question.h"

#include <filesystem>

#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

std::string SaveChangesQuestion(const std::string& fileName) {
    const std::string name =
        fileName.empty() ? "Untitled" : std::filesystem::path(fileName).filename().string();
    return "Save changes to \"" + name + "\"?";
}

bool MayDiscardChanges(Workspace& workspace, const CommandRegistry& commands) {
    if (!workspace.document.modified) {
        return true;
    }
    const int answer =
        workspace.host.prompter.threeChoiceBox(SaveChangesQuestion(workspace.document.FileName),
                                               "Wibbleton", "Save", "Don't Save", "Cancel");
    switch (answer) {
        case 1:
            return commands.runAsking(workspace, "file.save_current").status ==
                       CommandOutcome::Status::Done &&
                   !workspace.document.modified;
        case 2:
            return true;
        default:
            return false;
    }
}

}  // namespace wib
