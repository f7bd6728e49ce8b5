// SPDX-License-Identifier: GPL-3.0-or-later
// The preview worker hands out only the newest result: a request made while
// another runs replaces any not yet started, and the result of a request that
// has been overtaken (or cancelled) never reaches the canvas.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <atomic>
#include <future>
#include <vector>

#include "tests/support/qt_wait.h"
#include "ui/preview_worker.h"

namespace wib {
namespace {

// An image that says which request made it.
QImage Marked(int mark) {
    QImage image(1, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, qRgb(mark, 0, 0));
    return image;
}

TEST(PreviewWorker, OnlyTheLatestRequestIsComputedToTheEndAndShown) {
    PreviewWorker worker;
    std::vector<int> shown;
    std::vector<QRect> areas;
    QObject::connect(&worker, &PreviewWorker::ready, [&](const QImage& image, const QRect& area) {
        shown.push_back(qRed(image.pixel(0, 0)));
        areas.push_back(area);
    });
    std::promise<void> started;
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    std::atomic<int> runs{0};
    worker.request(
        [&, released] {
            ++runs;
            started.set_value();
            released.wait();
            return Marked(1);
        },
        QRect(0, 0, 1, 1));
    started.get_future().wait();
    // While the first runs: the second waits, the third replaces it.
    worker.request(
        [&] {
            ++runs;
            return Marked(2);
        },
        QRect(0, 0, 2, 2));
    worker.request(
        [&] {
            ++runs;
            return Marked(3);
        },
        QRect(0, 0, 3, 3));
    release.set_value();
    ASSERT_TRUE(testing::PumpUntil([&] { return !shown.empty(); }));
    EXPECT_EQ(shown, std::vector<int>{3});
    EXPECT_EQ(areas, std::vector<QRect>{QRect(0, 0, 3, 3)});
    EXPECT_EQ(runs.load(), 2);
}

TEST(PreviewWorker, ACancelledResultIsDroppedAndLaterRequestsStillArrive) {
    PreviewWorker worker;
    std::vector<int> shown;
    QObject::connect(&worker, &PreviewWorker::ready, [&](const QImage& image, const QRect&) {
        shown.push_back(qRed(image.pixel(0, 0)));
    });
    std::promise<void> started;
    std::promise<void> release;
    std::shared_future<void> released = release.get_future().share();
    worker.request(
        [&, released] {
            started.set_value();
            released.wait();
            return Marked(7);
        },
        {});
    started.get_future().wait();
    worker.cancel();
    release.set_value();
    worker.request([] { return Marked(8); }, {});
    ASSERT_TRUE(testing::PumpUntil([&] { return !shown.empty(); }));
    EXPECT_EQ(shown, std::vector<int>{8});
}

}  // namespace
}  // namespace wib
