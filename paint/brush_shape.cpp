// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/brush_shape.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "core/text_file.h"

namespace wib {

namespace {

constexpr int kMaxTip = 1024;

BrushTip EmptyTip(int diameter) {
    BrushTip tip;
    tip.width = tip.height = std::clamp(diameter, 1, kMaxTip);
    tip.coverage.assign(static_cast<std::size_t>(tip.width) * tip.height, 0);
    return tip;
}

// Fills the tip from coverage(r) where r is the distance from the centre in
// units of the radius, sampled at 4 x 4 points per pixel for a clean edge.
template <typename Coverage>
BrushTip RadialTip(int diameter, Coverage coverage) {
    BrushTip tip = EmptyTip(diameter);
    const double radius = tip.width / 2.0;
    for (int y = 0; y < tip.height; ++y) {
        for (int x = 0; x < tip.width; ++x) {
            double sum = 0;
            for (int sy = 0; sy < 4; ++sy) {
                for (int sx = 0; sx < 4; ++sx) {
                    const double dx = x + (sx + 0.5) / 4 - radius;
                    const double dy = y + (sy + 0.5) / 4 - radius;
                    sum += coverage(std::sqrt(dx * dx + dy * dy) / radius);
                }
            }
            tip.coverage[static_cast<std::size_t>(y) * tip.width + x] =
                static_cast<std::uint8_t>(std::lround(std::clamp(sum / 16.0, 0.0, 1.0) * 255));
        }
    }
    return tip;
}

double Bilinear(const BrushTip& tip, double x, double y) {
    const int x0 = static_cast<int>(std::floor(x));
    const int y0 = static_cast<int>(std::floor(y));
    const double fx = x - x0;
    const double fy = y - y0;
    auto value = [&](int px, int py) -> double {
        if (px < 0 || py < 0 || px >= tip.width || py >= tip.height) {
            return 0.0;
        }
        return tip.at(px, py);
    };
    const double top = value(x0, y0) * (1 - fx) + value(x0 + 1, y0) * fx;
    const double bottom = value(x0, y0 + 1) * (1 - fx) + value(x0 + 1, y0 + 1) * fx;
    return top * (1 - fy) + bottom * fy;
}

double Nearest(const BrushTip& tip, double x, double y) {
    const int px = static_cast<int>(std::floor(x + 0.5));
    const int py = static_cast<int>(std::floor(y + 0.5));
    if (px < 0 || py < 0 || px >= tip.width || py >= tip.height) {
        return 0.0;
    }
    return tip.at(px, py);
}

}  // namespace

const char* BuiltinBrushName(BuiltinBrush brush) {
    switch (brush) {
        case BuiltinBrush::HardRound:
            return "Hard round";
        case BuiltinBrush::SoftAirbrush:
            return "Soft airbrush";
        case BuiltinBrush::Bristle:
            return "Bristle";
        case BuiltinBrush::Chalk:
            return "Chalk";
    }
    return "Brush";
}

BrushTip MakeRoundBrush(int diameter, int hardness) {
    const double solid = std::clamp(hardness, 0, 100) / 100.0;
    return RadialTip(diameter, [solid](double r) {
        if (r <= solid) {
            return 1.0;
        }
        if (r >= 1.0) {
            return 0.0;
        }
        const double t = (r - solid) / (1.0 - solid);
        return 0.5 + 0.5 * std::cos(t * std::numbers::pi);
    });
}

BrushTip MakeAirbrush(int diameter) {
    return RadialTip(
        diameter, [](double r) { return r >= 1.0 ? 0.0 : std::exp(-4.0 * r * r) * (1.0 - r * r); });
}

BrushTip MakeBristleBrush(int diameter, int bristles, std::uint32_t seed) {
    BrushTip tip = EmptyTip(diameter);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double radius = tip.width / 2.0;
    const int count = std::clamp(bristles, 3, 64);
    // Hairs are thicker on small brushes so that a few still cover the tip.
    const double hair = std::max(0.8, radius * 1.1 / std::sqrt(static_cast<double>(count)));
    for (int i = 0; i < count; ++i) {
        const double angle = unit(random) * 2.0 * std::numbers::pi;
        const double distance = std::sqrt(unit(random)) * (radius - hair * 0.5);
        const double cx = radius + std::cos(angle) * distance;
        const double cy = radius + std::sin(angle) * distance;
        const double strength = 0.55 + 0.45 * unit(random);
        for (int y = 0; y < tip.height; ++y) {
            for (int x = 0; x < tip.width; ++x) {
                const double dx = x + 0.5 - cx;
                const double dy = y + 0.5 - cy;
                const double d = std::sqrt(dx * dx + dy * dy) / hair;
                if (d >= 1.0) {
                    continue;
                }
                const double c = strength * (1.0 - d * d);
                auto& cell = tip.coverage[static_cast<std::size_t>(y) * tip.width + x];
                cell = std::max(cell, static_cast<std::uint8_t>(std::lround(c * 255)));
            }
        }
    }
    return tip;
}

EdgeProfile LoadEdgeprofile(const std::filesystem::path& file) {
    const auto text = ReadTextFile(file);
    if (!text) {
        return {};
    }
    EdgeProfile profile;
    std::size_t pos = 0;
    while (pos < text->size()) {
        const auto start = text->find_first_not_of(" \t\r\n", pos);
        if (start == std::string::npos) {
            break;
        }
        auto end = text->find_first_of(" \t\r\n", start);
        if (end == std::string::npos) {
            end = text->size();
        }
        const std::string word = text->substr(start, end - start);
        pos = end;
        if (word.find_first_not_of("0123456789") != std::string::npos || word.size() > 3) {
            return {};
        }
        const int value = std::stoi(word);
        if (value > 255 || profile.size() == 256) {
            return {};
        }
        profile.push_back(static_cast<std::uint8_t>(value));
    }
    return profile.size() >= 2 ? profile : EdgeProfile{};
}

BrushTip MakeChalkBrush(int diameter, const EdgeProfile& profile, std::uint32_t seed) {
    const EdgeProfile fallback{255, 250, 235, 200, 140, 60, 0};
    const EdgeProfile& edge = profile.size() >= 2 ? profile : fallback;
    BrushTip tip = RadialTip(diameter, [&edge](double r) {
        if (r >= 1.0) {
            return 0.0;
        }
        const double at = r * static_cast<double>(edge.size() - 1);
        const std::size_t i = static_cast<std::size_t>(at);
        const double f = at - static_cast<double>(i);
        const double next = i + 1 < edge.size() ? edge[i + 1] : 0.0;
        return (edge[i] * (1 - f) + next * f) / 255.0;
    });
    // Chalk leaves gaps where the paper's grain stands proud of the stick.
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> grain(0, 255);
    for (auto& cell : tip.coverage) {
        const int g = grain(random);
        cell = static_cast<std::uint8_t>(cell * std::clamp(g + 96, 0, 255) / 255);
    }
    return tip;
}

BrushTip TipFromMask(const Plane& mask) {
    BrushTip tip;
    tip.width = static_cast<int>(mask.stride());
    tip.height = static_cast<int>(mask.rows());
    tip.coverage.resize(mask.count());
    for (std::size_t i = 0; i < mask.count(); ++i) {
        tip.coverage[i] = static_cast<std::uint8_t>(255 - mask.data()[i]);
    }
    return tip;
}

BrushTip ScaleTip(const BrushTip& tip, int size) {
    BrushTip scaled;
    const double factor =
        static_cast<double>(std::clamp(size, 1, kMaxTip)) / std::max({tip.width, tip.height, 1});
    scaled.width = std::max(1, static_cast<int>(std::lround(tip.width * factor)));
    scaled.height = std::max(1, static_cast<int>(std::lround(tip.height * factor)));
    scaled.coverage.resize(static_cast<std::size_t>(scaled.width) * scaled.height);
    for (int y = 0; y < scaled.height; ++y) {
        for (int x = 0; x < scaled.width; ++x) {
            const double value = Bilinear(tip, (x + 0.5) / factor - 0.5, (y + 0.5) / factor - 0.5);
            scaled.coverage[static_cast<std::size_t>(y) * scaled.width + x] =
                static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
        }
    }
    return scaled;
}

int PaddedMaskWidth(int width) {
    return (width + 31) / 32 * 32;
}

Plane TransformBrush(const BrushTip& tip, double degrees, double scale, int quality) {
    scale = std::clamp(scale, 0.01, 16.0);
    const double scaled = std::max(tip.width, tip.height) * scale;
    // The square that holds the scaled tip at this angle; odd, so that the
    // dab has a centre pixel.
    const bool turned = std::fmod(std::abs(degrees), 360.0) != 0.0;
    const double extent = turned ? scaled * std::numbers::sqrt2 : scaled;
    const int size = std::max(1, static_cast<int>(std::ceil(extent)) | 1);
    Plane mask(PaddedMaskWidth(size) - 1, size - 1, 255);
    const double radians = -degrees * std::numbers::pi / 180.0;
    const double c = std::cos(radians) / scale;
    const double s = std::sin(radians) / scale;
    const double centre = size / 2.0;
    const double tipCentreX = tip.width / 2.0;
    const double tipCentreY = tip.height / 2.0;
    const int samples = quality >= 2 ? 4 : 1;
    for (int y = 0; y < size; ++y) {
        std::uint8_t* row = mask.row(y);
        for (int x = 0; x < size; ++x) {
            double sum = 0;
            for (int sy = 0; sy < samples; ++sy) {
                for (int sx = 0; sx < samples; ++sx) {
                    const double dx = x + (sx + 0.5) / samples - centre;
                    const double dy = y + (sy + 0.5) / samples - centre;
                    const double u = dx * c - dy * s + tipCentreX - 0.5;
                    const double v = dx * s + dy * c + tipCentreY - 0.5;
                    sum += quality == 0 ? Nearest(tip, u, v) : Bilinear(tip, u, v);
                }
            }
            const long coverage = std::lround(sum / (samples * samples));
            row[x] = static_cast<std::uint8_t>(255 - std::clamp(coverage, 0L, 255L));
        }
    }
    return mask;
}

}  // namespace wib
