// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/parallel_jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

namespace wib {
namespace {

TEST(RunJobs, RunsEveryJobOnceAndRaisesAFailureOnTheCaller) {
    std::vector<std::atomic<int>> runs(1000);
    RunJobs(runs.size(), [&](std::size_t i) { ++runs[i]; });
    int wrong = 0;
    for (const auto& count : runs) {
        wrong += count != 1;
    }
    EXPECT_EQ(wrong, 0);

    RunJobs(0, [](std::size_t) { FAIL() << "no job to run"; });

    EXPECT_THROW(RunJobs(64,
                         [](std::size_t i) {
                             if (i == 37) {
                                 throw std::runtime_error("job 37");
                             }
                         }),
                 std::runtime_error);
}

TEST(RunJobsInOrder, FinishesInOrderWithJobsNeverTooFarAhead) {
    constexpr std::size_t kCount = 500;
    constexpr std::size_t kAhead = 3;
    std::vector<std::atomic<int>> runs(kCount);
    std::atomic<std::size_t> finished{0};
    std::atomic<int> tooFar{0};
    std::vector<std::size_t> order;
    RunJobsInOrder(
        kCount, kAhead,
        [&](std::size_t i) {
            ++runs[i];
            tooFar += i >= finished + kAhead;
        },
        [&](std::size_t i) {
            EXPECT_EQ(runs[i], 1);
            order.push_back(i);
            finished = i + 1;
        });
    ASSERT_EQ(order.size(), kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        EXPECT_EQ(order[i], i);
        EXPECT_EQ(runs[i], 1);
    }
    EXPECT_EQ(tooFar, 0);
}

TEST(RunJobsInOrder, AFailingJobOrFinishStopsTheRunAndIsRaisedOnTheCaller) {
    std::atomic<std::size_t> last{0};
    EXPECT_THROW(RunJobsInOrder(
                     200, 4,
                     [](std::size_t i) {
                         if (i == 50) {
                             throw std::runtime_error("job 50");
                         }
                     },
                     [&](std::size_t i) { last = i; }),
                 std::runtime_error);
    EXPECT_LT(last, 50u);

    std::size_t finishes = 0;
    EXPECT_THROW(RunJobsInOrder(
                     200, 4, [](std::size_t) {},
                     [&](std::size_t i) {
                         ++finishes;
                         if (i == 10) {
                             throw std::length_error("finish 10");
                         }
                     }),
                 std::length_error);
    EXPECT_EQ(finishes, 11u);
}

}  // namespace
}  // namespace wib
