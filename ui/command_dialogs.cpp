// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/command_dialogs.h"

#include <QFileDialog>

#include "ui/param_dialog.h"

namespace wib {

namespace {

bool AskForFile(QWidget* parent, const CommandSpec& command,
                std::map<std::string, ParamValue>& values) {
    const ParamSpec& file = command.params[0];
    const QString path = QFileDialog::getOpenFileName(
        parent, DialogTitle(command), QString(),
        file.choices.empty() ? QString() : QString::fromStdString(file.choices[0]));
    if (path.isEmpty()) {
        return false;
    }
    values[file.name] = path.toStdString();
    return true;
}

}  // namespace

void CommandDialogs::set(const std::string& id, CommandDialog dialog) {
    own_[id] = std::move(dialog);
}

bool CommandDialogs::ask(const CommandSpec& command,
                         std::map<std::string, ParamValue>& values) const {
    if (const auto own = own_.find(command.id); own != own_.end()) {
        return own->second(command, values);
    }
    if (command.preview.has_value() && filterPanel_) {
        return filterPanel_(command, values);
    }
    if (command.params.size() == 1 && command.params[0].type == ParamType::FilePath) {
        return AskForFile(parent_, command, values);
    }
    ParamDialog dialog(command, values, parent_);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    values = dialog.values();
    return true;
}

}  // namespace wib
