// SPDX-License-Identifier: GPL-3.0-or-later
// Pixel and buffer access: the image planes, their size and the selection.

#include "core/canvas_size.h"
#include "core/document_build.h"
#include "core/image_edit.h"
#include "core/workspace.h"
#include "fileio/image_files.h"
#include "filters/filter_row.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kPluginBufferSizeFault =
    "Plugin fault.  Cannot set buffer because buffer size has changed.";

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

MethodSpec ChannelGetter(const char* name, const char* summary, Plane Document::*plane) {
    return {name,
            kFamily,
            kPoint,
            {ResultType::Integer, "byte"},
            summary,
            [plane](CallContext& c, CallArgs& args) {
                return Reply::Integer((c.document().*plane).at(Arg(args, 0), Arg(args, 1)));
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

// Whole planes are taken over only when both upper bounds match; `misfit`,
// where given, is what the user is told otherwise.
MethodSpec PlaneSetter(const char* name, const char* summary, Plane Document::*plane,
                       const char* misfit = nullptr) {
    return {name,
            kFamily,
            {{"plane", ArgType::Plane}},
            kNothing,
            summary,
            [plane, misfit](CallContext& c, CallArgs& args) {
                ImageEdit edit(c.workspace(), kPluginEdit);
                if (!ReplacePlane(c.document().*plane, args.takePlane(0))) {
                    edit.nothingChanged();
                    if (misfit != nullptr) {
                        c.workspace().host.prompter.message(misfit);
                    }
                }
                return Reply::Nil();
            }};
}

MethodSpec BrushGetter(const char* name, const char* summary,
                       const Plane& (*read)(const BrushImage&)) {
    return {name,
            kFamily,
            {},
            {ResultType::BrushPlane, "plane, or the integer -1 while no custom brush is active"},
            summary,
            [read](CallContext& c, CallArgs&) {
                const BrushImage& brush = c.workspace().brush;
                return brush.active() ? Reply::BorrowedPlane(read(brush)) : Reply::Integer(-1);
            }};
}

MethodSpec AlphaSwitch(const char* name, const char* summary, std::uint8_t value) {
    return {name, kFamily, {}, kNothing, summary, [value](CallContext& c, CallArgs&) {
                c.document().AlphaBitsFlag = value;
                c.workspace().host.view.refresh();
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
         [](CallContext& c, CallArgs&) { return Reply::Integer(c.document().width); }},
        {"Wib_BufferHeight",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "The document height in pixels.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(c.document().height); }},
        {"Wib_GetRGB",
         kFamily,
         kPoint,
         {ResultType::Integer, "integer: R + 256 * G + 65536 * B"},
         "One pixel of the main buffer, packed.",
         [](CallContext& c, CallArgs& args) {
             const Document& doc = c.document();
             const int x = Arg(args, 0), y = Arg(args, 1);
             return Reply::Integer(
                 PackedColour{doc.RBuffer.at(x, y), doc.GBuffer.at(x, y), doc.BBuffer.at(x, y)}
                     .packed());
         }},
        ChannelGetter("Wib_GetR", "The red byte of one pixel.", &Document::RBuffer),
        ChannelGetter("Wib_GetG", "The green byte of one pixel.", &Document::GBuffer),
        ChannelGetter("Wib_GetB", "The blue byte of one pixel.", &Document::BBuffer),
        {"Wib_SetRGB", kFamily, Join(kPoint, kColour), kNothing,
         "Writes one pixel's three channels; no clipping, no redraw.",
         [](CallContext& c, CallArgs& args) {
             Document& doc = c.document();
             const int x = Arg(args, 0), y = Arg(args, 1);
             // All three are checked before any is written, so a bad call changes nothing.
             std::uint8_t& r = doc.RBuffer.at(x, y);
             std::uint8_t& g = doc.GBuffer.at(x, y);
             std::uint8_t& b = doc.BBuffer.at(x, y);
             const ImageEdit edit(c.workspace(), kPluginEdit);
             r = ByteArg(args, 2);
             g = ByteArg(args, 3);
             b = ByteArg(args, 4);
             return Reply::Nil();
         }},
        PlaneGetter("Wib_GetRBuffer", "The red plane of the main buffer.", &Document::RBuffer),
        PlaneGetter("Wib_GetGBuffer", "The green plane of the main buffer.", &Document::GBuffer),
        PlaneGetter("Wib_GetBBuffer", "The blue plane of the main buffer.", &Document::BBuffer),
        PlaneGetter("Wib_GetABuffer", "The alpha (selection) plane.", &Document::ABuffer),
        PlaneSetter("Wib_SetRbuffer",
                    "Replaces the red plane when both upper bounds match the current plane's. "
                    "Otherwise nothing changes and the program shows \"Plugin fault.  Cannot set "
                    "buffer because buffer size has changed.\"",
                    &Document::RBuffer, kPluginBufferSizeFault),
        PlaneSetter("Wib_SetGBuffer",
                    "Replaces the green plane when both upper bounds match the current plane's."
                    " An array of another size changes nothing and shows nothing.",
                    &Document::GBuffer),
        PlaneSetter("Wib_SetBBuffer",
                    "Replaces the blue plane when both upper bounds match the current plane's."
                    " An array of another size changes nothing and shows nothing.",
                    &Document::BBuffer),
        PlaneSetter("Wib_SetABuffer",
                    "Replaces the alpha plane when both upper bounds match. An array of another "
                    "size changes nothing and shows nothing.",
                    &Document::ABuffer),
        PlaneGetter("Wib_GetSwapRBuffer", "The red plane of the swap buffer.", &Document::SwapR),
        PlaneGetter("Wib_GetSwapGBuffer", "The green plane of the swap buffer.", &Document::SwapG),
        PlaneGetter("Wib_GetSwapBBuffer", "The blue plane of the swap buffer.", &Document::SwapB),
        PlaneSetter("Wib_SetSwapRBuffer",
                    "Replaces the red swap plane when both upper bounds match; silent otherwise.",
                    &Document::SwapR),
        PlaneSetter("Wib_SetSwapGBuffer",
                    "Replaces the green swap plane when both upper bounds match; silent "
                    "otherwise.",
                    &Document::SwapG),
        PlaneSetter("Wib_SetSwapBBuffer",
                    "Replaces the blue swap plane when both upper bounds match; silent "
                    "otherwise.",
                    &Document::SwapB),
        {"Wib_GetAlphabits",
         kFamily,
         {},
         {ResultType::Integer, "byte: 255 while the alpha buffer is in use, else 0"},
         "Whether the selection plane is in force.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(c.document().AlphaBitsFlag); }},
        AlphaSwitch("Wib_AlphaOn",
                    "Puts the selection plane in force (AlphaBitsFlag 255) and "
                    "redraws the canvas.",
                    255),
        AlphaSwitch("Wib_AlphaOff",
                    "Takes the selection plane out of force (AlphaBitsFlag 0) "
                    "and redraws the canvas.",
                    0),
        {"Wib_DoAlphaBlend",
         kFamily,
         {{"r", ArgType::Plane},
          {"g", ArgType::Plane},
          {"b", ArgType::Plane},
          {"flag", ArgType::Integer}},
         kNothing,
         "Blends the three planes (the document's shape) into the image through the alpha plane, "
         "as filters blend their result into a selection: main = (plane a + main (255 - a) + 127) "
         "/ 255; flag 1 weighs by 255 - a instead. Planes of another shape are error 5 and "
         "nothing changes.",
         [](CallContext& c, CallArgs& args) {
             const long long flag = args.integer(3);
             if (flag != 0 && flag != 1) {
                 throw BadCall("flag must be 0 or 1");
             }
             const Plane r = args.takePlane(0), g = args.takePlane(1), b = args.takePlane(2);
             ImageEdit edit(c.workspace(), kPluginEdit);
             if (!OverlayThroughAlpha(c.workspace(), r, g, b, static_cast<OverlayMode>(flag))) {
                 edit.nothingChanged();
                 throw BadCall("the planes must have the document's shape");
             }
             return Reply::Nil();
         }},
        {"Wib_GetAlphaBounds",
         kFamily,
         {},
         {ResultType::Bounds, "array [left, top, right, bottom]"},
         "The inclusive box of alpha values above 0; right < left when nothing is selected.",
         [](CallContext& c, CallArgs&) {
             const AlphaBounds b = SelectionBounds(c.document());
             msgpack::sbuffer packed;
             msgpack::pack(packed, std::vector<int>{b.left, b.top, b.right, b.bottom});
             return Reply::Packed(std::move(packed));
         }},
        BrushGetter("Wib_GetBrushRBuffer", "The red plane of the custom brush.",
                    [](const BrushImage& b) -> const Plane& { return b.R; }),
        BrushGetter("Wib_GetBrushGBuffer", "The green plane of the custom brush.",
                    [](const BrushImage& b) -> const Plane& { return b.G; }),
        BrushGetter("Wib_GetBrushBBuffer", "The blue plane of the custom brush.",
                    [](const BrushImage& b) -> const Plane& { return b.B; }),
        BrushGetter("Wib_GetBrushABuffer", "The alpha plane of the custom brush.",
                    [](const BrushImage& b) -> const Plane& { return b.A(); }),
        {"Wib_NewBuffer",
         kFamily,
         {{"width", ArgType::Short}, {"height", ArgType::Short}},
         kNothing,
         "Makes a new white image of that size: zoom 100, view anchors -1.0, one undo step, "
         "a redraw. A size the program cannot make gets its message and changes nothing.",
         [](CallContext& c, CallArgs& args) {
             NewDocument(c.workspace(), Arg(args, 0), Arg(args, 1));
             return Reply::Nil();
         }},
        {"Wib_ClearBuffer", kFamily, kColour, kNothing,
         "Fills every pixel of the main buffer with the colour; no redraw.",
         [](CallContext& c, CallArgs& args) {
             const ImageEdit edit(c.workspace(), kPluginEdit);
             ClearImage(c.document(), {ByteArg(args, 0), ByteArg(args, 1), ByteArg(args, 2)});
             return Reply::Nil();
         }},
        {"Wib_ChangeBufferSize", kFamily,
         Join(Join({{"newWidth", ArgType::Short}, {"newHeight", ArgType::Short}}, kColour),
              {{"anchor", ArgType::Integer}}),
         kNothing,
         "The canvas-size change: the old image sits at the anchor (0 top left ... 8 bottom "
         "right; others act as 0), new area gets the colour and alpha 255.",
         [](CallContext& c, CallArgs& args) {
             ChangeCanvasSize(c.workspace(), Arg(args, 0), Arg(args, 1),
                              {ByteArg(args, 2), ByteArg(args, 3), ByteArg(args, 4)}, Arg(args, 5));
             return Reply::Nil();
         }},
        {"Wib_RenameBuffer",
         kFamily,
         {{"name", ArgType::Text}},
         kNothing,
         "Renames the document: the window title and the file name change, so that File > "
         "Save then writes to the new name in the type it was last saved in. A bare name "
         "keeps the document's folder.",
         [](CallContext& c, CallArgs& args) {
             c.host.files.rename(c.workspace(), args.text(0));
             return Reply::Nil();
         }},
    };
}

}  // namespace wib
