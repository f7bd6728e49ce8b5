// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/parallel_rows.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace wib {

void ParallelRows(int threads, int rows, const std::function<void(int first, int end)>& band,
                  int bandsPerThread) {
    if (rows <= 0) {
        return;
    }
    const int workers = std::clamp(threads, 1, rows);
    const int bands = std::clamp(workers * std::max(bandsPerThread, 1), 1, rows);
    // Each thread takes the next band not yet taken, so a thread that gets
    // less of the processor does fewer bands.
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int i = next++; i < bands; i = next++) {
            band(static_cast<int>(static_cast<long long>(rows) * i / bands),
                 static_cast<int>(static_cast<long long>(rows) * (i + 1) / bands));
        }
    };
    std::vector<std::jthread> helpers;
    helpers.reserve(static_cast<std::size_t>(workers - 1));
    for (int i = 1; i < workers; ++i) {
        helpers.emplace_back(work);
    }
    work();
}

}  // namespace wib
