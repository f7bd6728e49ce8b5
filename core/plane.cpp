// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/plane.h"

#include <algorithm>

#include "pixel/blit.h"

namespace wib {

namespace {

template <typename T>
void CopyElements(const T* source, T* destination, std::size_t count) {
    BlockCopy(reinterpret_cast<const std::uint8_t*>(source),
              reinterpret_cast<std::uint8_t*>(destination), count * sizeof(T));
}

}  // namespace

template <typename T>
std::unique_ptr<T[], PlaneRelease> BasicPlane<T>::Allocate(std::size_t count) {
    const std::size_t mapped = kMapLargePlanes ? PlaneMappingSize(count * sizeof(T)) : 0;
    if (mapped == 0) {
        return std::unique_ptr<T[], PlaneRelease>(new T[count]);
    }
    return std::unique_ptr<T[], PlaneRelease>(static_cast<T*>(MapPlaneMemory(mapped)),
                                              PlaneRelease{mapped});
}

template <typename T>
BasicPlane<T>::BasicPlane(int ubX, int ubY, T fill)
    : ubX_(std::max(ubX, -1)), ubY_(std::max(ubY, -1)) {
    if (ubX_ < 0 || ubY_ < 0) {
        ubX_ = ubY_ = -1;
        return;
    }
    data_ = Allocate(count());
    this->fill(fill);
}

template <typename T>
BasicPlane<T> BasicPlane<T>::Uninitialized(int ubX, int ubY) {
    BasicPlane plane;
    if (ubX < 0 || ubY < 0) {
        return plane;
    }
    plane.ubX_ = ubX;
    plane.ubY_ = ubY;
    plane.data_ = Allocate(plane.count());
    return plane;
}

template <typename T>
BasicPlane<T> BasicPlane<T>::Adopt(int ubX, int ubY, std::unique_ptr<T[]> elements) {
    BasicPlane plane;
    if (ubX < 0 || ubY < 0) {
        return plane;
    }
    plane.ubX_ = ubX;
    plane.ubY_ = ubY;
    plane.data_ = std::unique_ptr<T[], PlaneRelease>(elements.release());
    return plane;
}

template <typename T>
BasicPlane<T>::BasicPlane(const BasicPlane& other) : ubX_(other.ubX_), ubY_(other.ubY_) {
    if (other.data_) {
        data_ = Allocate(count());
        CopyElements(other.data(), data(), count());
    }
}

template <typename T>
BasicPlane<T>& BasicPlane<T>::operator=(const BasicPlane& other) {
    if (this != &other) {
        BasicPlane copy(other);
        *this = std::move(copy);
    }
    return *this;
}

template <typename T>
BasicPlane<T>::BasicPlane(BasicPlane&& other) noexcept
    : ubX_(other.ubX_), ubY_(other.ubY_), data_(std::move(other.data_)) {
    other.ubX_ = other.ubY_ = -1;
}

template <typename T>
BasicPlane<T>& BasicPlane<T>::operator=(BasicPlane&& other) noexcept {
    ubX_ = other.ubX_;
    ubY_ = other.ubY_;
    data_ = std::move(other.data_);
    other.ubX_ = other.ubY_ = -1;
    return *this;
}

template <typename T>
void BasicPlane<T>::fill(T value) {
    if constexpr (sizeof(T) == 1) {
        BlockFill(reinterpret_cast<std::uint8_t*>(data()), count(),
                  static_cast<std::uint8_t>(value));
    } else {
        std::fill_n(data(), count(), value);
    }
}

template class BasicPlane<std::uint8_t>;
template class BasicPlane<float>;

}  // namespace wib
