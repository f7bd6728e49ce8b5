// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/colour_filters.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

#include "core/commands.h"
#include "filters/filter_bands.h"
#include "filters/filter_preview.h"
#include "filters/lut_filter.h"
#include "pixel/colour_adjust.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Colour";

// A filter that maps every channel through one table, which `lut` builds
// from the panel's values.
CommandSpec LutFilter(std::string id, std::string caption, std::vector<ParamSpec> params,
                      std::function<ChannelLut(const ParamValues&)> lut) {
    return WithPreviewReach(FilterRow(std::move(id), std::move(caption), kMenu, std::move(params),
                                      [lut = std::move(lut)](const FilterContext& context) {
                                          const ChannelLut table = lut(context.values);
                                          ApplyLuts(context, {table, table, table});
                                      }),
                            FixedReach(0));
}

// A filter whose kernel turns one row of three planes into another; `row`
// is given the panel's values.
using RowKernel = std::function<void(RgbRow, RgbOutRow, int width)>;
CommandSpec RowFilter(std::string id, std::string caption, std::vector<ParamSpec> params,
                      std::function<RowKernel(const ParamValues&)> row) {
    return WithPreviewReach(FilterRow(std::move(id), std::move(caption), kMenu, std::move(params),
                                      [row = std::move(row)](const FilterContext& context) {
                                          const RowKernel kernel = row(context.values);
                                          ForEachRow(context, [&](int y) {
                                              kernel(SourceRow(context, y), TargetRow(context, y),
                                                     context.source.width);
                                          });
                                      }),
                            FixedReach(0));
}

CommandSpec ToneFilter(std::string id, std::string caption, std::vector<ParamSpec> params,
                       std::function<ToneLuts(const ParamValues&)> luts) {
    return RowFilter(std::move(id), std::move(caption), std::move(params),
                     [luts = std::move(luts)](const ParamValues& values) {
                         return [tones = luts(values)](RgbRow in, RgbOutRow out, int width) {
                             ToneRow(in, out, tones, width);
                         };
                     });
}

std::uint32_t Packed(const ParamValues& values, const char* name) {
    return static_cast<std::uint32_t>(values.integer(name));
}

// Each channel spread over 0..255 by its own histogram, taken over the whole
// image.
void Equalize(const FilterContext& context) {
    ChannelLuts luts{};
    for (int c = 0; c < 3; ++c) {
        Histogram histogram{};
        for (int y = 0; y < context.source.height; ++y) {
            AddToHistogram(context.source[c].row(y), context.source.width, histogram);
        }
        luts[static_cast<std::size_t>(c)] = EqualizeLut(histogram);
    }
    ApplyLuts(context, luts);
}

std::vector<ParamSpec> MixerParams() {
    static const char* const names[3][3] = {{"red_red", "red_green", "red_blue"},
                                            {"green_red", "green_green", "green_blue"},
                                            {"blue_red", "blue_green", "blue_blue"}};
    static const char* const captions[3][3] = {
        {"Red from red %", "Red from green %", "Red from blue %"},
        {"Green from red %", "Green from green %", "Green from blue %"},
        {"Blue from red %", "Blue from green %", "Blue from blue %"}};
    std::vector<ParamSpec> params;
    for (int out = 0; out < 3; ++out) {
        for (int in = 0; in < 3; ++in) {
            params.push_back(
                IntegerParam(names[out][in], captions[out][in], -200, 200, out == in ? 100 : 0));
        }
    }
    return params;
}

ChannelMatrix MixerMatrix(const ParamValues& values, const std::vector<ParamSpec>& params) {
    ChannelMatrix matrix{};
    for (std::size_t i = 0; i < 9; ++i) {
        matrix[i / 3][i % 3] = static_cast<int>(values.integer(params[i].name));
    }
    return matrix;
}

}  // namespace

