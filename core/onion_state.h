// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "core/packed_colour.h"

namespace wib {

class Preferences;

inline constexpr int kMaxOnionFrames = 5;

// Onion skin and light table: which other frames the canvas shows over or
// beneath the current one. A view setting only; the pixels never change.
struct OnionState {
    bool shown = false;
    int before = 2;     // frames before the current one, 0..kMaxOnionFrames
    int after = 2;      // frames after it
    int opacity = 128;  // of the nearest neighbour; farther ones fade
    PackedColour tintBefore{230, 40, 40};
    PackedColour tintAfter{40, 90, 230};
    // Light table: frames the user pinned, shown faded whatever the onion
    // skin's setting.
    std::vector<int> pinned;
};

enum class OnionSide { Pinned, Before, After };

// One frame the canvas lays over the current picture.
struct OnionFrame {
    int frame;
    OnionSide side;
    int opacity;  // 0..255

    friend bool operator==(const OnionFrame&, const OnionFrame&) = default;
};

// The frames to show around `current` of `frameCount`, bottom first: the
// pinned frames, then the neighbours from the farthest in. Neighbours beyond
// either end of the animation are left out, never wrapped; the current frame
// itself and frames outside the animation are never shown. Empty while the
// onion skin is off and nothing is pinned, or with fewer than two frames.
std::vector<OnionFrame> OnionFrames(const OnionState& state, int current, int frameCount);

// The opacity of the neighbour `distance` frames away on a side showing
// `count` frames: the full opacity next door, falling off evenly.
int OnionOpacity(int opacity, int distance, int count);

// Pins the frame when it is not pinned, else unpins it.
void TogglePinned(OnionState& state, int frame);

// The settings as the preference store keeps them ("Onion" section); the
// pinned frames belong to the animation and are not kept.
OnionState LoadOnionState(const Preferences& preferences);
void SaveOnionState(const OnionState& state, Preferences& preferences);

}  // namespace wib
