// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

#include "core/commands.h"

class QWidget;

namespace wib {

// The dialogs that ask for a command's values: a hand-made one where a
// command has one, a file dialog for a command that asks only for a file, the
// filter panel for a command that has a preview, and the dialog made from the
// parameter table for the rest. Installed in the
// registry, so that every way of running a command asks the same way.
class CommandDialogs {
  public:
    explicit CommandDialogs(QWidget* parent) : parent_(parent) {}

    // A hand-made dialog for the command `id` instead of the generic one.
    void set(const std::string& id, CommandDialog dialog);
    // The dialog of the commands that have a preview (filters).
    void setFilterPanel(CommandDialog dialog) { filterPanel_ = std::move(dialog); }

    bool ask(const CommandSpec& command, std::map<std::string, ParamValue>& values) const;

  private:
    QWidget* parent_;
    std::map<std::string, CommandDialog> own_;
    CommandDialog filterPanel_;
};

}  // namespace wib
