// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/crc32.h"

#include <immintrin.h>
#include <zlib.h>

#include <algorithm>

namespace wib {

namespace {

// Runs shorter than this go to zlib; the folding takes 64 bytes at a time.
constexpr std::size_t kFoldBlock = 64;
constexpr std::size_t kLane = 16;
// zlib's crc32 takes `uInt` lengths.
constexpr std::size_t kZlibPart = std::size_t{1} << 30;

std::uint32_t ZlibCrc32(std::uint32_t crc, const std::uint8_t* data, std::size_t size) {
    while (size > 0) {
        const std::size_t part = std::min(size, kZlibPart);
        crc = static_cast<std::uint32_t>(crc32(crc, data, static_cast<uInt>(part)));
        data += part;
        size -= part;
    }
    return crc;
}

// Each lane's two halves are multiplied by powers of x modulo the
// (bit-reflected) polynomial that move them 512 bits on, over the three lanes
// beside it, or 128 bits on, into the next lane.
#define WIB_CRC_KERNEL __attribute__((target("pclmul,sse4.1")))

WIB_CRC_KERNEL __m128i Fold(__m128i lane, __m128i constants, __m128i next) {
    return _mm_xor_si128(_mm_xor_si128(_mm_clmulepi64_si128(lane, constants, 0x00),
                                       _mm_clmulepi64_si128(lane, constants, 0x11)),
                         next);
}

WIB_CRC_KERNEL __m128i Load(const std::uint8_t* data) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(data));
}

// Folds four lanes along the run, then into one, which keeps the remainder
// of everything read; zlib finishes that lane and the bytes after it.
WIB_CRC_KERNEL std::uint32_t FoldedCrc32(std::uint32_t crc, const std::uint8_t* data,
                                         std::size_t size) {
    const __m128i overFour = _mm_set_epi64x(0x1c6e41596, 0x154442bd4);
    const __m128i overOne = _mm_set_epi64x(0x0ccaa009e, 0x1751997d0);
    __m128i x0 = _mm_xor_si128(Load(data), _mm_cvtsi32_si128(static_cast<int>(~crc)));
    __m128i x1 = Load(data + kLane);
    __m128i x2 = Load(data + 2 * kLane);
    __m128i x3 = Load(data + 3 * kLane);
    data += kFoldBlock;
    size -= kFoldBlock;
    for (; size >= kFoldBlock; data += kFoldBlock, size -= kFoldBlock) {
        x0 = Fold(x0, overFour, Load(data));
        x1 = Fold(x1, overFour, Load(data + kLane));
        x2 = Fold(x2, overFour, Load(data + 2 * kLane));
        x3 = Fold(x3, overFour, Load(data + 3 * kLane));
    }
    x0 = Fold(Fold(Fold(x0, overOne, x1), overOne, x2), overOne, x3);
    for (; size >= kLane; data += kLane, size -= kLane) {
        x0 = Fold(x0, overOne, Load(data));
    }
    alignas(kLane) std::uint8_t remainder[kLane];
    _mm_store_si128(reinterpret_cast<__m128i*>(remainder), x0);
    // The lane already holds the starting register, so zlib finishes it from
    // a register of 0, which its value 0xFFFFFFFF stands for.
    return ZlibCrc32(ZlibCrc32(0xFFFFFFFFu, remainder, kLane), data, size);
}

}  // namespace

std::uint32_t Crc32(std::uint32_t crc, std::span<const std::uint8_t> bytes) {
    static const bool folding =
        __builtin_cpu_supports("pclmul") && __builtin_cpu_supports("sse4.1");
    if (folding && bytes.size() >= kFoldBlock) {
        return FoldedCrc32(crc, bytes.data(), bytes.size());
    }
    return ZlibCrc32(crc, bytes.data(), bytes.size());
}

}  // namespace wib
