// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <functional>
#include <map>
#include <string>

#include "core/commands.h"

class QFormLayout;

namespace wib {

// One field per parameter of a command, built from the command table and
// limited to each parameter's range. `changed` is told after any edit.
class ParamFields : public QWidget {
    Q_OBJECT
  public:
    ParamFields(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                QWidget* parent = nullptr);

    std::map<std::string, ParamValue> values() const;
    // Shows the values named; the other fields keep theirs.
    void setValues(const std::map<std::string, ParamValue>& values);

  Q_SIGNALS:
    void changed();

  private:
    struct Field {
        std::function<ParamValue()> read;
        std::function<void(const ParamValue&)> write;
    };
    void addField(const ParamSpec& spec);

    QFormLayout* form_;
    std::map<std::string, Field> fields_;
};

}  // namespace wib
