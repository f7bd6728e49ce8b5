// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

class CommandRegistry;

// Filter > Blur: box, Gaussian, motion, radial (spin), zoom, lens and surface
// blur.
void RegisterBlurFilters(CommandRegistry& registry);

}  // namespace wib
