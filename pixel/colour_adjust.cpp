// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixel/colour_adjust.h"

#include <algorithm>
#include <cmath>

#include "pixel/colour.h"
#include "pixel/rounding.h"

namespace wib {

namespace {

std::uint8_t ClampByte(double value) {
    return static_cast<std::uint8_t>(std::clamp(RoundHalfEven(value), 0, 255));
}

template <typename Map>
ChannelLut MakeLut(Map map) {
    ChannelLut lut{};
    for (int v = 0; v < 256; ++v) {
        lut[static_cast<std::size_t>(v)] = ClampByte(map(v));
    }
    return lut;
}

std::uint8_t Channel(std::uint32_t packed, int shift) {
    return static_cast<std::uint8_t>((packed >> shift) & 0xFF);
}

}  // namespace

ChannelLut IdentityLut() {
    return MakeLut([](int v) { return v; });
}

ChannelLut ComposeLuts(const ChannelLut& first, const ChannelLut& then) {
    ChannelLut lut{};
    for (std::size_t v = 0; v < 256; ++v) {
        lut[v] = then[first[v]];
    }
    return lut;
}

ChannelLut InvertLut() {
    return MakeLut([](int v) { return 255.0 - v; });
}

ChannelLut PosterizeLut(int levels) {
    const double steps = levels - 1;
    return MakeLut([steps](int v) {
        return RoundHalfEvenValue(RoundHalfEvenValue(v * steps / 255.0) * 255.0 / steps);
    });
}

ChannelLut BrightnessContrastLut(int brightness, int contrast) {
    const double scale = (100.0 + contrast) / 100.0;
    return MakeLut([=](int v) { return (v + brightness - 127.5) * scale + 127.5; });
}

ChannelLut LevelsLut(int black, int white, double gamma) {
    return MakeLut([=](int v) {
        const double t = std::clamp((v - black) / static_cast<double>(white - black), 0.0, 1.0);
        return 255.0 * std::pow(t, 1.0 / gamma);
    });
}

ChannelLut GammaLut(double gamma) {
    return LevelsLut(0, 255, gamma);
}

ChannelLut CurvesLut(int at64, int at128, int at192) {
    const std::array<int, 5> xs{0, 64, 128, 192, 255};
    const std::array<int, 5> ys{0, at64, at128, at192, 255};
    return MakeLut([&](int v) {
        std::size_t i = 1;
        while (xs[i] < v) {
            ++i;
        }
        const double t = (v - xs[i - 1]) / static_cast<double>(xs[i] - xs[i - 1]);
        return LinearInterpolate(ys[i - 1], ys[i], t);
    });
}

ChannelLut EqualizeLut(const Histogram& histogram) {
    std::uint64_t count = 0;
    for (const std::uint64_t n : histogram) {
        count += n;
    }
    const auto first =
        std::find_if(histogram.begin(), histogram.end(), [](std::uint64_t n) { return n != 0; });
    const std::uint64_t below = first == histogram.end() ? 0 : *first;
    if (count == below) {
        return IdentityLut();
    }
    ChannelLut lut{};
    std::uint64_t cumulative = 0;
    for (std::size_t v = 0; v < 256; ++v) {
        cumulative += histogram[v];
        const double spread = cumulative < below ? 0.0 : double(cumulative - below);
        lut[v] = ClampByte(spread * 255.0 / double(count - below));
    }
    return lut;
}

void AddToHistogram(const std::uint8_t* row, int width, Histogram& histogram) {
    for (int x = 0; x < width; ++x) {
        ++histogram[row[x]];
    }
}

void ApplyLutRow(const std::uint8_t* in, std::uint8_t* out, const ChannelLut& lut, int width) {
    for (int x = 0; x < width; ++x) {
        out[x] = lut[in[x]];
    }
}

void ApplyLutsRow(RgbRow in, RgbOutRow out, const ChannelLuts& luts, bool grey, int width) {
    if (!grey) {
        ApplyLutRow(in.r, out.r, luts[0], width);
        ApplyLutRow(in.g, out.g, luts[1], width);
        ApplyLutRow(in.b, out.b, luts[2], width);
        return;
    }
    for (int x = 0; x < width; ++x) {
        const auto value =
            static_cast<std::uint8_t>(GreyOf(luts[0][in.r[x]], luts[1][in.g[x]], luts[2][in.b[x]]));
        out.r[x] = out.g[x] = out.b[x] = value;
    }
}

void GreyscaleRow(RgbRow in, RgbOutRow out, int width) {
    for (int x = 0; x < width; ++x) {
        const auto grey = static_cast<std::uint8_t>(GreyOf(in.r[x], in.g[x], in.b[x]));
        out.r[x] = out.g[x] = out.b[x] = grey;
    }
}

void ThresholdRow(RgbRow in, RgbOutRow out, int level, int width) {
    for (int x = 0; x < width; ++x) {
        const std::uint8_t v = GreyOf(in.r[x], in.g[x], in.b[x]) >= level ? 255 : 0;
        out.r[x] = out.g[x] = out.b[x] = v;
    }
}

void ChannelMixRow(RgbRow in, RgbOutRow out, const ChannelMatrix& matrix, int width) {
    std::uint8_t* planes[3] = {out.r, out.g, out.b};
    for (int x = 0; x < width; ++x) {
        const int r = in.r[x], g = in.g[x], b = in.b[x];
        for (std::size_t c = 0; c < 3; ++c) {
            const auto& m = matrix[c];
            planes[c][x] = ClampByte((m[0] * r + m[1] * g + m[2] * b) / 100.0);
        }
    }
}

ToneLuts TritoneLuts(std::uint32_t shadow, std::uint32_t mid, std::uint32_t highlight) {
    const auto channel = [&](int shift) {
        const int s = Channel(shadow, shift), m = Channel(mid, shift),
                  h = Channel(highlight, shift);
        return MakeLut([=](int v) {
            return v <= 128 ? LinearInterpolate(s, m, v / 128.0)
                            : LinearInterpolate(m, h, (v - 128) / 127.0);
        });
    };
    return {channel(0), channel(8), channel(16)};
}

void ToneRow(RgbRow in, RgbOutRow out, const ToneLuts& luts, int width) {
    for (int x = 0; x < width; ++x) {
        const auto grey = static_cast<std::size_t>(GreyOf(in.r[x], in.g[x], in.b[x]));
        out.r[x] = luts.r[grey];
        out.g[x] = luts.g[grey];
        out.b[x] = luts.b[grey];
    }
}

void HueSaturationLightnessRow(RgbRow in, RgbOutRow out, double hue, int saturation, int lightness,
                               int width) {
    const double saturationScale = (100.0 + saturation) / 100.0;
    const double toward = lightness > 0 ? 1.0 : 0.0;
    const double amount = std::abs(lightness) / 100.0;
    for (int x = 0; x < width; ++x) {
        double h = 0, s = 0, v = 0;
        RGB_To_HSV(in.r[x] / 255.0, in.g[x] / 255.0, in.b[x] / 255.0, h, s, v);
        double r = 0, g = 0, b = 0;
        // Greys (hue -1) have no hue to turn.
        HSV_To_RGB(h < 0 ? h : std::fmod(h + hue + 360.0, 360.0),
                   std::min(1.0, s * saturationScale), v, r, g, b);
        out.r[x] = ClampByte(255.0 * LinearInterpolate(r, toward, amount));
        out.g[x] = ClampByte(255.0 * LinearInterpolate(g, toward, amount));
        out.b[x] = ClampByte(255.0 * LinearInterpolate(b, toward, amount));
    }
}

}  // namespace wib
