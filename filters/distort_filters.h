// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Distort: pixels moved about the image, sampled bilinearly with the
// edges clamped.
void RegisterDistortFilters(CommandRegistry& registry);

}  // namespace wib
