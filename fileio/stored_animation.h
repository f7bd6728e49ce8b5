// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/layered_picture.h"

namespace wib {

// How a keyframe track is interpolated between its keys.
enum class KeyInterpolation : std::uint8_t { Linear, CatmullRom };

// One key of a track: the frame it sits on and a value per channel.
struct TrackKey {
    float frame = 0;
    std::vector<float> values;

    bool operator==(const TrackKey&) const = default;
};

// A keyframed parameter (the brush's size, opacity, angle or colour), as
// plain data.
struct KeyframeTrack {
    std::string name;
    KeyInterpolation interpolation = KeyInterpolation::Linear;
    std::vector<TrackKey> keys;

    bool operator==(const KeyframeTrack&) const = default;
};

// Everything a stored animation file holds: the layered frames, how fast they
// play and how long each is held, the animation's name and its keyframes.
struct StoredAnimation {
    LayeredPicture picture;
    // Frames a second, above 0.
    double frameRate = 24;
    // Ticks of the frame rate each frame is shown for, one per frame, each 1
    // or more.
    std::vector<std::int32_t> exposures;
    std::string name;
    std::vector<KeyframeTrack> tracks;
};

}  // namespace wib
