// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/plane_memory.h"

#include <sys/mman.h>

#include <cstdint>
#include <new>

namespace wib {

namespace {

// The large page of x86-64 and most 64-bit systems; elsewhere only an
// alignment.
constexpr std::size_t kLargePage = std::size_t{2} << 20;
constexpr std::size_t kSmallPage = 4096;
// A plane is rounded up to whole large pages when that adds at most this
// share of its size; otherwise its last part lies in small pages.
constexpr std::size_t kMostWasteShare = 16;

std::size_t RoundUp(std::size_t bytes, std::size_t unit) {
    return (bytes + unit - 1) / unit * unit;
}

}  // namespace

void PlaneRelease::UnmapPlaneMemory(void* memory, std::size_t bytes) {
    ::munmap(memory, bytes);
}

std::size_t PlaneMappingSize(std::size_t bytes) {
    const std::size_t whole = RoundUp(bytes, kLargePage);
    if (whole - bytes <= bytes / kMostWasteShare) {
        return whole;
    }
    return bytes >= kLargePage ? RoundUp(bytes, kSmallPage) : 0;
}

void* MapPlaneMemory(std::size_t mappedBytes) {
    // One large page more than asked for, so that an aligned start lies
    // inside; the parts before and after it are given back at once.
    const std::size_t reserved = mappedBytes + kLargePage;
    void* const mapped =
        ::mmap(nullptr, reserved, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) {
        throw std::bad_alloc();
    }
    const auto address = reinterpret_cast<std::uintptr_t>(mapped);
    const std::uintptr_t aligned = RoundUp(address, kLargePage);
    if (aligned > address) {
        ::munmap(mapped, aligned - address);
    }
    const std::size_t after = reserved - (aligned - address) - mappedBytes;
    if (after > 0) {
        ::munmap(reinterpret_cast<void*>(aligned + mappedBytes), after);
    }
    void* const memory = reinterpret_cast<void*>(aligned);
#ifdef MADV_HUGEPAGE
    ::madvise(memory, mappedBytes, MADV_HUGEPAGE);
#endif
    return memory;
}

}  // namespace wib
