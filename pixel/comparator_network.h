// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace wib {

// Values are ordered in blocks of this many bytes, one pixel a byte.
inline constexpr int kComparatorBlock = 32;

// One step of a network: the smaller value to wire `low`, the larger to
// `high`; a step whose other output nothing reads keeps only one side.
struct ComparatorStep {
    int low = 0;
    int high = 0;
    bool keepLow = true;
    bool keepHigh = true;
    bool lowFromSource = false;
    bool highFromSource = false;
};

// A comparator network over numbered wires, run on lanes of bytes: a wire is
// one value for each of a run of pixels, so each step orders a pair of values
// for the whole run at once with byte-wide min and max. Built at compile time
// where its steps are to be unrolled.
class ComparatorNetwork {
  public:
    // Lanes are processed in whole blocks; run lengths are rounded up to
    // them, so sources and lanes must be readable that far.
    static constexpr int kBlock = kComparatorBlock;

    // Adds the steps that merge the sorted runs of wires `a` and `b` and
    // returns the merged run's wires, smallest first. Batcher's odd-even merge,
    // which holds for runs of any lengths.
    constexpr std::vector<int> merge(const std::vector<int>& a, const std::vector<int>& b) {
        if (a.empty() || b.empty()) {
            return a.empty() ? b : a;
        }
        if (a.size() == 1 && b.size() == 1) {
            steps_.push_back({a[0], b[0]});
            return {a[0], b[0]};
        }
        const std::vector<int> even = merge(Every(a, 0), Every(b, 0));
        const std::vector<int> odd = merge(Every(a, 1), Every(b, 1));
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

    // Adds the steps that sort `wires`; returns them smallest first.
    constexpr std::vector<int> sort(const std::vector<int>& wires) {
        if (wires.size() <= 1) {
            return wires;
        }
        const auto half = wires.begin() + static_cast<std::ptrdiff_t>(wires.size() / 2);
        return merge(sort({wires.begin(), half}), sort({half, wires.end()}));
    }

    // Drops every step that the values of `results` do not depend on, and
    // keeps only the needed side of a step whose other side nothing reads.
    // Call it once the network is built.
    constexpr void keepOnly(const std::vector<int>& results) {
        std::size_t wires = 0;
        for (const ComparatorStep& step : steps_) {
            wires = std::max({wires, Index(step.low) + 1, Index(step.high) + 1});
        }
        for (const int wire : results) {
            wires = std::max(wires, Index(wire) + 1);
        }
        std::vector<char> needed = Flags(wires);
        for (const int wire : results) {
            needed[Index(wire)] = true;
        }
        read_ = needed;
        std::vector<ComparatorStep> kept;
        for (auto it = steps_.rbegin(); it != steps_.rend(); ++it) {
            ComparatorStep step = *it;
            step.keepLow = needed[Index(step.low)];
            step.keepHigh = needed[Index(step.high)];
            if (step.keepLow || step.keepHigh) {
                needed[Index(step.low)] = needed[Index(step.high)] = true;
                read_[Index(step.low)] = read_[Index(step.high)] = true;
                kept.push_back(step);
            }
        }
        steps_.assign(kept.rbegin(), kept.rend());
        written_ = Flags(wires);
        for (ComparatorStep& step : steps_) {
            step.lowFromSource = !written_[Index(step.low)];
            step.highFromSource = !written_[Index(step.high)];
            written_[Index(step.low)] = written_[Index(step.low)] || step.keepLow;
            written_[Index(step.high)] = written_[Index(step.high)] || step.keepHigh;
        }
    }

    // Whether a kept step reads `wire` (or it is one of the results).
    constexpr bool reads(int wire) const {
        return Index(wire) < read_.size() && read_[Index(wire)];
    }

    constexpr const std::vector<ComparatorStep>& steps() const { return steps_; }

    // Runs the network over `length` values per wire. A wire is read from
    // sources[wire] until a step writes it into its lane, lane `wire` of
    // `lanes`, `laneLength` bytes apart.
    void run(const std::uint8_t* const* sources, std::uint8_t* lanes, std::size_t laneLength,
             int length) const;

    // Where wire's final values lie after run().
    const std::uint8_t* result(int wire, const std::uint8_t* const* sources,
                               const std::uint8_t* lanes, std::size_t laneLength) const;

  private:
    static constexpr std::size_t Index(int wire) { return static_cast<std::size_t>(wire); }

    // `count` flags, all clear. Grown one at a time: a vector sized up front
    // is filled in a way that not every compiler accepts at compile time.
    static constexpr std::vector<char> Flags(std::size_t count) {
        std::vector<char> flags;
        for (std::size_t i = 0; i < count; ++i) {
            flags.push_back(0);
        }
        return flags;
    }

    static constexpr std::vector<int> Every(const std::vector<int>& wires, std::size_t from) {
        std::vector<int> picked;
        for (std::size_t i = from; i < wires.size(); i += 2) {
            picked.push_back(wires[i]);
        }
        return picked;
    }

    std::vector<ComparatorStep> steps_;
    std::vector<char> read_;
    std::vector<char> written_;
};

}  // namespace wib
