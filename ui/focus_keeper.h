// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDeadlineTimer>
#include <QObject>

#include "core/observer_list.h"

class QWidget;

namespace wib {

class PluginLauncher;

// Keeps the focus with the program's window when a plug-in is started with
// window style 4. The window manager decides about focus, so this is as far
// as the desktop allows: the window is activated again at the start, and
// once more if the plug-in's first window takes the activation away shortly
// after. Later the user may give the plug-in the focus as usual.
class FocusKeeper : public QObject {
  public:
    FocusKeeper(QWidget& window, PluginLauncher& launcher);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void keepFocus();
    void activate();

    QWidget& window_;
    QDeadlineTimer guard_;  // expired at first; while it runs, a lost activation is taken back once
    Subscription started_;
};

}  // namespace wib
