// SPDX-License-Identifier: GPL-3.0-or-later
// Colour and look-up tables: packed colours, and three tables (red, green,
// blue) the program holds for plug-ins, built up step by step and then
// applied to the image.

#include <cmath>

#include "core/image_edit.h"
#include "core/packed_colour.h"
#include "core/workspace.h"
#include "filters/filter_bands.h"
#include "filters/lut_filter.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Colour and look-up tables";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};

PackedColour ColourArg(const CallArgs& args, std::size_t i) {
    const auto colour = PackedColour::fromPacked(args.integer(i));
    if (!colour) {
        throw BadCall("a packed colour is 0..16777215");
    }
    return *colour;
}

// Argument i, which must lie in low..high; `name` tells the plug-in which.
double NumberIn(const CallArgs& args, std::size_t i, const char* name, double low, double high) {
    const double value = args.number(i);
    if (value < low || value > high) {
        throw BadCall(std::string(name) + " is out of range");
    }
    return value;
}

// Runs `kernel` on the image as a plug-in's change: through the selection,
// the plug-in having saved undo itself.
void ChangeImage(CallContext& c, const FilterKernel& kernel) {
    const ImageEdit edit(c.workspace(), kPluginEdit);
    ApplyFilter(c.workspace(), ParamValues{{}}, kernel);
}

// Each table followed by `then`.
void ComposeAll(CallContext& c, const ChannelLut& then) {
    for (ChannelLut& lut : c.server.luts) {
        lut = ComposeLuts(lut, then);
    }
}

// `colour` with its hue turned, saturation scaled and lightness moved, as
// Filter > Colour > Hue/Saturation/Lightness does it.
std::int32_t AdjustColour(PackedColour colour, double hue, int saturation, int lightness) {
    PackedColour out;
    HueSaturationLightnessRow({&colour.r, &colour.g, &colour.b}, {&out.r, &out.g, &out.b}, hue,
                              saturation, lightness, 1);
    return out.packed();
}

}  // namespace

std::vector<MethodSpec> ColourMethods() {
    return {
        {"Wib_ColorToRGB",
         kFamily,
         {{"colour", ArgType::Integer}},
         {ResultType::Rgb, "array [red, green, blue], each 0..255"},
         "Unpacks a colour packed red + 256 green + 65536 blue. Outside 0..16777215 is error 5.",
         [](CallContext&, CallArgs& args) {
             const PackedColour colour = ColourArg(args, 0);
             msgpack::sbuffer packed;
             msgpack::pack(packed, std::vector<int>{colour.r, colour.g, colour.b});
             return Reply::Packed(std::move(packed));
         }},
        {"Wib_DoHue",
         kFamily,
         {{"degrees", ArgType::Number}},
         kNothing,
         "Turns the hue of the image by degrees (-360..360) through the selection, as "
         "Hue/Saturation/Lightness does with saturation and lightness 0; greys keep their "
         "colour. A hue turn mixes the channels, so it acts on the image, not on the tables. "
         "No undo step, no redraw.",
         [](CallContext& c, CallArgs& args) {
             const double hue = NumberIn(args, 0, "degrees", -360, 360);
             ChangeImage(c, [hue](const FilterContext& context) {
                 ForEachRow(context, [&](int y) {
                     HueSaturationLightnessRow(SourceRow(context, y), TargetRow(context, y), hue, 0,
                                               0, context.source.width);
                 });
             });
             return Reply::Nil();
         }},
        {"Wib_Gamma",
         kFamily,
         {{"gamma", ArgType::Number}},
         kNothing,
         "Follows each look-up table with v -> 255 (v / 255)^(1 / gamma), rounded, for gamma "
         "0.1..10. The image is untouched until Wib_SetLutImage.",
         [](CallContext& c, CallArgs& args) {
             ComposeAll(c, GammaLut(NumberIn(args, 0, "gamma", 0.1, 10)));
             return Reply::Nil();
         }},
        {"Wib_Contrast",
         kFamily,
         {{"contrast", ArgType::Integer}},
         kNothing,
         "Follows each look-up table with v -> (v - 127.5) (100 + contrast) / 100 + 127.5, "
         "rounded and clamped, for contrast -100..100. The image is untouched until "
         "Wib_SetLutImage.",
         [](CallContext& c, CallArgs& args) {
             const double contrast = NumberIn(args, 0, "contrast", -100, 100);
             ComposeAll(c, BrightnessContrastLut(0, static_cast<int>(contrast)));
             return Reply::Nil();
         }},
        {"Wib_SetLutImage",
         kFamily,
         {},
         kNothing,
         "Puts the image through the look-up tables (red, green and blue planes each through "
         "their own) and, while Wib_SetGrayscale is on, makes the looked-up colour its grey "
         "(299 R + 587 G + 114 B + 500) / 1000; through the selection. No undo step, no "
         "redraw.",
         [](CallContext& c, CallArgs&) {
             const ChannelLuts luts = c.server.luts;
             const bool grey = c.server.greyLuts;
             ChangeImage(c, [&](const FilterContext& context) { ApplyLuts(context, luts, grey); });
             return Reply::Nil();
         }},
        {"Wib_SetGrayscale",
         kFamily,
         {{"flag", ArgType::Flag}},
         kNothing,
         "Whether Wib_SetLutImage gives grey: -1 on, anything else off.",
         [](CallContext& c, CallArgs& args) {
             c.server.greyLuts = args.integer(0) == -1;
             return Reply::Nil();
         }},
        {"Wib_GetGrayscale",
         kFamily,
         {},
         {ResultType::Flag, "integer: -1 while Wib_SetLutImage gives grey, else 0"},
         "What Wib_SetGrayscale last set; off when the program starts.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(c.server.greyLuts ? -1 : 0); }},
        {"Wib_InitLuts",
         kFamily,
         {},
         kNothing,
         "Sets the three look-up tables back to v -> v, as they are when the program starts. "
         "The grey setting stays.",
         [](CallContext& c, CallArgs&) {
             c.server.luts = {IdentityLut(), IdentityLut(), IdentityLut()};
             return Reply::Nil();
         }},
        {"Wib_AdjustColor",
         kFamily,
         {{"colour", ArgType::Integer},
          {"hue", ArgType::Number},
          {"saturation", ArgType::Integer},
          {"lightness", ArgType::Integer}},
         {ResultType::Integer, "integer: the packed colour"},
         "One packed colour as Hue/Saturation/Lightness would change it: hue turned by "
         "-180..180 degrees, saturation scaled by (100 + saturation) / 100 (-100..100, at most "
         "full), then moved toward white (lightness > 0) or black by |lightness| percent "
         "(-100..100). Any value out of range is error 5.",
         [](CallContext&, CallArgs& args) {
             const PackedColour colour = ColourArg(args, 0);
             const double hue = NumberIn(args, 1, "hue", -180, 180);
             const double saturation = NumberIn(args, 2, "saturation", -100, 100);
             const double lightness = NumberIn(args, 3, "lightness", -100, 100);
             return Reply::Integer(AdjustColour(colour, hue, static_cast<int>(saturation),
                                                static_cast<int>(lightness)));
         }},
    };
}

}  // namespace wib
