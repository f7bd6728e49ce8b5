// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// Whether Caps Lock is on. Read from the X server's keyboard indicators;
// false on platforms without them (the offscreen one of headless mode) and
// in a build without X11.
bool CapsLockIsOn();

}  // namespace wib
