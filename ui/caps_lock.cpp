// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/caps_lock.h"

#ifdef WIB_HAVE_X11
#include <QGuiApplication>

// After Qt: the X headers define macros (Status, None, Bool) that Qt's own
// headers would trip over.
#include <X11/XKBlib.h>
#endif

namespace wib {

#ifdef WIB_HAVE_X11
bool CapsLockIsOn() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    if (x11 == nullptr || x11->display() == nullptr) {
        return false;
    }
    unsigned int indicators = 0;
    if (XkbGetIndicatorState(x11->display(), XkbUseCoreKbd, &indicators) != Success) {
        return false;
    }
    return (indicators & 1u) != 0;  // Caps Lock is the first indicator
}
#else
// Built without X11: there is no keyboard indicator to read.
bool CapsLockIsOn() {
    return false;
}
#endif

}  // namespace wib
