// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/parallel_rows.h"

#include <algorithm>
#include <thread>
#include <vector>

namespace wib {

void ParallelRows(int threads, int rows, const std::function<void(int first, int end)>& band) {
    const int bands = std::clamp(threads, 1, std::max(rows, 1));
    std::vector<std::jthread> workers;
    workers.reserve(static_cast<std::size_t>(bands - 1));
    for (int i = 1; i < bands; ++i) {
        const int first = static_cast<int>(static_cast<long long>(rows) * i / bands);
        const int end = static_cast<int>(static_cast<long long>(rows) * (i + 1) / bands);
        workers.emplace_back([&band, first, end] { band(first, end); });
    }
    band(0, static_cast<int>(static_cast<long long>(rows) / bands));
}

}  // namespace wib
