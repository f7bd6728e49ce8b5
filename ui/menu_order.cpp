// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/menu_order.h"

#include <algorithm>
#include <array>

#include "core/commands.h"

namespace wib {

namespace {

constexpr std::array<const char*, 10> kKnownMenus{
    "File", "Edit", "Image", "Tools", "Brush", "Animation", "Filter", "Plug-ins", "View", "Window"};

}  // namespace

std::vector<std::string> MenuOrder(const CommandRegistry& commands) {
    const auto used = [&commands](const std::string& menu) {
        return std::any_of(commands.all().begin(), commands.all().end(),
                           [&menu](const CommandSpec& command) { return command.menu == menu; });
    };
    std::vector<std::string> order;
    for (const char* menu : kKnownMenus) {
        if (used(menu)) {
            order.emplace_back(menu);
        }
    }
    for (const CommandSpec& command : commands.all()) {
        const bool known =
            std::find(kKnownMenus.begin(), kKnownMenus.end(), command.menu) != kKnownMenus.end();
        if (!known && std::find(order.begin(), order.end(), command.menu) == order.end()) {
            order.push_back(command.menu);
        }
    }
    return order;
}

}  // namespace wib
