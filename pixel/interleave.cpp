// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/interleave.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace wib {

namespace {

void SplitBGRPlain(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
                   std::uint8_t* b) {
    for (std::size_t i = 0; i < count; ++i) {
        b[i] = source[3 * i];
        g[i] = source[3 * i + 1];
        r[i] = source[3 * i + 2];
    }
}

#if defined(__x86_64__) || defined(__i386__)

// The byte shuffle that gathers channel `channel` of 16 pixels from the
// 16-byte block `block` of their 48 bytes; 0x80 where the byte lies elsewhere.
__attribute__((target("ssse3"))) __m128i GatherMask(int channel, int block) {
    alignas(16) std::int8_t mask[16];
    for (int i = 0; i < 16; ++i) {
        const int at = 3 * i + channel - 16 * block;
        mask[i] = static_cast<std::int8_t>(at >= 0 && at < 16 ? at : 0x80);
    }
    return _mm_load_si128(reinterpret_cast<const __m128i*>(mask));
}

// 16 pixels a step with byte shuffles, which every x86-64 made since 2006 has;
// the plain loop finishes the rest.
__attribute__((target("ssse3"))) void SplitBGRShuffle(const std::uint8_t* source, std::size_t count,
                                                      std::uint8_t* r, std::uint8_t* g,
                                                      std::uint8_t* b) {
    std::uint8_t* const planes[3] = {b, g, r};
    __m128i masks[3][3];
    for (int channel = 0; channel < 3; ++channel) {
        for (int block = 0; block < 3; ++block) {
            masks[channel][block] = GatherMask(channel, block);
        }
    }
    std::size_t i = 0;
    for (; i + 16 <= count; i += 16) {
        const auto* in = reinterpret_cast<const __m128i*>(source + 3 * i);
        const __m128i blocks[3] = {_mm_loadu_si128(in), _mm_loadu_si128(in + 1),
                                   _mm_loadu_si128(in + 2)};
        for (int channel = 0; channel < 3; ++channel) {
            const __m128i value =
                _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(blocks[0], masks[channel][0]),
                                          _mm_shuffle_epi8(blocks[1], masks[channel][1])),
                             _mm_shuffle_epi8(blocks[2], masks[channel][2]));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(planes[channel] + i), value);
        }
    }
    SplitBGRPlain(source + 3 * i, count - i, r + i, g + i, b + i);
}

#endif

}  // namespace

void SplitBGR(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
              std::uint8_t* b) {
#if defined(__x86_64__) || defined(__i386__)
    static const bool shuffle = __builtin_cpu_supports("ssse3");
    if (shuffle) {
        SplitBGRShuffle(source, count, r, g, b);
        return;
    }
#endif
    SplitBGRPlain(source, count, r, g, b);
}

void SplitBGRA(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
               std::uint8_t* b, std::uint8_t* a) {
    for (std::size_t i = 0; i < count; ++i) {
        b[i] = source[4 * i];
        g[i] = source[4 * i + 1];
        r[i] = source[4 * i + 2];
        a[i] = source[4 * i + 3];
    }
}

void JoinBGR(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b, std::size_t count,
             std::uint8_t* destination) {
    for (std::size_t i = 0; i < count; ++i) {
        destination[3 * i] = b[i];
        destination[3 * i + 1] = g[i];
        destination[3 * i + 2] = r[i];
    }
}

void JoinBGRA(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b,
              const std::uint8_t* a, std::size_t count, std::uint8_t* destination) {
    for (std::size_t i = 0; i < count; ++i) {
        destination[4 * i] = b[i];
        destination[4 * i + 1] = g[i];
        destination[4 * i + 2] = r[i];
        destination[4 * i + 3] = a[i];
    }
}

void SplitIndexed(const std::uint8_t* indices, std::size_t count, const std::uint8_t* palette,
                  std::uint8_t* r, std::uint8_t* g, std::uint8_t* b) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint8_t* entry = palette + 3 * static_cast<std::size_t>(indices[i]);
        b[i] = entry[0];
        g[i] = entry[1];
        r[i] = entry[2];
    }
}

void JoinGrey(const std::uint8_t* r, const std::uint8_t* g, const std::uint8_t* b,
              std::size_t count, std::uint8_t* destination) {
    for (std::size_t i = 0; i < count; ++i) {
        destination[i] =
            static_cast<std::uint8_t>((299u * r[i] + 587u * g[i] + 114u * b[i] + 500u) / 1000u);
    }
}

}  // namespace wib
