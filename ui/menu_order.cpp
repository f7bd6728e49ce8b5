// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/menu_order.h"

#include <algorithm>
#include <array>

#include "core/commands.h"

namespace wib {

namespace {

constexpr std::array<const char*, 12> kKnownMenus{"File",   "Edit",     "Image", "Layer",
                                                  "Select", "Tools",    "Brush", "Animation",
                                                  "Filter", "Plug-ins", "View",  "Window"};

}  // namespace

std::vector<std::string> MenuPath(const std::string& menu) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    while (true) {
        const std::size_t slash = menu.find('/', start);
        parts.push_back(menu.substr(start, slash - start));
        if (slash == std::string::npos) {
            return parts;
        }
        start = slash + 1;
    }
}

std::vector<std::string> MenuOrder(const CommandRegistry& commands) {
    const auto top = [](const CommandSpec& command) { return MenuPath(command.menu).front(); };
    const auto used = [&commands, &top](const std::string& menu) {
        return std::any_of(commands.all().begin(), commands.all().end(),
                           [&](const CommandSpec& command) { return top(command) == menu; });
    };
    std::vector<std::string> order;
    for (const char* menu : kKnownMenus) {
        if (used(menu)) {
            order.emplace_back(menu);
        }
    }
    for (const CommandSpec& command : commands.all()) {
        const std::string menu = top(command);
        const bool known =
            std::find(kKnownMenus.begin(), kKnownMenus.end(), menu) != kKnownMenus.end();
        if (!known && std::find(order.begin(), order.end(), menu) == order.end()) {
            order.push_back(menu);
        }
    }
    return order;
}

}  // namespace wib
