// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Blur: box, Gaussian and motion blur.
void RegisterBlurFilters(CommandRegistry& registry);

}  // namespace wib
