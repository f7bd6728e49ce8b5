// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "paint/brush_options.h"

namespace wib {

enum class ControlKind {
    Slider,  // an integer in [minimum, maximum]
    Toggle,  // 1 on, 0 off
    Group,   // exclusive buttons: button i down means value firstValue + i
};

// One control of the brush panel or the paper panel, bound to the options
// model. The panels are built from this table, the settings record is packed
// and unpacked from it, and plug-ins reach the controls by these names.
struct BrushControl {
    int field;                       // place in the settings record
    const char* panel;               // "BrushOptions" or "Paper_Panel"
    std::vector<const char*> names;  // object name; a group's buttons in order
    ControlKind kind;
    int minimum;
    int maximum;
    int firstValue;  // groups: the value of the first button
    const char* caption;
    int (*get)(const BrushOptionsModel&);
    void (*set)(BrushOptionsModel&, int);
    std::vector<const char*> buttonCaptions = {};  // groups: the text on each button
    const char* (*valueName)(int) = nullptr;       // sliders whose values have names
};

// Every control, in record order.
const std::vector<BrushControl>& BrushControls();

// The control with this object name on this panel (a group's button names it
// too), or null.
const BrushControl* FindBrushControl(const char* panel, const char* name);

// Brings a value the record or a plug-in gives into the control's range.
// Groups take only a value one of their buttons stands for (the first value
// less one meaning none down, where a group allows that); anything else
// leaves the group as it is, and false comes back.
bool SetBrushControl(BrushOptionsModel& options, const BrushControl& control, int value);

inline constexpr int kBrushSettingsFields = 44;
inline constexpr int kBrushSettingsBytes = kBrushSettingsFields * 4;

// The record: the controls in table order, 32-bit little-endian integers.
using BrushSettingsRecord = std::array<std::int32_t, kBrushSettingsFields>;
BrushSettingsRecord PackBrushSettings(const BrushOptionsModel& options);
// Applies a record as a user setting each control in turn would. The live
// preview toggle is cleared first, so the preview is drawn once at the end.
// A group's field presses the button it names; one that names no button
// (field 13 = 0) leaves the group as it was.
void UnpackBrushSettings(const BrushSettingsRecord& record, BrushOptionsModel& options);

}  // namespace wib
