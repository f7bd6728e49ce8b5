// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/focus_keeper.h"

#include <QEvent>
#include <QTimer>
#include <QWidget>

#include "plugins/plugin_launcher.h"

namespace wib {

namespace {

// How long after a start the plug-in's first window may still appear and take
// the activation: enough for a plug-in to connect and show its window.
constexpr int kGuardMs = 3000;

}  // namespace

FocusKeeper::FocusKeeper(QWidget& window, PluginLauncher& launcher)
    : QObject(&window), window_(window) {
    window_.installEventFilter(this);
    started_ = launcher.started.subscribe([this](WindowStyle style) {
        if (style == WindowStyle::KeepsProgramFocus) {
            keepFocus();
        }
    });
}

void FocusKeeper::keepFocus() {
    if (!window_.isVisible()) {
        return;
    }
    guard_.setRemainingTime(kGuardMs);
    activate();
}

// Activation only: raising the window too would bury the plug-in's new
// window under it, where the user cannot see it appear.
void FocusKeeper::activate() {
    window_.activateWindow();
}

bool FocusKeeper::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::WindowDeactivate && !guard_.hasExpired()) {
        guard_.setRemainingTime(0);
        // After the deactivation is done, or the window manager's focus
        // change would follow ours.
        QTimer::singleShot(0, this, [this] { activate(); });
    }
    return false;
}

}  // namespace wib
