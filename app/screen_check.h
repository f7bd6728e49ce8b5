// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace wib {

class Log;
class Prompter;

// What the warning "SCREEN SETTINGS CONFLICT" says about a screen of `dpi`
// dots per inch; nothing for the standard 96.
std::optional<std::string> ScreenConflictText(double dpi);

// Logs the primary screen's scale factor and size, and warns in a box titled
// "SCREEN SETTINGS CONFLICT" (also logged) when its DPI is not the standard 96.
void CheckScreen(Log& log, Prompter& prompter);

}  // namespace wib
