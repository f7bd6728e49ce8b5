// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/frame_array.h"

#include <new>
#include <utility>

#include "pixel/blit.h"

namespace wib {

FrameArray::FrameArray(FrameArray&& other) noexcept
    : data_(std::move(other.data_)),
      frameBytes_(std::exchange(other.frameBytes_, 0)),
      frames_(std::exchange(other.frames_, 0)) {}

FrameArray& FrameArray::operator=(FrameArray&& other) noexcept {
    data_ = std::move(other.data_);
    frameBytes_ = std::exchange(other.frameBytes_, 0);
    frames_ = std::exchange(other.frames_, 0);
    return *this;
}

void FrameArray::allocate(std::size_t frameBytes, int frames, std::uint8_t fill) {
    release();
    if (frames <= 0 || frameBytes == 0) {
        return;
    }
    const std::size_t total = frameBytes * static_cast<std::size_t>(frames);
    auto* data = static_cast<std::uint8_t*>(std::malloc(total));
    if (data == nullptr) {
        throw std::bad_alloc();
    }
    BlockFill(data, total, fill);
    data_.reset(data);
    frameBytes_ = frameBytes;
    frames_ = frames;
}

void FrameArray::resize(int frames) {
    if (frames <= 0 || frameBytes_ == 0) {
        release();
        return;
    }
    const std::size_t total = frameBytes_ * static_cast<std::size_t>(frames);
    auto* data = static_cast<std::uint8_t*>(std::realloc(data_.get(), total));
    if (data == nullptr) {
        if (frames < frames_) {
            frames_ = frames;  // the larger block serves as well
            return;
        }
        throw std::bad_alloc();
    }
    static_cast<void>(data_.release());
    data_.reset(data);
    frames_ = frames;
}

void FrameArray::release() {
    data_.reset();
    frameBytes_ = 0;
    frames_ = 0;
}

}  // namespace wib
