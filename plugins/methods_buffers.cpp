// Pixel and buffer access: the image planes, their size and the selection.

#include "core/buffer_access.h"
#include "core/canvas_size.h"
#include "core/document_build.h"
#include "core/workspace.h"
#include "plugins/method_families.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Pixel and buffer access";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr MethodResult kPlane{ResultType::Plane, "plane: a copy of the whole plane"};

const std::vector<ArgSpec> kPoint = {{"x", ArgType::Short}, {"y", ArgType::Short}};
const std::vector<ArgSpec> kColour = {
    {"r", ArgType::Channel}, {"g", ArgType::Channel}, {"b", ArgType::Channel}};

std::vector<ArgSpec> Join(std::vector<ArgSpec> first, const std::vector<ArgSpec>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

int Arg(const CallArgs& args, std::size_t i) {
    return static_cast<int>(args.integer(i));
}

std::uint8_t ByteArg(const CallArgs& args, std::size_t i) {
    return static_cast<std::uint8_t>(args.integer(i));
}

using PixelRead = std::uint8_t (*)(const Document&, int, int);

MethodSpec ChannelGetter(const char* name, const char* summary, PixelRead read) {
    return {name,
            kFamily,
            kPoint,
            {ResultType::Integer, "byte"},
            summary,
            [read](CallContext& c, CallArgs& args) {
                return Reply::Integer(read(c.document(), Arg(args, 0), Arg(args, 1)));
            }};
}

MethodSpec PlaneGetter(const char* name, const char* summary, Plane Document::*plane) {
    return {name,
            kFamily,
            {},
            kPlane,
            summary,
            [plane](CallContext& c, CallArgs&) {
                return Reply::BorrowedPlane(c.document().*plane); }};
}

using PlaneSet = bool (*)(Document&, Plane&&);

MethodSpec PlaneSetter(const char* name, const char* summary, PlaneSet set) {
    return {name,
            kFamily,
            {{"plane", ArgType::Plane}},
            kNothing,
            summary,
            [set](CallContext& c, CallArgs& args) {
                set(c.document(), args.takePlane(0));
                return Reply::Nil();
            }};
}

using BrushRead = std::optional<Plane> (*)(const Document&);

MethodSpec BrushGetter(const char* name, const char* summary, BrushRead read) {
    return {name,
            kFamily,
            {},
            {ResultType::BrushPlane, "plane, or the integer -1 while no custom brush is active"},
            summary,
            [read](CallContext& c, CallArgs&) {
                std::optional<Plane> plane = read(c.document());
                return plane ? Reply::OwnedPlane(std::move(*plane)) : Reply::Integer(-1);
            }};
}

MethodSpec AlphaSwitch(const char* name, const char* summary, std::uint8_t value) {
    return {name, kFamily, {}, kNothing, summary, [value](CallContext& c, CallArgs&) {
                c.document().AlphaBitsFlag = value;
                Wib_Refresh(c.workspace());
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> BufferMethods() {
    return {
        {"Wib_BufferWidth",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "The document width in pixels.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(Wib_BufferWidth(c.document())); }},
        {"Wib_BufferHeight",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "The document height in pixels.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(Wib_BufferHeight(c.document())); }},
        {"Wib_GetRGB",
         kFamily,
         kPoint,
         {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
         "One pixel of the main buffer, packed.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(Wib_GetRGB(c.document(), Arg(args, 0), Arg(args, 1)));
         }},
        ChannelGetter("Wib_GetR", "The red byte of one pixel.", Wib_GetR),
        ChannelGetter("Wib_GetG", "The green byte of one pixel.", Wib_GetG),
        ChannelGetter("Wib_GetB", "The blue byte of one pixel.", Wib_GetB),
        {"Wib_SetRGB", kFamily, Join(kPoint, kColour), kNothing,
         "Writes one pixel's three channels; no clipping, no redraw.",
         [](CallContext& c, CallArgs& args) {
             Wib_SetRGB(c.document(), Arg(args, 0), Arg(args, 1), ByteArg(args, 2),
                        ByteArg(args, 3), ByteArg(args, 4));
             return Reply::Nil();
         }},
        PlaneGetter("Wib_GetRBuffer", "The red plane of the main buffer.", &Document::RBuffer),
        PlaneGetter("Wib_GetGBuffer", "The green plane of the main buffer.", &Document::GBuffer),
        PlaneGetter("Wib_GetBBuffer", "The blue plane of the main buffer.", &Document::BBuffer),
        PlaneGetter("Wib_GetABuffer", "The alpha (selection) plane.", &Document::ABuffer),
        {"Wib_SetRbuffer",
         kFamily,
         {{"plane", ArgType::Plane}},
         kNothing,
         "Replaces the red plane when both upper bounds match the current plane's. Otherwise "
         "nothing changes and the program shows \"Plugin fault.  Cannot set buffer because "
         "buffer size has changed.\"",
         [](CallContext& c, CallArgs& args) {
             Wib_SetRbuffer(c.workspace(), args.takePlane(0));
             return Reply::Nil();
         }},
        PlaneSetter("Wib_SetGBuffer",
                    "Replaces the green plane when both upper bounds match the current plane's."
                    " An array of another size changes nothing and shows nothing.",
                    Wib_SetGBuffer),
        PlaneSetter("Wib_SetBBuffer",
                    "Replaces the blue plane when both upper bounds match the current plane's."
                    " An array of another size changes nothing and shows nothing.",
                    Wib_SetBBuffer),
        PlaneSetter("Wib_SetABuffer",
                    "Replaces the alpha plane when both upper bounds match and recomputes the "
                    "selection bounds. An array of another size changes nothing and shows "
                    "nothing.",
                    Wib_SetABuffer),
        PlaneGetter("Wib_GetSwapRBuffer", "The red plane of the swap buffer.", &Document::SwapR),
        PlaneGetter("Wib_GetSwapGBuffer", "The green plane of the swap buffer.", &Document::SwapG),
        PlaneGetter("Wib_GetSwapBBuffer", "The blue plane of the swap buffer.", &Document::SwapB),
        PlaneSetter("Wib_SetSwapRBuffer",
                    "Replaces the red swap plane when both upper bounds match; silent otherwise.",
                    Wib_SetSwapRBuffer),
        PlaneSetter("Wib_SetSwapGBuffer",
                    "Replaces the green swap plane when both upper bounds match; silent "
                    "otherwise.",
                    Wib_SetSwapGBuffer),
        PlaneSetter("Wib_SetSwapBBuffer",
                    "Replaces the blue swap plane when both upper bounds match; silent "
                    "otherwise.",
                    Wib_SetSwapBBuffer),
        {"Wib_GetAlphabits",
         kFamily,
         {},
         {ResultType::Integer, "byte: 255 while the alpha buffer is in use, else 0"},
         "Whether the selection plane is in force.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(Wib_GetAlphabits(c.document())); }},
        AlphaSwitch("Wib_AlphaOn",
                    "Puts the selection plane in force (AlphaBitsFlag 255) and "
                    "redraws the canvas.",
                    255),
        AlphaSwitch("Wib_AlphaOff",
                    "Takes the selection plane out of force (AlphaBitsFlag 0) "
                    "and redraws the canvas.",
                    0),
        {"Wib_GetAlphaBounds",
         kFamily,
         {},
         {ResultType::Bounds, "array [left, top, right, bottom]"},
         "The inclusive box of alpha values above 0; right < left when nothing is selected.",
         [](CallContext& c, CallArgs&) {
             const AlphaBounds& b = c.document().SelectionBounds;
             msgpack::sbuffer packed;
             msgpack::pack(packed, std::vector<int>{b.left, b.top, b.right, b.bottom});
             return Reply::Packed(std::move(packed));
         }},
        BrushGetter("Wib_GetBrushRBuffer", "The red plane of the custom brush.",
                    Wib_GetBrushRBuffer),
        BrushGetter("Wib_GetBrushGBuffer", "The green plane of the custom brush.",
                    Wib_GetBrushGBuffer),
        BrushGetter("Wib_GetBrushBBuffer", "The blue plane of the custom brush.",
                    Wib_GetBrushBBuffer),
        BrushGetter("Wib_GetBrushABuffer", "The alpha plane of the custom brush.",
                    Wib_GetBrushABuffer),
        {"Wib_NewBuffer",
         kFamily,
         {{"width", ArgType::Short}, {"height", ArgType::Short}},
         kNothing,
         "Makes a new white image of that size: zoom 100, view anchors -1.0, one undo step, "
         "a redraw. A size the program cannot make gets its message and changes nothing.",
         [](CallContext& c, CallArgs& args) {
             Wib_NewBuffer(c.workspace(), Arg(args, 0), Arg(args, 1));
             return Reply::Nil();
         }},
        {"Wib_ClearBuffer", kFamily, kColour, kNothing,
         "Fills every pixel of the main buffer with the colour; no redraw.",
         [](CallContext& c, CallArgs& args) {
             Wib_ClearBuffer(c.document(), ByteArg(args, 0), ByteArg(args, 1), ByteArg(args, 2));
             return Reply::Nil();
         }},
        {"Wib_ChangeBufferSize", kFamily,
         Join(Join({{"newWidth", ArgType::Short}, {"newHeight", ArgType::Short}}, kColour),
              {{"anchor", ArgType::Integer}}),
         kNothing,
         "The canvas-size change: the old image sits at the anchor (0 top left ... 8 bottom "
         "right; others act as 0), new area gets the colour and alpha 255.",
         [](CallContext& c, CallArgs& args) {
             Wib_ChangeBufferSize(c.workspace(), Arg(args, 0), Arg(args, 1), ByteArg(args, 2),
                                  ByteArg(args, 3), ByteArg(args, 4), Arg(args, 5));
             return Reply::Nil();
         }},
        {"Wib_RenameBuffer",
         kFamily,
         {{"name", ArgType::Text}},
         kNothing,
         "Names the image. The program shows no document title yet: the automation server "
         "keeps the name and writes it to the message log.",
         [](CallContext& c, CallArgs& args) {
             c.server.bufferName = args.text(0);
             c.workspace().host.log.line("Image renamed to \"" + args.text(0) + "\".");
             return Reply::Nil();
         }},
    };
}

}  // namespace wib
