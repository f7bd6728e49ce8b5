// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/preview_worker.h"

#include <utility>

namespace wib {

PreviewWorker::PreviewWorker(QObject* parent) : QObject(parent), thread_([this] { run(); }) {}

PreviewWorker::~PreviewWorker() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        pending_ = nullptr;
    }
    wake_.notify_one();
    thread_.join();
}

void PreviewWorker::request(Job job, QRect area) {
    {
        const std::lock_guard lock(mutex_);
        pending_ = std::move(job);
        pendingArea_ = area;
        pendingGeneration_ = ++generation_;
    }
    wake_.notify_one();
}

void PreviewWorker::cancel() {
    const std::lock_guard lock(mutex_);
    pending_ = nullptr;
    ++generation_;
}

void PreviewWorker::run() {
    for (;;) {
        Job job;
        QRect area;
        std::uint64_t generation = 0;
        {
            std::unique_lock lock(mutex_);
            wake_.wait(lock, [this] { return stopping_ || pending_ != nullptr; });
            if (stopping_) {
                return;
            }
            job = std::exchange(pending_, nullptr);
            area = pendingArea_;
            generation = pendingGeneration_;
        }
        const QImage image = job();
        // Queued to this object: dropped by Qt if the worker is gone by then.
        QMetaObject::invokeMethod(
            this, [this, image, area, generation] { deliver(image, area, generation); },
            Qt::QueuedConnection);
    }
}

void PreviewWorker::deliver(const QImage& image, const QRect& area, std::uint64_t generation) {
    if (generation == generation_) {
        Q_EMIT ready(image, area);
    }
}

}  // namespace wib
