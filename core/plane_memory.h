// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

// Where planes keep their elements. A large plane gets a mapping of its own,
// aligned to the system's large pages and advised to use them, so that its
// first touch costs one fault per large page instead of one per small page,
// and giving it back is as quick; a small plane comes from the heap.

namespace wib {

// The address sanitizer watches the heap, not mappings: under it every plane
// comes from the heap so that a stray index is still caught.
#if defined(__SANITIZE_ADDRESS__)
#define WIB_PLANES_ON_HEAP
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define WIB_PLANES_ON_HEAP
#endif
#endif
#ifdef WIB_PLANES_ON_HEAP
inline constexpr bool kMapLargePlanes = false;
#else
inline constexpr bool kMapLargePlanes = true;
#endif

// How a plane's elements are given back: the mapping's length, or 0 for
// memory from new[].
struct PlaneRelease {
    std::size_t mappedBytes = 0;

    template <typename T>
    void operator()(T* elements) const {
        if (mappedBytes > 0) {
            UnmapPlaneMemory(elements, mappedBytes);
        } else {
            delete[] elements;
        }
    }

    static void UnmapPlaneMemory(void* memory, std::size_t bytes);
};

// The bytes a mapping for `bytes` would take: whole large pages when that
// wastes little, else whole small pages for planes of a large page or more,
// else 0, the heap serving small planes better.
std::size_t PlaneMappingSize(std::size_t bytes);

// A fresh mapping of `mappedBytes` (as PlaneMappingSize gave), its contents
// unspecified; throws std::bad_alloc when it cannot be had.
void* MapPlaneMemory(std::size_t mappedBytes);

}  // namespace wib
