// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/stack_memory.h"

namespace wib {

namespace {

constexpr std::uint64_t kMegabyte = 1048576;

}  // namespace

std::uint64_t StackBytes(long long frames, int width, int height) {
    if (frames <= 0) {
        return 0;
    }
    const auto plane =
        static_cast<std::uint64_t>(width + 1) * static_cast<std::uint64_t>(height + 1);
    return static_cast<std::uint64_t>(frames) * plane * 3;
}

std::string StackMemory::refusal() const {
    return "Not enough memory for this animation: its frames need " +
           std::to_string((needed + kMegabyte - 1) / kMegabyte) + " MB and only " +
           std::to_string(available / kMegabyte) +
           " MB are free. Use fewer frames or a smaller image.";
}

}  // namespace wib
