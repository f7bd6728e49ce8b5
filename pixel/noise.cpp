// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/noise.h"

#include <algorithm>

#include "pixel/rounding.h"

namespace wib {

namespace {

// A strong 64-bit mixer: nearby inputs give unrelated outputs.
std::uint64_t Mix(std::uint64_t z) {
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

std::uint8_t AddClamped(int value, int offset) {
    return static_cast<std::uint8_t>(std::clamp(value + offset, 0, 255));
}

}  // namespace

int NoiseAt(std::uint32_t seed, int x, int y, int channel, int amount) {
    const std::uint64_t key = (std::uint64_t(seed) << 32) ^
                              (std::uint64_t(std::uint32_t(y)) << 14) ^
                              (std::uint64_t(std::uint32_t(x)) << 2) ^ std::uint64_t(channel);
    const std::uint64_t span = 2 * std::uint64_t(amount) + 1;
    return static_cast<int>(Mix(Mix(key)) % span) - amount;
}

void AddNoiseRow(RgbRow in, RgbOutRow out, int y, std::uint32_t seed, int amount, bool mono,
                 int width) {
    for (int x = 0; x < width; ++x) {
        const int nr = NoiseAt(seed, x, y, 0, amount);
        out.r[x] = AddClamped(in.r[x], nr);
        out.g[x] = AddClamped(in.g[x], mono ? nr : NoiseAt(seed, x, y, 1, amount));
        out.b[x] = AddClamped(in.b[x], mono ? nr : NoiseAt(seed, x, y, 2, amount));
    }
}

void FilmGrainRow(RgbRow in, RgbOutRow out, int y, std::uint32_t seed, int amount, int size,
                  int width) {
    for (int x = 0; x < width; ++x) {
        const int grey = GreyOf(in.r[x], in.g[x], in.b[x]);
        const double weight = 4.0 * grey * (255 - grey) / (255.0 * 255.0);
        const int grain = RoundHalfEven(NoiseAt(seed, x / size, y / size, 0, amount) * weight);
        out.r[x] = AddClamped(in.r[x], grain);
        out.g[x] = AddClamped(in.g[x], grain);
        out.b[x] = AddClamped(in.b[x], grain);
    }
}

}  // namespace wib
