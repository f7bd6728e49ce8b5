// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "core/brush_image.h"

namespace wib {

enum class BrushChannel { Red, Green, Blue, Alpha };

// A sequence of brush images of one size that painting steps through, one
// frame per dab, back to the first after the last. While it is on it takes
// the place of the image brush and of the built-in brush.
class AnimatedBrush {
  public:
    int frameCount() const { return static_cast<int>(frames_.size()); }
    bool empty() const { return frames_.empty(); }
    int width() const { return empty() ? 0 : static_cast<int>(frames_.front().mask().stride()); }
    int height() const { return empty() ? 0 : static_cast<int>(frames_.front().mask().rows()); }

    // Whether painting uses it (on only while it has frames).
    bool active() const { return active_; }
    void setActive(bool on) { active_ = on && !empty(); }

    // `count` frames of width x height, black and fully transparent; the
    // first becomes current. Throws std::bad_alloc and then leaves the brush
    // as it was.
    void create(int count, int width, int height);
    // Frames made elsewhere (all of one size, at least one); the first becomes current.
    void assign(std::vector<BrushImage> frames);

    // The frame the next dab takes.
    int current() const { return current_; }
    // Throws SubscriptError outside 0..frameCount() - 1.
    void setCurrent(int index);
    const BrushImage& currentFrame() const {
        return frames_.at(static_cast<std::size_t>(current_));
    }
    // Steps to the next frame, after the last back to the first.
    void advance();

    // One frame; throws SubscriptError outside 0..frameCount() - 1.
    const BrushImage& frame(int index) const;
    // A copy of one channel of a frame.
    Plane plane(BrushChannel channel, int index) const;
    // Replaces one channel of a frame; false, changing nothing, when the
    // plane is not of the brush's size. Throws SubscriptError outside the frames.
    bool setPlane(BrushChannel channel, int index, Plane&& plane);
    // One value of the current frame; throws SubscriptError outside it.
    std::uint8_t value(BrushChannel channel, int x, int y) const;
    void setValue(BrushChannel channel, int x, int y, std::uint8_t value);

  private:
    BrushImage& frameAt(int index);

    std::vector<BrushImage> frames_;
    int current_ = 0;
    bool active_ = false;
};

}  // namespace wib
