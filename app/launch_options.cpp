// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/launch_options.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace wib {

namespace {

std::string Upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

}  // namespace

std::optional<LaunchOptions> ParseLaunchOptions(const std::vector<std::string>& arguments,
                                                std::string& error) {
    LaunchOptions options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        auto value = [&](const char* name) -> std::optional<std::string> {
            if (i + 1 >= arguments.size() || arguments[i + 1].empty()) {
                error = std::string(name) + " needs a value";
                return std::nullopt;
            }
            return arguments[++i];
        };
        // The switch counts wherever it stands in an argument ("x-nogpu", "/-NOGPU").
        if (Upper(argument).find("-NOGPU") != std::string::npos) {
            options.noGpu = true;
        } else if (argument == "--headless") {
            options.headless = true;
        } else if (argument == "--listen") {
            const auto name = value("--listen");
            if (!name) {
                return std::nullopt;
            }
            options.listen = *name;
        } else if (argument == "--token") {
            const auto token = value("--token");
            if (!token) {
                return std::nullopt;
            }
            options.token = *token;
        } else if (argument == "--plugin-dir") {
            const auto folder = value("--plugin-dir");
            if (!folder) {
                return std::nullopt;
            }
            options.pluginDir = *folder;
        } else if (argument == "--answer") {
            const auto answer = value("--answer");
            if (!answer) {
                return std::nullopt;
            }
            constexpr std::array<const char*, 3> kAnswers{"first", "second", "third"};
            const auto chosen = std::find(kAnswers.begin(), kAnswers.end(), *answer);
            if (chosen == kAnswers.end()) {
                error = "--answer takes first, second or third";
                return std::nullopt;
            }
            options.answer = static_cast<int>(chosen - kAnswers.begin()) + 1;
        } else if (argument.rfind("-platform", 0) == 0 || argument == "-style") {
            ++i;  // Qt's own options, already taken by the application object
        } else {
            error = "unknown argument " + argument;
            return std::nullopt;
        }
    }
    if (!options.headless && (!options.listen.empty() || !options.token.empty())) {
        error = "--listen and --token go with --headless";
        return std::nullopt;
    }
    return options;
}

}  // namespace wib
