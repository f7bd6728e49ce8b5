// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// The plug-in method reference (docs/automation.md) in Markdown, written from
// the method table so that the two cannot drift.
std::string AutomationReference();

}  // namespace wib
