// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace wib {

// A comparator network over numbered wires, run on lanes of bytes: a wire is
// one value for each of a run of pixels, so each step orders a pair of values
// for the whole run at once with byte-wide min and max.
class ComparatorNetwork {
  public:
    // Lanes are processed in blocks of this many bytes; run lengths are
    // rounded up to it, so sources and lanes must be readable that far.
    static constexpr int kBlock = 32;

    // Adds the steps that merge the sorted runs of wires `a` and `b` and
    // returns the merged run's wires, smallest first. Batcher's odd-even merge,
    // which holds for runs of any lengths.
    std::vector<int> merge(const std::vector<int>& a, const std::vector<int>& b);

    // Adds the steps that sort `wires`; returns them smallest first.
    std::vector<int> sort(const std::vector<int>& wires);

    // Drops every step that the values of `results` do not depend on, and
    // keeps only the needed side of a step whose other side nothing reads.
    void keepOnly(const std::vector<int>& results);

    // Whether a kept step reads `wire` (or it is one of the results).
    bool reads(int wire) const;

    // Runs the network over `length` values per wire. A wire is read from
    // sources[wire] until a step writes it into its lane, lane `wire` of
    // `lanes`, `laneLength` bytes apart.
    void run(const std::uint8_t* const* sources, std::uint8_t* lanes, std::size_t laneLength,
             int length) const;

    // Where wire's final values lie after run().
    const std::uint8_t* result(int wire, const std::uint8_t* const* sources,
                               const std::uint8_t* lanes, std::size_t laneLength) const;

  private:
    struct Step {
        int low = 0;
        int high = 0;
        bool keepLow = true;
        bool keepHigh = true;
        bool lowFromSource = false;
        bool highFromSource = false;
    };

    std::vector<Step> steps_;
    std::vector<bool> read_;
    std::vector<bool> written_;
};

}  // namespace wib
