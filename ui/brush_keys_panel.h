// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <array>
#include <map>
#include <string>

#include "anim/brush_keyframer.h"
#include "core/observer_list.h"
#include "core/param_value.h"

class QCheckBox;
class QComboBox;

namespace wib {

class CommandRegistry;
class FrameStore;

// The brush keyframer: keyframing on or off and, for the size, opacity,
// angle and colour, the curve over the frames with its keys, the kind of
// curve, and a button that keys the brush's value at the current frame.
// Every change runs a command.
class BrushKeysPanel : public QDockWidget {
    Q_OBJECT
  public:
    BrushKeysPanel(FrameStore& store, const CommandRegistry& commands, QWidget* parent);

  private:
    void showKeys();
    bool run(const std::string& id, const std::map<std::string, ParamValue>& values);

    FrameStore& store_;
    const CommandRegistry& commands_;
    QCheckBox* enabled_;
    std::array<QComboBox*, kBrushKeys.size()> kinds_{};
    std::array<QWidget*, kBrushKeys.size()> curves_{};
    Subscription changed_;
};

}  // namespace wib
