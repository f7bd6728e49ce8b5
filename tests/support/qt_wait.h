// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

namespace wib::testing {

// Lets the interface thread's events through until `done` holds, for results
// that other threads deliver as events. Gives up after a generous while, so
// that a result that never comes fails the test instead of hanging it.
template <typename Done>
bool PumpUntil(Done done) {
    const QDeadlineTimer patience(30000);
    while (!done() && !patience.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QThread::yieldCurrentThread();
    }
    return done();
}

}  // namespace wib::testing
