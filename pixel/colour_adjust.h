// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace wib {

// A per-value map of one channel: out = lut[in].
using ChannelLut = std::array<std::uint8_t, 256>;
// How many pixels of one channel hold each value.
using Histogram = std::array<std::uint64_t, 256>;

// The grey of a colour: (299 R + 587 G + 114 B + 500) / 1000.
inline int GreyOf(int r, int g, int b) {
    return (299 * r + 587 * g + 114 * b + 500) / 1000;
}

// Three tables, one for the red, green and blue planes in that order.
using ChannelLuts = std::array<ChannelLut, 3>;

ChannelLut IdentityLut();
// `first` and then `then`: v -> then[first[v]].
ChannelLut ComposeLuts(const ChannelLut& first, const ChannelLut& then);
ChannelLut InvertLut();
// v -> round(round(v (levels - 1) / 255) * 255 / (levels - 1)); levels >= 2.
ChannelLut PosterizeLut(int levels);
// Adds `brightness` (-255..255), then scales about mid-grey by
// (100 + contrast) / 100 for contrast -100..100, rounding and clamping.
ChannelLut BrightnessContrastLut(int brightness, int contrast);
// Maps black..white (black < white) onto 0..255 through the exponent
// 1 / gamma; values outside black..white clamp.
ChannelLut LevelsLut(int black, int white, double gamma);
// v -> 255 (v / 255)^(1 / gamma).
ChannelLut GammaLut(double gamma);
// The straight lines through (0, 0), (64, at64), (128, at128), (192, at192)
// and (255, 255).
ChannelLut CurvesLut(int at64, int at128, int at192);
// Spreads the values so that their cumulative count grows evenly:
// v -> round((cdf(v) - cdf(first)) 255 / (count - cdf(first))), where first is
// the lowest value present. An image of one value stays as it is.
ChannelLut EqualizeLut(const Histogram& histogram);

void AddToHistogram(const std::uint8_t* row, int width, Histogram& histogram);
void ApplyLutRow(const std::uint8_t* in, std::uint8_t* out, const ChannelLut& lut, int width);

// Three planes in, three planes out, one row of `width` pixels.
struct RgbRow {
    const std::uint8_t* r;
    const std::uint8_t* g;
    const std::uint8_t* b;
};
struct RgbOutRow {
    std::uint8_t* r;
    std::uint8_t* g;
    std::uint8_t* b;
};

// Each plane through its own table; with `grey` the looked-up colour then
// becomes its grey in all three planes.
void ApplyLutsRow(RgbRow in, RgbOutRow out, const ChannelLuts& luts, bool grey, int width);

// The grey in all three planes.
void GreyscaleRow(RgbRow in, RgbOutRow out, int width);
// White where the grey is >= level, else black.
void ThresholdRow(RgbRow in, RgbOutRow out, int level, int width);

// out[c] = clamp(round((m[c][0] R + m[c][1] G + m[c][2] B) / 100)): the
// coefficients are percentages.
using ChannelMatrix = std::array<std::array<int, 3>, 3>;
void ChannelMixRow(RgbRow in, RgbOutRow out, const ChannelMatrix& matrix, int width);
// The mix that gives old brown photographic tones.
inline constexpr ChannelMatrix kSepiaMatrix{{{39, 77, 19}, {35, 69, 17}, {27, 53, 13}}};

// The colour of each grey: shadow at 0, mid at 128, highlight at 255, in
// straight lines between, rounded; one table per output channel.
struct ToneLuts {
    ChannelLut r, g, b;
};
ToneLuts TritoneLuts(std::uint32_t shadow, std::uint32_t mid, std::uint32_t highlight);
// Each pixel's grey looked up in the tone tables.
void ToneRow(RgbRow in, RgbOutRow out, const ToneLuts& luts, int width);

// Turns the hue by `hue` degrees, scales the saturation by (100 + saturation)
// / 100 (clamped to 1) and moves toward white (lightness > 0) or black by
// |lightness| percent.
void HueSaturationLightnessRow(RgbRow in, RgbOutRow out, double hue, int saturation, int lightness,
                               int width);

}  // namespace wib
