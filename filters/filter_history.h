// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Repeat last filter (Ctrl+F) runs the last filter that ran, with the
// values it ran with; Repeat with options (Ctrl+Alt+F) opens its panel on them
// first. Call once every filter is registered: the filters' rows learn to note
// themselves.
void RegisterFilterRepeat(CommandRegistry& registry);

}  // namespace wib
