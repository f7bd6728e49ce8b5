// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/signal_quit.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <csignal>

namespace wib {

namespace {

int signalPipe[2] = {-1, -1};
bool requested = false;

// Only async-signal-safe work here: one byte into the pipe wakes the loop.
void OnSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

}  // namespace

void QuitOnTerminationSignals(std::function<void()> beforeQuit) {
    std::signal(SIGXFSZ, SIG_IGN);
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) {
        return;
    }
    auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp,
                     [beforeQuit = std::move(beforeQuit)] {
                         char byte = 0;
                         [[maybe_unused]] const auto got = ::read(signalPipe[0], &byte, 1);
                         requested = true;
                         if (beforeQuit) {
                             beforeQuit();
                         }
                         QCoreApplication::quit();
                     });
    struct sigaction action {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGHUP, &action, nullptr);
}

bool TerminationRequested() {
    return requested;
}

}  // namespace wib
