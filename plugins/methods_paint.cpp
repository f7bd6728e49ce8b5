// SPDX-License-Identifier: GPL-3.0-or-later
// Strokes, brush settings, the brush image and the colour wells.

#include <algorithm>

#include "core/workspace.h"
#include "paint/brush_controls.h"
#include "paint/paint_session.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kStrokes = "Strokes";
constexpr const char* kSettings = "Brush settings";
constexpr const char* kImage = "Brush image";
constexpr const char* kColours = "Colour and look-up tables";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};

PaintSession& Paint(CallContext& c) {
    return c.host.paint;
}

BrushImage& Brush(CallContext& c) {
    return c.workspace().brush;
}

int Arg(const CallArgs& args, std::size_t i) {
    return static_cast<int>(args.integer(i));
}

// Reads a value a plug-in sets, refusing it outside [minimum, maximum].
int InRange(const CallArgs& args, std::size_t i, const char* what, int minimum, int maximum) {
    const long long value = args.integer(i);
    if (value < minimum || value > maximum) {
        throw BadCall(std::string(what) + " must be from " + std::to_string(minimum) + " to " +
                      std::to_string(maximum));
    }
    return static_cast<int>(value);
}

MethodSpec Stroke(const char* name, const char* summary, void (PaintSession::*step)(float, float)) {
    return {name,
            kStrokes,
            {{"x", ArgType::Single}, {"y", ArgType::Single}},
            kNothing,
            summary,
            [step](CallContext& c, CallArgs& args) {
                (Paint(c).*step)(static_cast<float>(args.number(0)),
                                 static_cast<float>(args.number(1)));
                return Reply::Nil();
            }};
}

// A brush option read and set through its panel control, so the panels and
// the brush follow as they do for a user's change.
std::pair<MethodSpec, MethodSpec> Option(const char* getter, const char* setter,
                                         const char* control, const char* what) {
    const BrushControl* bound = FindBrushControl("BrushOptions", control);
    const std::string range =
        std::to_string(bound->minimum) + " to " + std::to_string(bound->maximum);
    MethodSpec get{getter,
                   kSettings,
                   {},
                   {ResultType::Integer, "integer"},
                   std::string("The brush's ") + what + ".",
                   [bound](CallContext& c, CallArgs&) {
                       return Reply::Integer(bound->get(Paint(c).state().options));
                   }};
    MethodSpec set{setter,
                   kSettings,
                   {{"value", ArgType::Integer}},
                   kNothing,
                   std::string("Sets the brush's ") + what + ", " + range + ".",
                   [bound, what](CallContext& c, CallArgs& args) {
                       const int value = InRange(args, 0, what, bound->minimum, bound->maximum);
                       PaintSession& paint = Paint(c);
                       SetBrushControl(paint.state().options, *bound, value);
                       paint.optionsChanged();
                       return Reply::Nil();
                   }};
    return {std::move(get), std::move(set)};
}

// Brush planes take any size: the brush has its own.
MethodSpec BrushPlaneSetter(const char* name, const char* summary, Plane BrushImage::*plane) {
    return {name,
            kImage,
            {{"plane", ArgType::Plane}},
            kNothing,
            summary,
            [plane](CallContext& c, CallArgs& args) {
                Brush(c).*plane = args.takePlane(0);
                Paint(c).optionsChanged();
                return Reply::Nil();
            }};
}

