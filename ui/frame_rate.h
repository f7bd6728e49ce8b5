// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <string>

class QLineEdit;

namespace wib {

class FrameStore;

// The frame-rate field of the playback controls. Every change of its text,
// typed or set by a plug-in, goes to the frame store, which recomputes the
// frame delay from it.
class Frame_Rate : public QWidget {
    Q_OBJECT
  public:
    Frame_Rate(FrameStore& store, QWidget* parent = nullptr);
    // Shows the store's rate, without running the change handler again.
    void showRate(const std::string& text);

  private:
    QLineEdit* field_;
};

}  // namespace wib
