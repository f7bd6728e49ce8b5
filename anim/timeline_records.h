// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include "core/layer_stack.h"

namespace wib {

// One frame's pixels held apart from the stack: the colour planes as the
// stack lays them out, and every layer's cell of the frame.
struct LooseFrame {
    std::vector<std::uint8_t> r, g, b;
    std::vector<LayerCell> cells;
    std::int32_t exposure = 1;
};

// The order and timing of the frames as an undo step keeps them: each frame
// by the id it was given when made, so that a restore can find it again.
struct TimelineRecord {
    std::vector<std::uint32_t> ids;
    std::vector<std::int32_t> exposures;
    std::int32_t current = 0;

    bool operator==(const TimelineRecord&) const = default;
};

// The records of the undo slots, and the frames that left the stack by a
// timeline edit while some record still names them (a redo brings them
// back). A frame no record names is dropped.
struct TimelineHistory {
    std::vector<std::optional<TimelineRecord>> records;  // by undo slot
    std::unordered_map<std::uint32_t, LooseFrame> retired;

    void keep(int slot, TimelineRecord record);
    const TimelineRecord* at(int slot) const;
    // Drops the retired frames that no record names.
    void prune();
};

// Where playback runs: frames in..out (out -1: the last), round again or
// back and forth.
struct PlayRange {
    std::int32_t in = 0;
    std::int32_t out = -1;
    bool loop = true;
    bool pingPong = false;
};

}  // namespace wib
