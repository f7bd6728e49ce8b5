// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace wib {

// Bytes of a stack of `frames` frames of a width x height document: three
// planes of (width + 1) x (height + 1) bytes each.
std::uint64_t StackBytes(long long frames, int width, int height);

// What a frame stack needs against the memory it may take.
struct StackMemory {
    std::uint64_t needed = 0;
    std::uint64_t available = 0;

    bool fits() const { return needed <= available; }
    // The message that refuses it.
    std::string refusal() const;
};

}  // namespace wib
