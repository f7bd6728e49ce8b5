#include "pixel/interleave.h"

namespace wib {

void SplitBGR(const std::uint8_t* source, std::size_t count, std::uint8_t* r, std::uint8_t* g,
              std::uint8_t* b) {
    for (std::size_t i = 0; i < count; ++i) {
        b[i] = source[3 * i];
        g[i] = source[3 * i + 1];
        r[i] = source[3 * i + 2];
    }
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
