// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/comparator_network.h"

#include <algorithm>
#include <cstring>

#include "pixel/plane_band.h"

namespace wib {

namespace {

using Bytes = std::uint8_t __attribute__((vector_size(ComparatorNetwork::kBlock)));

inline __attribute__((always_inline)) Bytes Load(const std::uint8_t* p) {
    Bytes v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

inline __attribute__((always_inline)) void Store(std::uint8_t* p, Bytes v) {
    std::memcpy(p, &v, sizeof v);
}

// Each block is read whole before it is written, so a lane may be both a
// step's input and its output.
inline __attribute__((always_inline)) void OrderLanes(const std::uint8_t* a, const std::uint8_t* b,
                                                      std::uint8_t* low, std::uint8_t* high,
                                                      bool keepLow, bool keepHigh, int length) {
    for (int t = 0; t < length; t += ComparatorNetwork::kBlock) {
        const Bytes x = Load(a + t);
        const Bytes y = Load(b + t);
        if (keepLow) {
            Store(low + t, x < y ? x : y);
        }
        if (keepHigh) {
            Store(high + t, x < y ? y : x);
        }
    }
}

}  // namespace

std::vector<int> ComparatorNetwork::merge(const std::vector<int>& a, const std::vector<int>& b) {
    if (a.empty() || b.empty()) {
        return a.empty() ? b : a;
    }
    if (a.size() == 1 && b.size() == 1) {
        steps_.push_back({a[0], b[0]});
        return {a[0], b[0]};
    }
    const auto every = [](const std::vector<int>& wires, std::size_t from) {
        std::vector<int> picked;
        for (std::size_t i = from; i < wires.size(); i += 2) {
            picked.push_back(wires[i]);
        }
        return picked;
    };
    const std::vector<int> even = merge(every(a, 0), every(b, 0));
    const std::vector<int> odd = merge(every(a, 1), every(b, 1));
    // The merged evens and odds interleave, each odd ordered against the
    // next even.
    std::vector<int> merged{even[0]};
    std::size_t i = 0;
    for (; i < odd.size() && i + 1 < even.size(); ++i) {
        steps_.push_back({odd[i], even[i + 1]});
        merged.push_back(odd[i]);
        merged.push_back(even[i + 1]);
    }
    merged.insert(merged.end(), odd.begin() + static_cast<std::ptrdiff_t>(i), odd.end());
    merged.insert(merged.end(), even.begin() + static_cast<std::ptrdiff_t>(i) + 1, even.end());
    return merged;
}

std::vector<int> ComparatorNetwork::sort(const std::vector<int>& wires) {
    if (wires.size() <= 1) {
        return wires;
    }
    const auto half = wires.begin() + static_cast<std::ptrdiff_t>(wires.size() / 2);
    return merge(sort({wires.begin(), half}), sort({half, wires.end()}));
}

void ComparatorNetwork::keepOnly(const std::vector<int>& results) {
    int wires = 0;
    for (const Step& step : steps_) {
        wires = std::max({wires, step.low + 1, step.high + 1});
    }
    for (const int wire : results) {
        wires = std::max(wires, wire + 1);
    }
    std::vector<bool> needed(static_cast<std::size_t>(wires));
    for (const int wire : results) {
        needed[static_cast<std::size_t>(wire)] = true;
    }
    read_ = needed;
    std::vector<Step> kept;
    for (auto it = steps_.rbegin(); it != steps_.rend(); ++it) {
        Step step = *it;
        step.keepLow = needed[static_cast<std::size_t>(step.low)];
        step.keepHigh = needed[static_cast<std::size_t>(step.high)];
        if (step.keepLow || step.keepHigh) {
            needed[static_cast<std::size_t>(step.low)] = true;
            needed[static_cast<std::size_t>(step.high)] = true;
            read_[static_cast<std::size_t>(step.low)] = true;
            read_[static_cast<std::size_t>(step.high)] = true;
            kept.push_back(step);
        }
    }
    steps_.assign(kept.rbegin(), kept.rend());
    written_.assign(static_cast<std::size_t>(wires), false);
    for (Step& step : steps_) {
        step.lowFromSource = !written_[static_cast<std::size_t>(step.low)];
        step.highFromSource = !written_[static_cast<std::size_t>(step.high)];
        written_[static_cast<std::size_t>(step.low)] =
            written_[static_cast<std::size_t>(step.low)] || step.keepLow;
        written_[static_cast<std::size_t>(step.high)] =
            written_[static_cast<std::size_t>(step.high)] || step.keepHigh;
    }
}

bool ComparatorNetwork::reads(int wire) const {
    return static_cast<std::size_t>(wire) < read_.size() && read_[static_cast<std::size_t>(wire)];
}

// The whole network in one call, so that the run-time choice of code is made
// once and not for every step.
WIB_WINDOW_KERNEL void ComparatorNetwork::run(const std::uint8_t* const* sources,
                                              std::uint8_t* lanes, std::size_t laneLength,
                                              int length) const {
    const auto lane = [&](int wire) { return lanes + static_cast<std::size_t>(wire) * laneLength; };
    for (const Step& step : steps_) {
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
