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
    if (c.host.paint == nullptr) {
        throw BadCall("this program paints nothing");
    }
    return *c.host.paint;
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

Plane& BrushPlane(CallContext& c, Plane Document::*plane) {
    return c.document().*plane;
}

// Brush planes take any size: the brush has its own.
MethodSpec BrushPlaneSetter(const char* name, const char* summary, Plane Document::*plane) {
    return {name,
            kImage,
            {{"plane", ArgType::Plane}},
            kNothing,
            summary,
            [plane](CallContext& c, CallArgs& args) {
                BrushPlane(c, plane) = args.takePlane(0);
                Paint(c).optionsChanged();
                return Reply::Nil();
            }};
}

// The brush's shape follows its alpha: opaque is full strength.
void MaskFromAlpha(Document& doc) {
    doc.BrushMask = doc.BrushA;
    for (std::size_t i = 0; i < doc.BrushMask.count(); ++i) {
        doc.BrushMask.data()[i] = static_cast<std::uint8_t>(255 - doc.BrushA.data()[i]);
    }
}

MethodSpec ColourGetter(const char* name, const char* summary,
                        std::int32_t (PaintSession::*get)() const) {
    return {
        name,    kColours,
        {},      {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
        summary, [get](CallContext& c, CallArgs&) { return Reply::Integer((Paint(c).*get)()); }};
}

MethodSpec ColourSetter(const char* name, const char* summary,
                        bool (PaintSession::*set)(std::int64_t)) {
    return {name,
            kColours,
            {{"colour", ArgType::Integer}},
            kNothing,
            summary,
            [set](CallContext& c, CallArgs& args) {
                PaintSession& paint = Paint(c);
                if (!(paint.*set)(args.integer(0))) {
                    throw BadCall("a colour must be from 0 to 16777215");
                }
                paint.optionsChanged();
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> PaintMethods() {
    std::vector<MethodSpec> methods{
        Stroke("Wib_BrushDown", "Places the pen at (x, y), canvas-window units, painting nothing.",
               &PaintSession::Wib_BrushDown),
        Stroke("Wib_BrushMove",
               "Paints from the last placed or painted point to (x, y) with the current brush.",
               &PaintSession::Wib_BrushMove),
        Stroke("Wib_BrushUp", "Places the pen at (x, y), ending the stroke.",
               &PaintSession::Wib_BrushUp),
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
             const std::string path = Paint(c).Wib_GetBrushSettings();
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
             return Reply::Integer(Paint(c).Wib_SetBrushSettings(args.text(0)) ? -1 : 0);
         }},
        {"Wib_GetBrushType",
         kSettings,
         {},
         {ResultType::Integer, "integer: 0 smooth, 1 dabs, 2 image dabs"},
         "Which brush-type button is down.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(Paint(c).Wib_GetBrushType()); }},
        {"Wib_SetBrushType",
         kSettings,
         {{"type", ArgType::Integer}},
         kNothing,
         "Presses brush-type button 0, 1 or 2; any other value changes nothing.",
         [](CallContext& c, CallArgs& args) {
             Paint(c).Wib_SetBrushType(Arg(args, 0));
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
             return Reply::Integer(static_cast<long long>(c.document().BrushMask.stride()));
         }},
        {"Wib_GetBrushHeight",
         kImage,
         {},
         {ResultType::Integer, "integer"},
         "The brush image's height.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(c.document().BrushMask.rows()));
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
             Document& doc = c.document();
             for (Plane* plane : {&doc.BrushR, &doc.BrushG, &doc.BrushB, &doc.BrushA}) {
                 *plane = Plane(width - 1, height - 1, 0);
             }
             doc.BrushMask = Plane(width - 1, height - 1, 255);
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
                         &Document::BrushR),
        BrushPlaneSetter("Wib_SetBrushGBuffer", "Replaces the brush image's green plane.",
                         &Document::BrushG),
        BrushPlaneSetter("Wib_SetBrushBBuffer", "Replaces the brush image's blue plane.",
                         &Document::BrushB),
        {"Wib_SetBrushABuffer",
         kImage,
         {{"plane", ArgType::Plane}},
         kNothing,
         "Replaces the brush image's alpha plane; the brush's shape follows it (255 paints "
         "fully, 0 not at all).",
         [](CallContext& c, CallArgs& args) {
             c.document().BrushA = args.takePlane(0);
             MaskFromAlpha(c.document());
             Paint(c).optionsChanged();
             return Reply::Nil();
         }},
        {"Wib_GetBrushA",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}},
         {ResultType::Integer, "byte"},
         "One alpha value of the brush image.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(c.document().BrushA.at(Arg(args, 0), Arg(args, 1)));
         }},
        {"Wib_SetBrushA",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}, {"alpha", ArgType::Channel}},
         kNothing,
         "Sets one alpha value of the brush image, and the brush's shape there.",
         [](CallContext& c, CallArgs& args) {
             Document& doc = c.document();
             const auto alpha = static_cast<std::uint8_t>(args.integer(2));
             std::uint8_t& mask = doc.BrushMask.at(Arg(args, 0), Arg(args, 1));
             doc.BrushA.at(Arg(args, 0), Arg(args, 1)) = alpha;
             mask = static_cast<std::uint8_t>(255 - alpha);
             return Reply::Nil();
         }},
        {"Wib_GetBrushRGB",
         kImage,
         {{"x", ArgType::Short}, {"y", ArgType::Short}},
         {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
         "One pixel of the brush image, packed.",
         [](CallContext& c, CallArgs& args) {
             const Document& doc = c.document();
             const int x = Arg(args, 0), y = Arg(args, 1);
             return Reply::Integer(doc.BrushR.at(x, y) + 256 * doc.BrushG.at(x, y) +
                                   65536 * doc.BrushB.at(x, y));
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
             Document& doc = c.document();
             const int x = Arg(args, 0), y = Arg(args, 1);
             std::uint8_t& r = doc.BrushR.at(x, y);
             std::uint8_t& g = doc.BrushG.at(x, y);
             std::uint8_t& b = doc.BrushB.at(x, y);
             r = static_cast<std::uint8_t>(args.integer(2));
             g = static_cast<std::uint8_t>(args.integer(3));
             b = static_cast<std::uint8_t>(args.integer(4));
             return Reply::Nil();
         }},
        ColourGetter("Wib_GetPrimaryColor", "The primary colour.",
                     &PaintSession::Wib_GetPrimaryColor),
        ColourSetter("Wib_SetPrimaryColor", "Sets the primary colour.",
                     &PaintSession::Wib_SetPrimaryColor),
        ColourGetter("Wib_GetSecondaryColor", "The secondary colour.",
                     &PaintSession::Wib_GetSecondaryColor),
        ColourSetter("Wib_SetSecondaryColor", "Sets the secondary colour.",
                     &PaintSession::Wib_SetSecondaryColor),
    };
    for (MethodSpec& method : image) {
        methods.push_back(std::move(method));
    }
    return methods;
}

}  // namespace wib
