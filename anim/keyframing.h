// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace wib {

// A sparse set of keys, each a frame number and a vector of channel values,
// turned into a dense curve: one value per channel for every frame from 0 to
// a last frame, by linear or Catmull-Rom interpolation between the keys and
// optional smoothing. It owns its keys and curve and reads nothing else.
class Keyframing_Class {
  public:
    // -1 when a key is stored at `frame`, else 0.
    std::int16_t IsKeyframe(float frame) const;
    // -1: linear interpolation between keys; anything else: spline.
    void SetLinear(std::int16_t flag) { linear_ = flag; }
    // Above 0 the curve is smoothed after interpolation.
    void SetSmoothing(std::int32_t value) { smoothing_ = value; }
    // Stores a key at `frame`, replacing one already there. A frame that is
    // not a finite number is ignored.
    void AddKey(float frame, const std::vector<float>& values);
    void DeleteKey(float frame);
    void clear() { keys_.clear(); }
    std::int32_t Key_Count() const { return static_cast<std::int32_t>(keys_.size()); }

    // The curve at `frame` rounded to the nearest frame (halves to even) and
    // `channel`; 0 for a frame below 0 or above the last frame, a channel the
    // keys do not have, or when no curve has been made.
    float ReadCurve(float frame, std::int32_t channel) const;
    // Computes the curve for frames 0..lastFrame from the keys; does nothing
    // without keys or with a last frame below 0. The owner calls it again
    // after changing keys.
    void CreateCurve(int lastFrame);

  private:
    // A key item: the channel values followed by the key's frame.
    using KeyItem = std::vector<float>;

    int lastFrame_ = -1;  // -1 while no curve exists
    int channels_ = 0;
    std::vector<float> curve_;  // (frame, channel), frame fastest
    // In the order they were added, looked up by the text of their frame.
    std::vector<std::pair<std::string, KeyItem>> keys_;
    std::int16_t linear_ = 0;
    std::int32_t smoothing_ = 0;
};

}  // namespace wib
