// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>

#include "core/plane_memory.h"

namespace wib {

// Raised when a caller indexes a plane outside its bounds; the automation
// layer reports it as error 9.
class SubscriptError : public std::out_of_range {
  public:
    SubscriptError() : std::out_of_range("Subscript out of range") {}
};

// An owning, contiguous two-dimensional array with inclusive upper bounds
// (ubX, ubY): element (x, y) lies at y * (ubX + 1) + x. A document of width W
// and height H has planes with upper bounds (W, H), one spare column and row
// beyond the last pixel. An empty plane has upper bounds (-1, -1).
template <typename T>
class BasicPlane {
  public:
    BasicPlane() = default;
    // Throws std::bad_alloc when the memory cannot be had; bounds below -1 are
    // treated as -1.
    BasicPlane(int ubX, int ubY, T fill = T{});

    // A plane whose elements are left for the caller to write, every one of
    // them, before anything reads the plane (a copy arriving from elsewhere).
    static BasicPlane Uninitialized(int ubX, int ubY);
    // A plane that takes over `elements`, which must hold exactly
    // (ubX + 1) * (ubY + 1) of them (bytes received for it elsewhere).
    static BasicPlane Adopt(int ubX, int ubY, std::unique_ptr<T[]> elements);

    BasicPlane(const BasicPlane& other);
    BasicPlane& operator=(const BasicPlane& other);
    BasicPlane(BasicPlane&& other) noexcept;
    BasicPlane& operator=(BasicPlane&& other) noexcept;
    ~BasicPlane() = default;

    int ubX() const { return ubX_; }
    int ubY() const { return ubY_; }
    // Elements in one row and number of rows, spare column and row included.
    std::size_t stride() const { return static_cast<std::size_t>(ubX_ + 1); }
    std::size_t rows() const { return static_cast<std::size_t>(ubY_ + 1); }
    std::size_t count() const { return stride() * rows(); }
    std::size_t byteCount() const { return count() * sizeof(T); }
    bool empty() const { return count() == 0; }
    bool sameShape(const BasicPlane& other) const {
        return ubX_ == other.ubX_ && ubY_ == other.ubY_;
    }

    T* data() { return data_.get(); }
    const T* data() const { return data_.get(); }
    T* row(int y) { return data_.get() + static_cast<std::size_t>(y) * stride(); }
    const T* row(int y) const { return data_.get() + static_cast<std::size_t>(y) * stride(); }

    // Bounds-checked access; throws SubscriptError outside 0..ubX, 0..ubY.
    T& at(int x, int y) {
        check(x, y);
        return row(y)[x];
    }
    const T& at(int x, int y) const {
        check(x, y);
        return row(y)[x];
    }

    void fill(T value);

  private:
    void check(int x, int y) const {
        if (x < 0 || y < 0 || x > ubX_ || y > ubY_) {
            throw SubscriptError();
        }
    }

    // Memory for `count` elements, left for the caller to write.
    static std::unique_ptr<T[], PlaneRelease> Allocate(std::size_t count);

    int ubX_ = -1;
    int ubY_ = -1;
    std::unique_ptr<T[], PlaneRelease> data_;
};

using Plane = BasicPlane<std::uint8_t>;
using FloatPlane = BasicPlane<float>;

extern template class BasicPlane<std::uint8_t>;
extern template class BasicPlane<float>;

}  // namespace wib
