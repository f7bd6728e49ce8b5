// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;
struct FilterContext;

// Moves each pixel by the swap image's red and green around 128, `amount` /
// 128 pixels a level, sampled bilinearly: Filter > Distort > Displace and
// the displace combine.
void DisplaceBySwap(const FilterContext& context, double amount);

// Filter > Distort: pixels moved about the image, sampled bilinearly with the
// edges clamped.
void RegisterDistortFilters(CommandRegistry& registry);

}  // namespace wib
