// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_pins.h"

namespace wib {

std::vector<int> FramePins::follow(const std::vector<int>& pinned,
                                   const std::vector<std::uint32_t>& before,
                                   const std::vector<std::uint32_t>& after,
                                   const std::function<bool(std::uint32_t)>& mayReturn) {
    std::unordered_set<std::uint32_t> ids = std::move(away_);
    for (const int position : pinned) {
        if (position >= 0 && static_cast<std::size_t>(position) < before.size()) {
            ids.insert(before[static_cast<std::size_t>(position)]);
        }
    }
    std::vector<int> positions;
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (ids.erase(after[i]) > 0) {
            positions.push_back(static_cast<int>(i));
        }
    }
    away_.clear();
    for (const std::uint32_t id : ids) {
        if (mayReturn(id)) {
            away_.insert(id);
        }
    }
    return positions;
}

}  // namespace wib
