// SPDX-License-Identifier: GPL-3.0-or-later
// Rows split across threads: every row exactly once, however the bands fall.

#include <gtest/gtest.h>

#include <atomic>
#include <vector>

#include "filters/parallel_rows.h"

namespace wib {
namespace {

TEST(ParallelRows, EveryRowIsDoneOnceForAnySplit) {
    struct Split {
        int threads, rows, bandsPerThread;
    };
    for (const Split split : {Split{1, 7, 1}, Split{2, 1080, 1}, Split{2, 1080, 8}, Split{3, 10, 8},
                              Split{4, 2, 8}, Split{2, 0, 8}, Split{0, 5, 0}}) {
        std::vector<std::atomic<int>> done(static_cast<std::size_t>(split.rows));
        std::atomic<int> bands{0};
        ParallelRows(
            split.threads, split.rows,
            [&](int first, int end) {
                ASSERT_LT(first, end);
                ++bands;
                for (int y = first; y < end; ++y) {
                    ++done[static_cast<std::size_t>(y)];
                }
            },
            split.bandsPerThread);
        for (int y = 0; y < split.rows; ++y) {
            ASSERT_EQ(done[static_cast<std::size_t>(y)], 1)
                << "row " << y << " of " << split.rows << " on " << split.threads;
        }
        EXPECT_LE(bands, std::max(1, split.threads) * std::max(1, split.bandsPerThread));
    }
}

}  // namespace
}  // namespace wib
