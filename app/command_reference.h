// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

class CommandRegistry;

// The command reference (docs/commands.md) in Markdown: every command of
// `commands` by menu, with its shortcut and the values its dialog asks for,
// then the plug-in commands as a family. Written from the table so that the
// two cannot drift.
std::string CommandReference(const CommandRegistry& commands);

}  // namespace wib