MethodSpec ColourGetter(const char* name, const char* summary, PackedColour ColourState::*colour) {
    return {name,
            kColours,
            {},
            {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
            summary,
            [colour](CallContext& c, CallArgs&) {
                return Reply::Integer((c.workspace().colours.*colour).packed());
            }};
}

MethodSpec ColourSetter(const char* name, const char* summary,
                        void (PaintSession::*set)(PackedColour)) {
    return {name,
            kColours,
            {{"colour", ArgType::Integer}},
            kNothing,
            summary,
            [set](CallContext& c, CallArgs& args) {
                const auto colour = PackedColour::fromPacked(args.integer(0));
                if (!colour) {
                    throw BadCall("a colour must be from 0 to 16777215");
                }
                (Paint(c).*set)(*colour);
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> PaintMethods() {
    std::vector<MethodSpec> methods{
        Stroke("Wib_BrushDown", "Places the pen at (x, y), canvas-window units, painting nothing.",
               &PaintSession::brushDown),
        Stroke("Wib_BrushMove",
               "Paints from the last placed or painted point to (x, y) with the current brush.",
               &PaintSession::brushMove),
        Stroke("Wib_BrushUp", "Places the pen at (x, y), ending the stroke.",
               &PaintSession::brushUp),
        {"Wib_GetInterfacePen",
         kStrokes,
         {},
         {ResultType::Number, "number 0..1"},
         "The pen pressure of the last canvas event (1 for the mouse).",
         [](CallContext& c, CallArgs&) { return Reply::Number(Paint(c).state().pressure); }},

        {"Wib_GetBrushSettings",
         kSettings,
         {},
         {ResultType::Text, "text: the file's path"},
         "Writes the brush settings record (176 bytes) to WT_BrushSettings.dat in the temporary "
         "folder and answers its path.",
         [](CallContext& c, CallArgs&) {
             const std::string path = Paint(c).writeBrushSettings();
             if (path.empty()) {
                 throw BadCall("the brush settings could not be written");
             }
             return Reply::Text(path);
         }},
        {"Wib_SetBrushSettings",
         kSettings,
         {{"path", ArgType::Text}},
         {ResultType::Flag, "flag: -1 when applied"},
         "Reads a brush settings record and sets every control from it. A missing or short file "
         "is reported to the user and changes nothing (answer 0).",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(Paint(c).readBrushSettings(args.text(0)) ? -1 : 0);
         }},
        {"Wib_GetBrushType",
         kSettings,
         {},
         {ResultType::Integer, "integer: 0 smooth, 1 dabs, 2 image dabs"},
         "Which brush-type button is down.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<int>(Paint(c).brushType()));
         }},
        {"Wib_SetBrushType",
         kSettings,
         {{"type", ArgType::Integer}},
         kNothing,
         "Presses brush-type button 0, 1 or 2; any other value changes nothing.",
         [](CallContext& c, CallArgs& args) {
             Paint(c).setBrushType(Arg(args, 0));
             return Reply::Nil();
         }},
        {"Wib_SetInternalBrush",
         kSettings,
         {{"brush", ArgType::Integer}},
         kNothing,
         "Makes a built-in brush current: 0 hard round, 1 soft airbrush, 2 bristle, 3 chalk.",
         [](CallContext& c, CallArgs& args) {
             const int brush = InRange(args, 0, "brush", 0, kBuiltinBrushCount - 1);
             Paint(c).chooseBuiltinBrush(static_cast<BuiltinBrush>(brush));
             return Reply::Nil();
         }},
        {"Wib_ReplaceInternalBrush",
         kSettings,
         {{"brush", ArgType::Integer}},
         kNothing,
         "The brush image's shape takes the place of built-in brush 0..3 (scaled to the Size "
         "control) for the rest of the session.",
         [](CallContext& c, CallArgs& args) {
             const int brush = InRange(args, 0, "brush", 0, kBuiltinBrushCount - 1);
             if (!Paint(c).replaceBuiltinBrush(brush)) {
                 throw BadCall("there is no brush image to take the shape from");
             }
             return Reply::Nil();
         }},
        {"Wib_Get_InternalBrushID",
         kSettings,
         {},
         {ResultType::Integer, "integer"},
         "The built-in brush last chosen, 0..3.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(Paint(c).state().options.builtinBrush);
         }},
    };
    for (auto [get, set] :
         {Option("Wib_GetBrushMode", "Wib_SetBrushMode", "KQ_Dropslider3", "paint mode"),
          Option("Wib_GetBrushSteps", "Wib_SetBrushSteps", "HProp2", "spacing"),
          Option("Wib_GetBrushOpacity", "Wib_SetBrushOpacity", "HProp1", "opacity"),
          Option("Wib_GetBrushSize", "Wib_SetBrushSize", "HScroll1", "size")}) {
        methods.push_back(std::move(get));
        methods.push_back(std::move(set));
    }
    std::vector<MethodSpec> image{
        {"Wib_GetBrushWidth",
         kImage,
         {},
         {ResultType::Integer, "integer"},
         "The brush image's width.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(Brush(c).mask().stride()));
         }},
        {"Wib_GetBrushHeight",
         kImage,
         {},
         {ResultType::Integer, "integer"},
         "The brush image's height.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(Brush(c).mask().rows()));
         }},
        {"Wib_CreateEmptyBrush",
         kImage,
         {{"width", ArgType::Short}, {"height", ArgType::Short}},
         kNothing,
         "Makes a brush image of width x height (1 to 1024): black and fully transparent, so it "
         "paints nothing until its planes are set.",
         [](CallContext& c, CallArgs& args) {
             const int width = InRange(args, 0, "width", 1, 1024);
             const int height = InRange(args, 1, "height", 1, 1024);
             Brush(c).makeBlank(width, height);
             Paint(c).optionsChanged();
             return Reply::Nil();
         }},
        {"Wib_ActivateCustomBrush",
         kImage,
         {{"on", ArgType::Flag}},
         kNothing,
         "Paints with the brush image (-1) or the built-in brush (0).",
         [](CallContext& c, CallArgs& args) {
             PaintSession& paint = Paint(c);
             paint.setImageBrushActive(args.integer(0) == -1);
             paint.optionsChanged();
             return Reply::Nil();
         }},
        BrushPlaneSetter("Wib_SetBrushRBuffer", "Replaces the brush image's red plane.",
                         &BrushImage::R),
        BrushPlaneSetter("Wib_SetBrushGBuffer", "Replaces the brush image's green plane.",
                         &BrushImage::G),
        BrushPlaneSetter("Wib_SetBrushBBuffer", "Replaces the brush image's blue plane.",
                         &BrushImage::B),
        {"Wib_SetBrushABuffer",
         kImage,
         {{"plane", ArgType::Plane}},
         kNothing,
         "Replaces the brush image's alpha plane; the brush's shape follows it (255 paints "
         "fully, 0 not at all).",
         [](CallContext& c, CallArgs& args) {
             Brush(c).setAlpha(args.takePlane(0));
             Paint(c).optionsChanged();
             return Reply::Nil();
         }},
        {"Wib_GetBrushA",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}},
         {ResultType::Integer, "byte"},
         "One alpha value of the brush image.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(Brush(c).A().at(Arg(args, 0), Arg(args, 1)));
         }},
        {"Wib_SetBrushA",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}, {"alpha", ArgType::Channel}},
         kNothing,
         "Sets one alpha value of the brush image, and the brush's shape there.",
         [](CallContext& c, CallArgs& args) {
             Brush(c).setAlpha(Arg(args, 0), Arg(args, 1),
                               static_cast<std::uint8_t>(args.integer(2)));
             return Reply::Nil();
         }},
        {"Wib_GetBrushRGB",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}},
         {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
         "One pixel of the brush image, packed.",
         [](CallContext& c, CallArgs& args) {
             const BrushImage& brush = Brush(c);
             const int x = Arg(args, 0), y = Arg(args, 1);
             return Reply::Integer(
                 PackedColour{brush.R.at(x, y), brush.G.at(x, y), brush.B.at(x, y)}.packed());
         }},
        {"Wib_SetBrushRGB",
         kImage,
         {{"x", ArgType::Short},
          {"y", ArgType::Short},
          {"r", ArgType::Channel},
          {"g", ArgType::Channel},
          {"b", ArgType::Channel}},
         kNothing,
         "Sets one pixel of the brush image.",
         [](CallContext& c, CallArgs& args) {
             BrushImage& brush = Brush(c);
             const int x = Arg(args, 0), y = Arg(args, 1);
             std::uint8_t& r = brush.R.at(x, y);
             std::uint8_t& g = brush.G.at(x, y);
             std::uint8_t& b = brush.B.at(x, y);
             r = static_cast<std::uint8_t>(args.integer(2));
             g = static_cast<std::uint8_t>(args.integer(3));
             b = static_cast<std::uint8_t>(args.integer(4));
             return Reply::Nil();
         }},
        ColourGetter("Wib_GetPrimaryColor", "The primary colour.", &ColourState::primary),
        ColourSetter("Wib_SetPrimaryColor", "Sets the primary colour.",
                     &PaintSession::setPrimaryColour),
        ColourGetter("Wib_GetSecondaryColor", "The secondary colour.", &ColourState::secondary),
        ColourSetter("Wib_SetSecondaryColor", "Sets the secondary colour.",
                     &PaintSession::setSecondaryColour),
        {"Wib_GetWells",
         kColours,
         {{"well", ArgType::Integer}},
         {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
         "The colour of a well: 0 the primary, 1 the secondary.",
         [](CallContext& c, CallArgs& args) {
             const ColourState& wells = c.workspace().colours;
             return Reply::Integer(
                 (InRange(args, 0, "well", 0, 1) == 0 ? wells.primary : wells.secondary).packed());
         }},
        {"Wib_SetWells",
         kColours,
         {{"primary", ArgType::Integer}, {"secondary", ArgType::Integer}},
         kNothing,
         "Sets both wells at once, as packed colours; a bad colour changes neither.",
         [](CallContext& c, CallArgs& args) {
             const auto primary = PackedColour::fromPacked(args.integer(0));
             const auto secondary = PackedColour::fromPacked(args.integer(1));
             if (!primary || !secondary) {
                 throw BadCall("a colour must be from 0 to 16777215");
             }
             Paint(c).setPrimaryColour(*primary);
             Paint(c).setSecondaryColour(*secondary);
             return Reply::Nil();
         }},
    };
    for (MethodSpec& method : image) {
        methods.push_back(std::move(method));
    }
    return methods;
}

}  // namespace wib
