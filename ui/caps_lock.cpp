#include "ui/caps_lock.h"

#include <QGuiApplication>

// After Qt: the X headers define macros (Status, None, Bool) that Qt's own
// headers would trip over.
#include <X11/XKBlib.h>

namespace wib {

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

}  // namespace wib
