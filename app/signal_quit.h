// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// Makes SIGTERM and SIGINT end the Qt event loop, so that the shut-down
// operations run as after closing the window.
void QuitOnTerminationSignals();

}  // namespace wib
