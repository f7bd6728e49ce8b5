// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

#include "core/commands.h"

class QSettings;

namespace wib {

// Option panels remember the values they were last accepted with, one
// settings group per command id under "FilterPanels".

// The parameters' own defaults, from the command table.
std::map<std::string, ParamValue> TableDefaults(const CommandSpec& command);

// Replaces each value of `values` that is still the table's default by the
// remembered one, where one is stored and still fits its parameter. A value
// that differs from the default was chosen by the caller (the last run's,
// for Repeat with options) and stays.
void RecallPanelValues(const QSettings& settings, const CommandSpec& command,
                       std::map<std::string, ParamValue>& values);

void RememberPanelValues(QSettings& settings, const CommandSpec& command,
                         const std::map<std::string, ParamValue>& values);

}  // namespace wib
