// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/animated_brush.h"

#include <utility>

namespace wib {

namespace {

// Red, green or blue of a brush image; alpha goes through the image's own
// setters, which keep its mask.
template <typename Image>
auto& ColourPlane(Image& image, BrushChannel channel) {
    return channel == BrushChannel::Red     ? image.R
           : channel == BrushChannel::Green ? image.G
                                            : image.B;
}

}  // namespace

void AnimatedBrush::create(int count, int width, int height) {
    std::vector<BrushImage> frames(static_cast<std::size_t>(count));
    for (BrushImage& frame : frames) {
        frame.makeBlank(width, height);
    }
    assign(std::move(frames));
}

void AnimatedBrush::assign(std::vector<BrushImage> frames) {
    frames_ = std::move(frames);
    current_ = 0;
    setActive(active_);
}

void AnimatedBrush::setCurrent(int index) {
    frame(index);
    current_ = index;
}

void AnimatedBrush::advance() {
    if (!empty()) {
        current_ = (current_ + 1) % frameCount();
    }
}

const BrushImage& AnimatedBrush::frame(int index) const {
    if (index < 0 || index >= frameCount()) {
        throw SubscriptError();
    }
    return frames_[static_cast<std::size_t>(index)];
}

BrushImage& AnimatedBrush::frameAt(int index) {
    return const_cast<BrushImage&>(std::as_const(*this).frame(index));
}

Plane AnimatedBrush::plane(BrushChannel channel, int index) const {
    const BrushImage& image = frame(index);
    return channel == BrushChannel::Alpha ? image.A() : ColourPlane(image, channel);
}

bool AnimatedBrush::setPlane(BrushChannel channel, int index, Plane&& plane) {
    BrushImage& image = frameAt(index);
    if (!plane.sameShape(image.A())) {
        return false;
    }
    if (channel == BrushChannel::Alpha) {
        image.setAlpha(std::move(plane));
    } else {
        ColourPlane(image, channel) = std::move(plane);
    }
    return true;
}

std::uint8_t AnimatedBrush::value(BrushChannel channel, int x, int y) const {
    const BrushImage& image = frame(current_);
    return channel == BrushChannel::Alpha ? image.A().at(x, y)
                                          : ColourPlane(image, channel).at(x, y);
}

void AnimatedBrush::setValue(BrushChannel channel, int x, int y, std::uint8_t value) {
    BrushImage& image = frameAt(current_);
    if (channel == BrushChannel::Alpha) {
        image.setAlpha(x, y, value);
    } else {
        ColourPlane(image, channel).at(x, y) = value;
    }
}

}  // namespace wib
