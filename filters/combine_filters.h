// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

inline constexpr const char* kRepeatCombineQuestion = "Merge with swap image for all frames?";

// Filter > Combine: the main image with the swap image; and the Swap image
// commands beside them.
void RegisterCombineCommands(CommandRegistry& registry);

}  // namespace wib
