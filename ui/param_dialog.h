// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/commands.h"

namespace wib {

// The option dialog of a command that has no hand-made one: one field per
// parameter, built from the command table, limited to each parameter's range.
class ParamDialog : public QDialog {
    Q_OBJECT
  public:
    ParamDialog(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                QWidget* parent = nullptr);
    std::map<std::string, ParamValue> values() const;

  private:
    std::vector<std::function<std::pair<std::string, ParamValue>()>> readers_;
};

}  // namespace wib
