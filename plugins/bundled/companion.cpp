// SPDX-License-Identifier: GPL-3.0-or-later
#include "companion.h"

#include <QCoreApplication>
#include <QWidget>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>

#include "wibbleton_client.h"

namespace companion {

namespace {

// How often the window looks whether the connection has closed.
constexpr int kPollMs = 250;

}  // namespace

struct ProgramLink::State {
    wibbleton::Wibbleton_Class connection;
    std::atomic<bool> closed = false;
};

ProgramLink::ProgramLink() : state_(std::make_shared<State>()) {
    // Nothing is asked for, so the wait for a message ends only when the
    // connection does. The client blocks, hence a thread of its own; it is
    // left to the end of the process, which closes the connection, and it
    // shares its state so that neither side outlives what it uses.
    std::thread([state = state_] {
        try {
            for (;;) {
                state->connection.waitEvent();
            }
        } catch (const std::exception&) {
            state->closed = true;
        }
    }).detach();
    QObject::connect(&poll_, &QTimer::timeout, [state = state_] {
        if (state->closed) {
            QCoreApplication::quit();
        }
    });
    poll_.start(kPollMs);
}

void ShowWithProgramsStyle(QWidget& window) {
    const char* style = std::getenv("WIBBLETON_WINDOW_STYLE");
    if (style != nullptr && std::string(style) == "4") {
        window.setAttribute(Qt::WA_ShowWithoutActivating);
    }
    window.show();
}

}  // namespace companion
