// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/timeline_records.h"

#include <algorithm>
#include <unordered_set>

namespace wib {

void TimelineHistory::keep(int slot, TimelineRecord record) {
    if (slot < 0) {
        return;
    }
    if (static_cast<std::size_t>(slot) >= records.size()) {
        records.resize(static_cast<std::size_t>(slot) + 1);
    }
    records[static_cast<std::size_t>(slot)] = std::move(record);
    prune();
}

const TimelineRecord* TimelineHistory::at(int slot) const {
    if (slot < 0 || static_cast<std::size_t>(slot) >= records.size() ||
        !records[static_cast<std::size_t>(slot)]) {
        return nullptr;
    }
    return &*records[static_cast<std::size_t>(slot)];
}

void TimelineHistory::prune() {
    if (retired.empty()) {
        return;
    }
    std::unordered_set<std::uint32_t> named;
    for (const auto& record : records) {
        if (record) {
            named.insert(record->ids.begin(), record->ids.end());
        }
    }
    std::erase_if(retired, [&named](const auto& entry) { return !named.contains(entry.first); });
}

}  // namespace wib
