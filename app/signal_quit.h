// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace wib {

// Makes SIGTERM, SIGINT and SIGHUP end the Qt event loop, so that the
// shut-down operations run as after closing the window; `beforeQuit` runs
// first, on the interface thread. SIGXFSZ is ignored, so that writing past
// a file-size limit is a failed write, not the end of the program.
void QuitOnTerminationSignals(std::function<void()> beforeQuit);

// Whether a termination signal has been taken. Quitting does nothing before
// the event loop runs, so a signal taken while start-up still pumps events
// must be acted on by whoever would start the loop.
bool TerminationRequested();

}  // namespace wib
