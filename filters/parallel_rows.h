// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace wib {

// Splits rows 0..rows-1 into `threads` bands and runs `band(first, end)` on
// each, one band on the calling thread and the others on workers joined
// before return. Fewer rows than threads use fewer workers.
void ParallelRows(int threads, int rows, const std::function<void(int first, int end)>& band);

}  // namespace wib
