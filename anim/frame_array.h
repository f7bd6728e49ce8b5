// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace wib {

// One colour plane of every animation frame in one contiguous block: frame f
// starts f * frameBytes() bytes in, laid out exactly like a document plane, so
// that moving a frame in or out is one block copy.
class FrameArray {
  public:
    FrameArray() = default;
    FrameArray(FrameArray&& other) noexcept;
    FrameArray& operator=(FrameArray&& other) noexcept;
    ~FrameArray() = default;

    // `frames` frames of `frameBytes` bytes, every byte `fill`. Every page is written
    // now, so that storing into a frame later never pays a page fault.
    // Throws std::bad_alloc; the array is then empty.
    void allocate(std::size_t frameBytes, int frames, std::uint8_t fill);
    // Grows or shrinks to `frames` frames keeping the contents of the frames
    // both sizes have; added frames are not cleared. Growing throws
    // std::bad_alloc and keeps the old frames when the memory cannot be had;
    // shrinking never fails.
    void resize(int frames);
    void release();

    std::uint8_t* frame(int index) {
        return data_.get() + static_cast<std::size_t>(index) * frameBytes_;
    }
    const std::uint8_t* frame(int index) const {
        return data_.get() + static_cast<std::size_t>(index) * frameBytes_;
    }
    std::size_t frameBytes() const { return frameBytes_; }
    int frames() const { return frames_; }
    std::size_t byteCount() const { return frameBytes_ * static_cast<std::size_t>(frames_); }

  private:
    struct Free {
        void operator()(std::uint8_t* data) const { std::free(data); }
    };
    // malloc'd, so that resizing can use realloc: large blocks then grow and
    // shrink by remapping pages instead of copying every frame.
    std::unique_ptr<std::uint8_t, Free> data_;
    std::size_t frameBytes_ = 0;
    int frames_ = 0;
};

}  // namespace wib
