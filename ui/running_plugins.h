// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include "core/observer_list.h"

class QPushButton;
class QTableWidget;

namespace wib {

class PluginLauncher;

// Plug-ins > Running plug-ins: every plug-in the program started (name,
// process id, running or ended, exit status), kept up to date, with Stop for
// the selected one.
class RunningPlugins : public QDialog {
    Q_OBJECT
  public:
    explicit RunningPlugins(PluginLauncher& launcher, QWidget* parent = nullptr);

  private:
    void showChildren();
    void stopSelected();
    void updateStop();

    PluginLauncher& launcher_;
    QTableWidget* table_;
    QPushButton* stop_;
    Subscription subscription_;
};

}  // namespace wib
