// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace wib {

// What the command line asks for:
//   wibbleton [-NOGPU] [--plugin-dir DIR]
//             [--headless [--listen NAME] [--answer first|second|third] [--token T]]
struct LaunchOptions {
    bool noGpu = false;  // "-NOGPU" in any letter case
    bool headless = false;
    std::string listen;     // automation server name; empty: a socket in a private folder
    int answer = 2;         // headless questions: 1 first button, 2 second, 3 third
    std::string token;      // automation token; empty: a random one
    std::string pluginDir;  // the only folder plug-ins are listed from; empty: the usual ones
};

// Nothing when the arguments (program name excluded) make no sense; `error`
// then says what is wrong.
std::optional<LaunchOptions> ParseLaunchOptions(const std::vector<std::string>& arguments,
                                                std::string& error);

inline constexpr const char* kUsage =
    "usage: wibbleton [-NOGPU] [--plugin-dir DIR]\n"
    "                 [--headless [--listen NAME] [--answer first|second|third] [--token T]]";

}  // namespace wib
