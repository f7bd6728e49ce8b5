// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/brush_keyframer.h"

#include <algorithm>
#include <string>

namespace wib {

const char* BrushKeyName(BrushKey key) {
    switch (key) {
        case BrushKey::Size:
            return "size";
        case BrushKey::Opacity:
            return "opacity";
        case BrushKey::Angle:
            return "angle";
        case BrushKey::Colour:
            return "colour";
    }
    return "";
}

std::optional<BrushKey> BrushKeyNamed(const std::string& name) {
    for (BrushKey key : kBrushKeys) {
        if (name == BrushKeyName(key)) {
            return key;
        }
    }
    return std::nullopt;
}

int BrushKeyChannels(BrushKey key) {
    return key == BrushKey::Colour ? 3 : 1;
}

void BrushKeyframer::addKey(BrushKey key, int frame, const std::vector<float>& values) {
    if (frame < 0 || frame > kMaxBrushKeyFrame ||
        static_cast<int>(values.size()) != BrushKeyChannels(key)) {
        return;
    }
    Track& t = track(key);
    t.keys[frame] = values;
    rebuild(t);
}

void BrushKeyframer::deleteKey(BrushKey key, int frame) {
    Track& t = track(key);
    if (t.keys.erase(frame) > 0) {
        rebuild(t);
    }
}

void BrushKeyframer::setSpline(BrushKey key, bool spline) {
    Track& t = track(key);
    t.spline = spline;
    rebuild(t);
}

void BrushKeyframer::clear() {
    for (Track& t : tracks_) {
        t.keys.clear();
        t.spline = false;
        rebuild(t);
    }
}

void BrushKeyframer::rebuild(Track& track) {
    track.curve = Keyframing_Class();
    track.curve.SetLinear(track.spline ? 0 : -1);
    for (const auto& [frame, values] : track.keys) {
        track.curve.AddKey(static_cast<float>(frame), values);
    }
    if (!track.keys.empty()) {
        track.curve.CreateCurve(track.keys.rbegin()->first);
    }
}

std::optional<std::vector<float>> BrushKeyframer::valuesAt(BrushKey key, int frame) const {
    const Track& t = track(key);
    if (t.keys.empty()) {
        return std::nullopt;
    }
    const int at = std::clamp(frame, 0, t.keys.rbegin()->first);
    std::vector<float> values;
    for (int c = 0; c < BrushKeyChannels(key); ++c) {
        values.push_back(t.curve.ReadCurve(static_cast<float>(at), c));
    }
    return values;
}

}  // namespace wib
