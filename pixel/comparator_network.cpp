// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/comparator_network.h"

#include "pixel/comparator_bytes.h"
#include "pixel/plane_band.h"

namespace wib {

namespace {

// Each block is read whole before it is written, so a lane may be both a
// step's input and its output.
inline __attribute__((always_inline)) void OrderLanes(const std::uint8_t* a, const std::uint8_t* b,
                                                      std::uint8_t* low, std::uint8_t* high,
                                                      bool keepLow, bool keepHigh, int length) {
    for (int t = 0; t < length; t += ComparatorNetwork::kBlock) {
        const ComparatorBytes x = LoadBytes(a + t);
        const ComparatorBytes y = LoadBytes(b + t);
        if (keepLow) {
            StoreBytes(low + t, x < y ? x : y);
        }
        if (keepHigh) {
            StoreBytes(high + t, x < y ? y : x);
        }
    }
}

}  // namespace

// The whole network in one call, so that the run-time choice of code is made
// once and not for every step.
WIB_WINDOW_KERNEL void ComparatorNetwork::run(const std::uint8_t* const* sources,
                                              std::uint8_t* lanes, std::size_t laneLength,
                                              int length) const {
    const auto lane = [&](int wire) { return lanes + static_cast<std::size_t>(wire) * laneLength; };
    for (const ComparatorStep& step : steps_) {
        OrderLanes(step.lowFromSource ? sources[step.low] : lane(step.low),
                   step.highFromSource ? sources[step.high] : lane(step.high), lane(step.low),
                   lane(step.high), step.keepLow, step.keepHigh, length);
    }
}

const std::uint8_t* ComparatorNetwork::result(int wire, const std::uint8_t* const* sources,
                                              const std::uint8_t* lanes,
                                              std::size_t laneLength) const {
    const bool written = static_cast<std::size_t>(wire) < written_.size() &&
                         written_[static_cast<std::size_t>(wire)];
    return written ? lanes + static_cast<std::size_t>(wire) * laneLength : sources[wire];
}

}  // namespace wib
