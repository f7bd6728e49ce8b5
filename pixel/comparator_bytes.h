// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

#include "pixel/comparator_network.h"

namespace wib {

// A block of byte values as one vector, for the comparator networks' kernels
// inside this layer (vector types passed by value want the kernels' own
// compiler flags).
using ComparatorBytes = std::uint8_t __attribute__((vector_size(kComparatorBlock)));

inline __attribute__((always_inline)) ComparatorBytes LoadBytes(const std::uint8_t* p) {
    ComparatorBytes v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

inline __attribute__((always_inline)) void StoreBytes(std::uint8_t* p, ComparatorBytes v) {
    std::memcpy(p, &v, sizeof v);
}

}  // namespace wib
