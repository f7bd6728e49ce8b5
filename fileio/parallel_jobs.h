// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>

namespace wib {

// Runs `job(i)` for every i in 0..count-1 on the calling thread and up to one
// worker per further processor, each taking the next index as it finishes its
// last, so that jobs of uneven cost (planes that compress fast or slowly)
// keep every thread busy. Workers are joined before return; the first
// exception a job throws is thrown again here once they are.
void RunJobs(std::size_t count, const std::function<void(std::size_t)>& job);

}  // namespace wib
