// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/onion_state.h"

#include <algorithm>
#include <string>

#include "core/host/preferences.h"

namespace wib {

namespace {

constexpr const char* kSection = "Onion";

PackedColour StoredColour(const Preferences& preferences, const char* key, PackedColour fallback) {
    return PackedColour::fromPacked(preferences.integer(kSection, key, fallback.packed()))
        .value_or(fallback);
}

int StoredCount(const Preferences& preferences, const char* key, int fallback, int maximum) {
    return static_cast<int>(
        std::clamp<long long>(preferences.integer(kSection, key, fallback), 0, maximum));
}

}  // namespace

int OnionOpacity(int opacity, int distance, int count) {
    if (count <= 0 || distance < 1 || distance > count) {
        return 0;
    }
    return (opacity * (count - distance + 1) + count / 2) / count;
}

std::vector<OnionFrame> OnionFrames(const OnionState& state, int current, int frameCount) {
    std::vector<OnionFrame> frames;
    if (frameCount < 2) {
        return frames;
    }
    const auto inside = [&](int frame) { return frame >= 0 && frame < frameCount; };
    const int before = state.shown ? std::clamp(state.before, 0, kMaxOnionFrames) : 0;
    const int after = state.shown ? std::clamp(state.after, 0, kMaxOnionFrames) : 0;
    const auto neighbour = [&](int frame) {
        return frame != current && frame >= current - before && frame <= current + after;
    };
    // A pinned frame that is also a neighbour shows once, tinted.
    const int pinnedOpacity = (state.opacity + 1) / 2;
    for (const int frame : state.pinned) {
        if (inside(frame) && frame != current && !neighbour(frame)) {
            frames.push_back({frame, OnionSide::Pinned, pinnedOpacity});
        }
    }
    for (int distance = kMaxOnionFrames; distance >= 1; --distance) {
        if (distance <= before && inside(current - distance)) {
            frames.push_back({current - distance, OnionSide::Before,
                              OnionOpacity(state.opacity, distance, before)});
        }
        if (distance <= after && inside(current + distance)) {
            frames.push_back({current + distance, OnionSide::After,
                              OnionOpacity(state.opacity, distance, after)});
        }
    }
    return frames;
}

void TogglePinned(OnionState& state, int frame) {
    const auto found = std::find(state.pinned.begin(), state.pinned.end(), frame);
    if (found == state.pinned.end()) {
        state.pinned.push_back(frame);
        std::sort(state.pinned.begin(), state.pinned.end());
    } else {
        state.pinned.erase(found);
    }
}

OnionState LoadOnionState(const Preferences& preferences) {
    OnionState state;
    state.shown = preferences.integer(kSection, "Shown", 0) != 0;
    state.before = StoredCount(preferences, "Before", state.before, kMaxOnionFrames);
    state.after = StoredCount(preferences, "After", state.after, kMaxOnionFrames);
    state.opacity = StoredCount(preferences, "Opacity", state.opacity, 255);
    state.tintBefore = StoredColour(preferences, "TintBefore", state.tintBefore);
    state.tintAfter = StoredColour(preferences, "TintAfter", state.tintAfter);
    return state;
}

void SaveOnionState(const OnionState& state, Preferences& preferences) {
    preferences.setValue(kSection, "Shown", state.shown ? "1" : "0");
    preferences.setValue(kSection, "Before", std::to_string(state.before));
    preferences.setValue(kSection, "After", std::to_string(state.after));
    preferences.setValue(kSection, "Opacity", std::to_string(state.opacity));
    preferences.setValue(kSection, "TintBefore", std::to_string(state.tintBefore.packed()));
    preferences.setValue(kSection, "TintAfter", std::to_string(state.tintAfter.packed()));
}

}  // namespace wib
