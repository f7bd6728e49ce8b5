#pragma once

namespace wib {

// Whether Caps Lock is on. Read from the X server's keyboard indicators;
// false on platforms without them (the offscreen one of headless mode).
bool CapsLockIsOn();

}  // namespace wib
