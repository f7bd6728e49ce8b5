// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>

#include "core/observer_list.h"
#include "ui/timeline_grid.h"

class QCheckBox;
class QToolButton;

namespace wib {

class CommandRegistry;
class FrameStore;

// The timeline, docked: the frames-by-layers grid with its loop and ping-pong
// toggles and the onion skin's switch. Every change it makes runs a command.
class TimelineForm : public QDockWidget {
    Q_OBJECT
  public:
    TimelineForm(FrameStore& store, const CommandRegistry& commands, QWidget* parent);

    TimelineGrid& grid() { return *grid_; }

  private:
    void showModes();
    void setModes();

    FrameStore& store_;
    TimelineRun run_;
    TimelineGrid* grid_;
    QCheckBox* loop_;
    QCheckBox* pingPong_;
    QToolButton* onion_;
    Subscription changed_;
    Subscription onionChanged_;
};

}  // namespace wib
