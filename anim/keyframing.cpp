// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/keyframing.h"
#include "pixel/rounding.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <new>
#include <stdexcept>

namespace wib {

namespace {

constexpr int kSmoothingPasses = 21;

// The text a key is kept under: the shortest that reads back as the same
// frame, with -0 and 0 one frame.
std::string FrameText(float frame) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, frame == 0 ? 0.0f : frame);
    return std::string(buffer, result.ptr);
}

float KeyFrame(const std::vector<float>& item) {
    return item.back();
}

// A key's value of one channel; 0 for a channel it does not have.
float KeyValue(const std::vector<float>& item, int channel) {
    return static_cast<std::size_t>(channel) + 1 < item.size() ? item[channel] : 0.0f;
}

// The Catmull-Rom segment from p1 (u = 0) to p2 (u = 1).
float Spline(float p0, float p1, float p2, float p3, float u) {
    return 0.5f * ((3 * p1 - p0 - 3 * p2 + p3) * u * u * u +
                   (2 * p0 - 5 * p1 + 4 * p2 - p3) * u * u + (p2 - p0) * u + 2 * p1);
}

// Walks t = 0, 1, 2, ... while t <= span, calling write(frame, t) for the
// frame start + t rounded (halves to even) and clamped to 0..lastFrame. A
// write that lands clamped on frame 0 or lastFrame is overwritten by the next
// one landing there, so the walk starts at the last t below frame 0 and, once
// it reaches lastFrame, goes straight to its final t; the curve comes out the
// same and far keys cost no more than near ones.
template <typename Write>
void WalkSegment(float start, float span, int lastFrame, Write write) {
    const double lastT = std::floor(span);
    double t = std::clamp(std::floor(-static_cast<double>(start)) - 2.0, 0.0, lastT);
    for (int steps = 0; t <= lastT && steps <= lastFrame + 4; ++steps, t += 1.0) {
        const double target = RoundHalfEvenValue(static_cast<float>(t) + start);
        if (target >= lastFrame) {
            write(lastFrame, static_cast<float>(lastT));
            return;
        }
        write(target < 0 ? 0 : static_cast<int>(target), static_cast<float>(t));
    }
}

}  // namespace

std::int16_t Keyframing_Class::IsKeyframe(float frame) const {
    const std::string text = FrameText(frame);
    return std::any_of(keys_.begin(), keys_.end(),
                       [&](const auto& key) { return key.first == text; })
               ? -1
               : 0;
}

void Keyframing_Class::AddKey(float frame, const std::vector<float>& values) {
    if (!std::isfinite(frame)) {
        return;
    }
    DeleteKey(frame);
    KeyItem item = values;
    item.push_back(frame);
    keys_.emplace_back(FrameText(frame), std::move(item));
}

void Keyframing_Class::DeleteKey(float frame) {
    const std::string text = FrameText(frame);
    std::erase_if(keys_, [&](const auto& key) { return key.first == text; });
}

float Keyframing_Class::ReadCurve(float frame, std::int32_t channel) const {
    if (lastFrame_ < 0 || !(frame >= 0) || frame > static_cast<float>(lastFrame_) || channel < 0 ||
        channel >= channels_) {
        return 0;
    }
    const auto index = static_cast<std::size_t>(RoundHalfEvenValue(frame));
    return curve_[static_cast<std::size_t>(channel) * (static_cast<std::size_t>(lastFrame_) + 1) +
                  index];
}

void Keyframing_Class::CreateCurve(int lastFrame) {
    if (keys_.empty() || lastFrame < 0) {
        return;
    }
    const int channels = static_cast<int>(keys_.front().second.size()) - 1;
    const std::size_t frames = static_cast<std::size_t>(lastFrame) + 1;
    std::vector<float> curve;
    try {
        curve.assign(frames * static_cast<std::size_t>(channels), 0.0f);
    } catch (const std::bad_alloc&) {
        return;
    } catch (const std::length_error&) {
        return;
    }
    auto at = [&](int frame, int channel) -> float& {
        return curve[static_cast<std::size_t>(channel) * frames + static_cast<std::size_t>(frame)];
    };

    // Equal frames keep the order they were added in.
    std::vector<const KeyItem*> sorted;
    for (const auto& key : keys_) {
        sorted.push_back(&key.second);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const KeyItem* a, const KeyItem* b) {
        return KeyFrame(*a) < KeyFrame(*b);
    });
    const int count = static_cast<int>(sorted.size());
    auto key = [&](int position) -> const KeyItem& {
        return *sorted[static_cast<std::size_t>(std::clamp(position, 0, count - 1))];
    };

    const float firstFrame = KeyFrame(key(0));
    for (int frame = 0; frame <= lastFrame && static_cast<float>(frame) <= firstFrame; ++frame) {
        for (int c = 0; c < channels; ++c) {
            at(frame, c) = KeyValue(key(0), c);
        }
    }
    for (int i = 0; i < count; ++i) {
        const KeyItem& p0 = key(i - 1);
        const KeyItem& p1 = key(i);
        const KeyItem& p2 = key(i + 1);
        const KeyItem& p3 = key(i + 2);
        const float start = KeyFrame(p1);
        const float span = KeyFrame(p2) - start;
        for (int c = 0; c < channels; ++c) {
            const float v0 = KeyValue(p0, c);
            const float v1 = KeyValue(p1, c);
            const float v2 = KeyValue(p2, c);
            const float v3 = KeyValue(p3, c);
            WalkSegment(start, span, lastFrame, [&](int frame, float t) {
                const float u = span == 0 ? 0.0f : t * (1.0f / span);
                at(frame, c) = linear_ == -1 ? v1 + (v2 - v1) * u : Spline(v0, v1, v2, v3, u);
            });
        }
    }
    const float lastKey = KeyFrame(key(count - 1));
    for (int frame = lastFrame; frame >= 0 && static_cast<float>(frame) >= lastKey; --frame) {
        for (int c = 0; c < channels; ++c) {
            at(frame, c) = KeyValue(key(count - 1), c);
        }
    }

    if (smoothing_ > 0) {
        std::vector<float> smoothed(curve.size());
        for (int pass = 0; pass < kSmoothingPasses; ++pass) {
            for (int c = 0; c < channels; ++c) {
                const float* row = &at(0, c);
                float* out = smoothed.data() + static_cast<std::size_t>(c) * frames;
                for (int f = 0; f <= lastFrame; ++f) {
                    const float before = row[std::max(f - 1, 0)];
                    const float after = row[std::min(f + 1, lastFrame)];
                    out[f] = (before + row[f] + after) / 3.0f;
                }
            }
            curve.swap(smoothed);
        }
    }
    curve_ = std::move(curve);
    lastFrame_ = lastFrame;
    channels_ = channels;
}

}  // namespace wib
