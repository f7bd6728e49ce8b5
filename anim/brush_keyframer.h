// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "anim/keyframing.h"

namespace wib {

// Keys go on frames 0..kMaxBrushKeyFrame: each curve holds a value per frame
// up to its last key.
inline constexpr int kMaxBrushKeyFrame = 1000000;

// The brush parameters that can be keyed over frames.
enum class BrushKey { Size, Opacity, Angle, Colour };
inline constexpr std::array<BrushKey, 4> kBrushKeys{BrushKey::Size, BrushKey::Opacity,
                                                    BrushKey::Angle, BrushKey::Colour};

// "size", "opacity", "angle", "colour": the names tracks are saved under.
const char* BrushKeyName(BrushKey key);
std::optional<BrushKey> BrushKeyNamed(const std::string& name);
// Values a key of the parameter holds: 3 for the colour (red, green, blue).
int BrushKeyChannels(BrushKey key);

// Keys for the brush's size, opacity, angle and colour over the frames, one
// curve each (linear or Catmull-Rom). A parameter without keys is left to the
// brush panel; before its first key and after its last the curve holds.
class BrushKeyframer {
  public:
    using Keys = std::map<int, std::vector<float>>;

    bool enabled() const { return enabled_; }
    void setEnabled(bool on) { enabled_ = on; }

    // Replaces any key of the parameter at `frame` (ignored outside
    // 0..kMaxBrushKeyFrame, or without a value per channel).
    void addKey(BrushKey key, int frame, const std::vector<float>& values);
    void deleteKey(BrushKey key, int frame);
    const Keys& keys(BrushKey key) const { return track(key).keys; }
    bool spline(BrushKey key) const { return track(key).spline; }
    void setSpline(BrushKey key, bool spline);
    void clear();

    // The parameter's values at `frame`; nothing without keys.
    std::optional<std::vector<float>> valuesAt(BrushKey key, int frame) const;

  private:
    struct Track {
        Keys keys;
        bool spline = false;
        Keyframing_Class curve;
    };
    Track& track(BrushKey key) { return tracks_[static_cast<std::size_t>(key)]; }
    const Track& track(BrushKey key) const { return tracks_[static_cast<std::size_t>(key)]; }
    // The curve made again from the keys, up to the last key.
    static void rebuild(Track& track);

    std::array<Track, 4> tracks_;
    bool enabled_ = false;
};

}  // namespace wib
