// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QObject>
#include <QRect>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <thread>

namespace wib {

// Computes previews one at a time on a thread of its own. A request replaces
// one that has not started yet (requests are superseded, never queued), and a
// result is handed out only when no request has come after its own; a stale
// one is dropped. `ready` is told on the interface thread.
class PreviewWorker : public QObject {
    Q_OBJECT
  public:
    // Runs on the worker's thread; must not touch the interface or the document.
    using Job = std::function<QImage()>;

    explicit PreviewWorker(QObject* parent = nullptr);
    // Waits for the job in progress, if any.
    ~PreviewWorker() override;

    // `area` travels with the result: the image pixels it covers.
    void request(Job job, QRect area);
    // Drops the request not yet started and the result of the one running.
    void cancel();

  Q_SIGNALS:
    void ready(const QImage& image, const QRect& area);

  private:
    void run();
    void deliver(const QImage& image, const QRect& area, std::uint64_t generation);

    std::mutex mutex_;
    std::condition_variable wake_;
    Job pending_;
    QRect pendingArea_;
    std::uint64_t pendingGeneration_ = 0;
    bool stopping_ = false;
    // The generation of the latest request or cancel; read and written on
    // the interface thread only.
    std::uint64_t generation_ = 0;
    std::thread thread_;
};

}  // namespace wib
