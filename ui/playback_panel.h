// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <functional>
#include <string>
#include <vector>

#include "anim/playback_display.h"

class QLabel;
class QSlider;
class QToolButton;

namespace wib {

class CommandRegistry;
class FrameStore;
class Frame_Rate;

// The playback controls: first, back, play, stop, forward and last buttons,
// the frame slider, the frame counter and the frame rate. It shows what the
// frame store holds and runs the playback loop from the event loop. Closing
// the main window stops playback.
class PlaybackPanel : public QDockWidget, public PlaybackDisplay {
    Q_OBJECT
  public:
    // `run` runs a command as its menu item does.
    PlaybackPanel(FrameStore& store, const CommandRegistry& commands,
                  std::function<void(const std::string&)> run, QWidget* parent);
    ~PlaybackPanel() override;

    // PlaybackDisplay
    void animationChanged() override;
    void showControls() override;
    void startLoopSoon(std::function<void()> loop) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    FrameStore& store_;
    QSlider* slider_;
    QLabel* counter_;
    Frame_Rate* rate_;
    std::vector<QToolButton*> stepButtons_;
    QToolButton* play_ = nullptr;
};

}  // namespace wib
