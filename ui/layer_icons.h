// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>

namespace wib {

// Drawn icons for the layers panel's toggles, with a full "on" state (the
// layer shown, the layer locked) and a faint "off" one, so that a checkable
// button shows its state at a glance.
QIcon VisibilityIcon();
QIcon LockIcon();

}  // namespace wib
