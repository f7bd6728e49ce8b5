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

// Runs `job(i)` for every i in 0..count-1 on one worker per processor and
// `finish(i)` on the calling thread for every i in order, each once its job
// has returned, so that finishing (writing out) overlaps the jobs after it.
// A job starts only `ahead` (1 or more) indices before the first unfinished
// one, which bounds the results waiting to be finished. The first exception
// a job or a finish throws stops the rest and is thrown again here once the
// workers are joined.
void RunJobsInOrder(std::size_t count, std::size_t ahead,
                    const std::function<void(std::size_t)>& job,
                    const std::function<void(std::size_t)>& finish);

}  // namespace wib
