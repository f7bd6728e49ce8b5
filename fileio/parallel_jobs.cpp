// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/parallel_jobs.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace wib {

void RunJobs(std::size_t count, const std::function<void(std::size_t)>& job) {
    std::atomic<std::size_t> next{0};
    std::mutex failureLock;
    std::exception_ptr failure;
    const auto work = [&] {
        try {
            for (std::size_t i = next++; i < count; i = next++) {
                job(i);
            }
        } catch (...) {
            // The other threads stop at their next job; the first failure is
            // raised again on the calling thread.
            next = count;
            const std::lock_guard lock(failureLock);
            if (!failure) {
                failure = std::current_exception();
            }
        }
    };
    const std::size_t processors = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t threadCount = std::clamp<std::size_t>(count, 1, processors);
    {
        std::vector<std::jthread> workers;
        workers.reserve(threadCount - 1);
        for (std::size_t i = 1; i < threadCount; ++i) {
            workers.emplace_back(work);
        }
        work();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace wib
