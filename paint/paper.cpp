// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/paper.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

namespace wib {

namespace {

int Wrap(int v, int n) {
    return ((v % n) + n) % n;
}

// Value noise on a `cells` x `cells` lattice, smoothly interpolated and
// wrapping at the edges so that the grain tiles.
std::vector<double> TileNoise(int size, int cells, std::mt19937& random) {
    std::uniform_real_distribution<double> unit(-1.0, 1.0);
    std::vector<double> lattice(static_cast<std::size_t>(cells) * cells);
    for (double& v : lattice) {
        v = unit(random);
    }
    std::vector<double> noise(static_cast<std::size_t>(size) * size);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const double fx = static_cast<double>(x) * cells / size;
            const double fy = static_cast<double>(y) * cells / size;
            const int x0 = static_cast<int>(fx);
            const int y0 = static_cast<int>(fy);
            const double tx = (fx - x0) * (fx - x0) * (3 - 2 * (fx - x0));
            const double ty = (fy - y0) * (fy - y0) * (3 - 2 * (fy - y0));
            auto at = [&](int i, int j) {
                return lattice[static_cast<std::size_t>(Wrap(j, cells) * cells + Wrap(i, cells))];
            };
            const double top = at(x0, y0) * (1 - tx) + at(x0 + 1, y0) * tx;
            const double bottom = at(x0, y0 + 1) * (1 - tx) + at(x0 + 1, y0 + 1) * tx;
            noise[static_cast<std::size_t>(y) * size + x] = top * (1 - ty) + bottom * ty;
        }
    }
    return noise;
}

}  // namespace

const char* PaperName(PaperKind kind) {
    switch (kind) {
        case PaperKind::Canvas:
            return "Canvas";
        case PaperKind::Rough:
            return "Rough";
        case PaperKind::Fine:
            return "Fine";
    }
    return "Paper";
}

Plane MakePaper(PaperKind kind, int size, std::uint32_t seed) {
    size = std::clamp(size, 8, 1024);
    std::mt19937 random(seed);
    Plane paper(size - 1, size - 1, 128);
    std::vector<double> detail = TileNoise(size, size / 2, random);
    const std::vector<double> broad = TileNoise(size, std::max(2, size / 16), random);
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const std::size_t i = static_cast<std::size_t>(y) * size + x;
            double v = 0;
            switch (kind) {
                case PaperKind::Canvas: {
                    // Threads over and under every four pixels.
                    const double warp = std::sin(x * std::numbers::pi / 4.0);
                    const double weft = std::sin(y * std::numbers::pi / 4.0);
                    v = 0.6 * warp * weft + 0.25 * detail[i];
                    break;
                }
                case PaperKind::Rough:
                    v = 0.7 * detail[i] + 0.5 * broad[i];
                    break;
                case PaperKind::Fine:
                    v = 0.45 * detail[i];
                    break;
            }
            paper.at(x, y) =
                static_cast<std::uint8_t>(std::clamp(std::lround(128 + 127 * v), 0L, 255L));
        }
    }
    return paper;
}

Plane PreparePaper(const Plane& source, const BrushOptionsModel& options) {
    if (source.empty()) {
        return {};
    }
    const int sw = static_cast<int>(source.stride());
    const int sh = static_cast<int>(source.rows());
    const double scale = std::clamp(options.paperScale, 25, 400) / 100.0;
    const int width = std::max(1, static_cast<int>(std::lround(sw * scale)));
    const int height = std::max(1, static_cast<int>(std::lround(sh * scale)));
    Plane scaled(width - 1, height - 1, 128);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            scaled.at(x, y) = source.at(std::min(sw - 1, static_cast<int>(x / scale)),
                                        std::min(sh - 1, static_cast<int>(y / scale)));
        }
    }
    Plane grain(width - 1, height - 1, 128);
    const double depth = std::clamp(options.paperStrength, 0, 100) / 100.0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            double v = scaled.at(x, y) - 128.0;
            if (options.paperEmboss) {
                // Light from the top left: slopes facing it come up, others go down.
                v = 2.0 * (scaled.at(x, y) - scaled.at(Wrap(x - 1, width), Wrap(y - 1, height)));
            }
            if (options.paperInvert) {
                v = -v;
            }
            grain.at(x, y) =
                static_cast<std::uint8_t>(std::clamp(std::lround(128 + v * depth), 0L, 255L));
        }
    }
    return grain;
}

}  // namespace wib
