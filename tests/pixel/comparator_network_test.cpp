// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "pixel/comparator_network.h"

namespace wib {
namespace {

constexpr int kBlock = ComparatorNetwork::kBlock;

// Runs `network` on every 0/1 input of `count` wires (bit w of the input on
// wire w), a block of inputs at a time, one per byte position, and calls
// check(input, value) where value(wire) is that wire's output. A network
// that sorts every 0/1 input sorts every input.
template <typename Check>
void ForEachZeroOneInput(const ComparatorNetwork& network, int count, const Check& check) {
    std::vector<std::uint8_t> sources(static_cast<std::size_t>(count * kBlock));
    std::vector<std::uint8_t> lanes(sources.size());
    std::vector<const std::uint8_t*> pointers(static_cast<std::size_t>(count));
    for (int w = 0; w < count; ++w) {
        pointers[static_cast<std::size_t>(w)] = sources.data() + w * kBlock;
    }
    for (int first = 0; first < (1 << count); first += kBlock) {
        for (int t = 0; t < kBlock; ++t) {
            for (int w = 0; w < count; ++w) {
                sources[static_cast<std::size_t>(w * kBlock + t)] = ((first + t) >> w) & 1;
            }
        }
        network.run(pointers.data(), lanes.data(), kBlock, kBlock);
        for (int t = 0; t < kBlock && first + t < (1 << count); ++t) {
            check(first + t, [&](int wire) {
                return network.result(wire, pointers.data(), lanes.data(), kBlock)[t];
            });
        }
    }
}

TEST(ComparatorNetwork, SortsAnyNumberOfWires) {
    for (int count = 1; count <= 11; ++count) {
        ComparatorNetwork network;
        std::vector<int> wires(static_cast<std::size_t>(count));
        std::iota(wires.begin(), wires.end(), 0);
        const std::vector<int> order = network.sort(wires);
        network.keepOnly(order);
        ForEachZeroOneInput(network, count, [&](int input, const auto& value) {
            const int ones = __builtin_popcount(static_cast<unsigned>(input));
            for (int rank = 0; rank < count; ++rank) {
                ASSERT_EQ(value(order[static_cast<std::size_t>(rank)]), rank >= count - ones)
                    << count << " wires, input " << input << ", rank " << rank;
            }
        });
    }
}

TEST(ComparatorNetwork, MergesSortedRunsOfUnequalLengthsAndSelectsOneRank) {
    for (const auto& [a, b] : {std::pair{1, 4}, {3, 5}, {5, 5}, {4, 7}}) {
        for (int rank = 0; rank < a + b; ++rank) {
            ComparatorNetwork network;
            std::vector<int> first(static_cast<std::size_t>(a));
            std::vector<int> second(static_cast<std::size_t>(b));
            std::iota(first.begin(), first.end(), 0);
            std::iota(second.begin(), second.end(), a);
            const int wire = network.merge(first, second)[static_cast<std::size_t>(rank)];
            network.keepOnly({wire});
            ForEachZeroOneInput(network, a + b, [&](int input, const auto& value) {
                // Only inputs with both runs sorted: zeros below ones.
                const auto sorted = [&](int from, int count) {
                    bool one = false;
                    for (int w = from; w < from + count; ++w) {
                        const bool bit = ((input >> w) & 1) != 0;
                        if (one && !bit) {
                            return false;
                        }
                        one = one || bit;
                    }
                    return true;
                };
                if (!sorted(0, a) || !sorted(a, b)) {
                    return;
                }
                const int ones = __builtin_popcount(static_cast<unsigned>(input));
                ASSERT_EQ(value(wire), rank >= a + b - ones)
                    << a << "+" << b << ", input " << input << ", rank " << rank;
            });
        }
    }
}

}  // namespace
}  // namespace wib
