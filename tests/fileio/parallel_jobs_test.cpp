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

}  // namespace
}  // namespace wib
