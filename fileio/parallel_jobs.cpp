// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/parallel_jobs.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace wib {

namespace {

std::size_t Processors() {
    return std::max(1u, std::thread::hardware_concurrency());
}

// What the workers and the finishing thread of RunJobsInOrder share, guarded
// by `lock`.
struct OrderedRun {
    std::mutex lock;
    std::condition_variable changed;
    std::vector<char> done;
    std::size_t next = 0;
    std::size_t finished = 0;
    bool stopped = false;
    std::exception_ptr failure;

    // Called with `lock` held.
    void stop(std::exception_ptr error) {
        if (!failure) {
            failure = std::move(error);
        }
        stopped = true;
        changed.notify_all();
    }
};

}  // namespace

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
    const std::size_t threadCount = std::clamp<std::size_t>(count, 1, Processors());
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

void RunJobsInOrder(std::size_t count, std::size_t ahead,
                    const std::function<void(std::size_t)>& job,
                    const std::function<void(std::size_t)>& finish) {
    OrderedRun run;
    run.done.assign(count, 0);
    const auto work = [&] {
        std::unique_lock guard(run.lock);
        for (;;) {
            run.changed.wait(guard, [&] {
                return run.stopped || run.next >= count || run.next < run.finished + ahead;
            });
            if (run.stopped || run.next >= count) {
                return;
            }
            const std::size_t i = run.next++;
            guard.unlock();
            try {
                job(i);
            } catch (...) {
                guard.lock();
                run.stop(std::current_exception());
                return;
            }
            guard.lock();
            run.done[i] = 1;
            run.changed.notify_all();
        }
    };
    {
        std::vector<std::jthread> workers;
        std::unique_lock guard(run.lock);
        try {
            const std::size_t threadCount = std::clamp<std::size_t>(count, 1, Processors());
            workers.reserve(threadCount);
            for (std::size_t t = 0; t < threadCount; ++t) {
                workers.emplace_back(work);
            }
        } catch (...) {
            run.stop(std::current_exception());
        }
        for (std::size_t i = 0; i < count && !run.stopped; ++i) {
            run.changed.wait(guard, [&] { return run.stopped || run.done[i] != 0; });
            if (run.stopped) {
                break;
            }
            guard.unlock();
            try {
                finish(i);
            } catch (...) {
                guard.lock();
                run.stop(std::current_exception());
                break;
            }
            guard.lock();
            run.finished = i + 1;
            run.changed.notify_all();
        }
    }
    if (run.failure) {
        std::rethrow_exception(run.failure);
    }
}

}  // namespace wib