void RegisterColourFilters(CommandRegistry& registry) {
    registry.add(LutFilter("filter.colour.invert", "&Invert", {},
                           [](const ParamValues&) { return InvertLut(); }));
    registry.add(RowFilter("filter.colour.greyscale", "&Greyscale", {}, [](const ParamValues&) {
        return [](RgbRow in, RgbOutRow out, int width) { GreyscaleRow(in, out, width); };
    }));
    registry.add(RowFilter("filter.colour.threshold", "&Threshold...",
                           {IntegerParam("level", "Level", 0, 255, 128)},
                           [](const ParamValues& values) {
                               const int level = static_cast<int>(values.integer("level"));
                               return [level](RgbRow in, RgbOutRow out, int width) {
                                   ThresholdRow(in, out, level, width);
                               };
                           }));
    registry.add(LutFilter("filter.colour.posterize", "&Posterize...",
                           {IntegerParam("levels", "Levels", 2, 255, 4)},
                           [](const ParamValues& values) {
                               return PosterizeLut(static_cast<int>(values.integer("levels")));
                           }));
    registry.add(LutFilter("filter.colour.brightness_contrast", "&Brightness/Contrast...",
                           {IntegerParam("brightness", "Brightness", -255, 255, 0),
                            IntegerParam("contrast", "Contrast", -100, 100, 0)},
                           [](const ParamValues& values) {
                               return BrightnessContrastLut(
                                   static_cast<int>(values.integer("brightness")),
                                   static_cast<int>(values.integer("contrast")));
                           }));
    registry.add(LutFilter("filter.colour.levels", "&Levels...",
                           {IntegerParam("black", "Black point", 0, 254, 0),
                            IntegerParam("white", "White point", 1, 255, 255),
                            NumberParam("gamma", "Gamma", 0.1, 10, 1)},
                           [](const ParamValues& values) {
                               const int black = static_cast<int>(values.integer("black"));
                               // A white point at or below black is taken
                               // as black + 1, a hard step.
                               const int white =
                                   std::max(black + 1, static_cast<int>(values.integer("white")));
                               return LevelsLut(black, white, values.number("gamma"));
                           }));
    registry.add(LutFilter("filter.colour.curves", "C&urves...",
                           {IntegerParam("shadows", "Output at 64", 0, 255, 64),
                            IntegerParam("midtones", "Output at 128", 0, 255, 128),
                            IntegerParam("highlights", "Output at 192", 0, 255, 192)},
                           [](const ParamValues& values) {
                               return CurvesLut(static_cast<int>(values.integer("shadows")),
                                                static_cast<int>(values.integer("midtones")),
                                                static_cast<int>(values.integer("highlights")));
                           }));
    registry.add(
        RowFilter("filter.colour.hue_saturation", "&Hue/Saturation/Lightness...",
                  {IntegerParam("hue", "Hue", -180, 180, 0),
                   IntegerParam("saturation", "Saturation", -100, 100, 0),
                   IntegerParam("lightness", "Lightness", -100, 100, 0)},
                  [](const ParamValues& values) {
                      const double hue = static_cast<double>(values.integer("hue"));
                      const int saturation = static_cast<int>(values.integer("saturation"));
                      const int lightness = static_cast<int>(values.integer("lightness"));
                      return [=](RgbRow in, RgbOutRow out, int width) {
                          HueSaturationLightnessRow(in, out, hue, saturation, lightness, width);
                      };
                  }));
    registry.add(
        LutFilter("filter.colour.gamma", "G&amma...", {NumberParam("gamma", "Gamma", 0.1, 10, 1)},
                  [](const ParamValues& values) { return GammaLut(values.number("gamma")); }));
    registry.add(ToneFilter("filter.colour.colourize", "&Colourize...",
                            {ColourParam("colour", "Colour", 0x4080C0)},
                            [](const ParamValues& values) {
                                return TritoneLuts(0, Packed(values, "colour"), 0xFFFFFF);
                            }));
    registry.add(RowFilter("filter.colour.sepia", "&Sepia", {}, [](const ParamValues&) {
        return [](RgbRow in, RgbOutRow out, int width) {
            ChannelMixRow(in, out, kSepiaMatrix, width);
        };
    }));
    CommandSpec tritone = ToneFilter(
        "filter.colour.tritone", "T&ritone...",
        {ColourParam("shadow", "Shadows", 0x401020), ColourParam("mid", "Midtones", 0x4060C0),
         ColourParam("highlight", "Highlights", 0xC8F0FF)},
        [](const ParamValues& values) {
            return TritoneLuts(Packed(values, "shadow"), Packed(values, "mid"),
                               Packed(values, "highlight"));
        });
    tritone.repeatQuestion = "Apply Tritone filter to all frames?";
    registry.add(std::move(tritone));
    registry.add(FilterRow("filter.colour.equalize", "&Equalize", kMenu, {}, Equalize));
    registry.add(RowFilter("filter.colour.channel_mixer", "Channel &mixer...", MixerParams(),
                           [](const ParamValues& values) {
                               const ChannelMatrix matrix = MixerMatrix(values, MixerParams());
                               return [matrix](RgbRow in, RgbOutRow out, int width) {
                                   ChannelMixRow(in, out, matrix, width);
                               };
                           }));
}

}  // namespace wib
