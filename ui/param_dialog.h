// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "core/commands.h"

namespace wib {

class ParamFields;

// The option dialog of a command that has no hand-made one: the fields of its
// parameters, OK and Cancel.
class ParamDialog : public QDialog {
    Q_OBJECT
  public:
    ParamDialog(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                QWidget* parent = nullptr);
    std::map<std::string, ParamValue> values() const;

  private:
    ParamFields* fields_;
};

// A dialog's title made from a command's menu caption ("&Levels..." -> "Levels").
QString DialogTitle(const CommandSpec& command);

}  // namespace wib
