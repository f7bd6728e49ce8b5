// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace wib {

// Splits rows 0..rows-1 into `threads` x `bandsPerThread` bands and runs
// `band(first, end)` on each, on the calling thread and on workers joined
// before return, each taking the next band left. More bands than threads
// even out a processor shared with other work, at the cost of starting each
// band; kernels that start cheaply ask for more. Fewer rows than threads use
// fewer workers.
void ParallelRows(int threads, int rows, const std::function<void(int first, int end)>& band,
                  int bandsPerThread = 1);

}  // namespace wib
