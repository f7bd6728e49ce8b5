// SPDX-License-Identifier: GPL-3.0-or-later
// The layer stack: adding, deleting, merging and choosing layers, their
// properties and their planes. Layer 0 is the bottom one.

#include <array>
#include <optional>
#include <string>
#include <variant>

#include "core/image_edit.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Layers";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr MethodResult kLayerPlane{ResultType::Plane,
                                   "plane: a copy of one plane of the layer, the document's size"};

const ArgSpec kIndex{"index", ArgType::Integer};

// The layer an index argument names; error 9 outside the stack, as a
// coordinate outside a plane is.
int LayerArg(const CallContext& c, const CallArgs& args, std::size_t i) {
    const long long index = args.integer(i);
    if (index < 0 || index >= LayerCount(c.host.workspace)) {
        throw SubscriptError();
    }
    return static_cast<int>(index);
}

// A number 0..17 or a name such as "multiply".
BlendMode ModeArg(const CallArgs& args, std::size_t i) {
    const ParamValue value = args.value(i);
    std::optional<BlendMode> mode;
    if (const auto* number = std::get_if<long long>(&value)) {
        mode = *number >= 0 && *number < kBlendModeCount
                   ? BlendModeFromNumber(static_cast<int>(*number))
                   : std::nullopt;
    } else if (const auto* name = std::get_if<std::string>(&value)) {
        mode = BlendModeFromName(*name);
    }
    if (!mode) {
        throw BadCall("mode must be a mode number 0 to " + std::to_string(kBlendModeCount - 1) +
                      " or a mode name");
    }
    return *mode;
}

// Changes one property of a layer as the properties command does.
void Change(CallContext& c, int index, const LayerChange& change) {
    const ImageEdit edit(c.workspace(), kPluginEdit);
    ChangeLayer(c.workspace(), index, change);
}

MethodSpec PlaneGetter(const char* name, const char* summary, int channel) {
    return {
        name, kFamily, {kIndex}, kLayerPlane, summary, [channel](CallContext& c, CallArgs& args) {
            const LayerPlanesView planes = LayerPlanesOf(c.workspace(), LayerArg(c, args, 0));
            const std::array<const Plane*, 4> all{planes.r, planes.g, planes.b, planes.a};
            const Plane* plane = all[static_cast<std::size_t>(channel)];
            if (plane == nullptr) {
                const Document& doc = c.document();
                return Reply::OwnedPlane(Plane(doc.width, doc.height, 255));
            }
            return Reply::BorrowedPlane(*plane);
        }};
}

// A plane of another shape than the document's changes nothing and shows
// nothing, as the green, blue and alpha setters of the main buffer.
MethodSpec PlaneSetter(const char* name, const char* summary, int channel) {
    return {name,
            kFamily,
            {kIndex, {"plane", ArgType::Plane}},
            kNothing,
            summary,
            [channel](CallContext& c, CallArgs& args) {
                const int index = LayerArg(c, args, 0);
                ImageEdit edit(c.workspace(), kPluginEdit);
                if (!SetLayerPlane(c.workspace(), index, channel, args.takePlane(1))) {
                    edit.nothingChanged();
                }
                return Reply::Nil();
            }};
}

Reply LayerInfo(const LayerProperties& layer) {
    msgpack::sbuffer packed;
    msgpack::packer<msgpack::sbuffer> packer(packed);
    packer.pack_map(5);
    packer.pack(std::string("name"));
    packer.pack(layer.name);
    packer.pack(std::string("opacity"));
    packer.pack(static_cast<int>(layer.opacity));
    packer.pack(std::string("mode"));
    packer.pack(std::string(BlendModeName(layer.mode)));
    packer.pack(std::string("visible"));
    packer.pack(layer.visible ? -1 : 0);
    packer.pack(std::string("locked"));
    packer.pack(layer.lockPixels ? -1 : 0);
    return Reply::Packed(std::move(packed));
}

}  // namespace

std::vector<MethodSpec> LayerMethods() {
    return {
        {"Wib_AddLayer",
         kFamily,
         {},
         kNothing,
         "Adds a transparent layer above the current one and makes it current.",
         [](CallContext& c, CallArgs&) {
             const ImageEdit edit(c.workspace(), kPluginEdit);
             AddLayer(c.workspace());
             return Reply::Nil();
         }},
        {"Wib_DeleteLayer",
         kFamily,
         {kIndex},
         kNothing,
         "Deletes a layer. When it was current, the layer that moves into its place becomes "
         "current (the one below, for the top layer). The last layer stays, with the program's "
         "message.",
         [](CallContext& c, CallArgs& args) {
             const int index = LayerArg(c, args, 0);
             ImageEdit edit(c.workspace(), kPluginEdit);
             if (!DeleteLayer(c.workspace(), index)) {
                 edit.nothingChanged();
             }
             return Reply::Nil();
         }},
        {"Wib_MergeToCurrent",
         kFamily,
         {},
         kNothing,
         "Merges the layer above the current one down into the current one, which stays "
         "current, keeps its name and visibility and gets opacity 255 and mode normal, as Merge "
         "down does. On the top layer nothing changes.",
         [](CallContext& c, CallArgs&) {
             Workspace& workspace = c.workspace();
             const int above = CurrentLayer(workspace) + 1;
             if (above < LayerCount(workspace)) {
                 const ImageEdit edit(workspace, kPluginEdit);
                 SelectLayer(workspace, above);
                 MergeDown(workspace);
             }
             return Reply::Nil();
         }},
        {"Wib_GetLayerCount",
         kFamily,
         {},
         {ResultType::Integer, "integer: at least 1"},
         "How many layers the picture has.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(LayerCount(c.workspace())); }},
        {"Wib_GetCurrentLayer",
         kFamily,
         {},
         {ResultType::Integer, "integer: 0 the bottom layer"},
         "The index of the current layer, whose pixels are the main buffer.",
         [](CallContext& c, CallArgs&) { return Reply::Integer(CurrentLayer(c.workspace())); }},
        {"Wib_SetCurrentLayer",
         kFamily,
         {kIndex},
         kNothing,
         "Makes a layer current: its pixels become the main buffer. Not an undo step.",
         [](CallContext& c, CallArgs& args) {
             SelectLayer(c.workspace(), LayerArg(c, args, 0));
             return Reply::Nil();
         }},
        {"Wib_GetLayerOpacity",
         kFamily,
         {kIndex},
         {ResultType::Integer, "byte: 0 transparent ... 255 opaque"},
         "A layer's opacity.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(LayerAt(c.workspace(), LayerArg(c, args, 0)).opacity);
         }},
        {"Wib_SetLayerOpacity",
         kFamily,
         {kIndex, {"opacity", ArgType::Channel}},
         kNothing,
         "Sets a layer's opacity, 0..255.",
         [](CallContext& c, CallArgs& args) {
             Change(c, LayerArg(c, args, 0), {.opacity = static_cast<int>(args.integer(1))});
             return Reply::Nil();
         }},
        {"Wib_GetLayerMode",
         kFamily,
         {kIndex},
         {ResultType::Integer, "integer: the mode number, 0 normal ... 17 subtract"},
         "A layer's blend mode as its number.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(
                 static_cast<int>(LayerAt(c.workspace(), LayerArg(c, args, 0)).mode));
         }},
        {"Wib_SetLayerMode",
         kFamily,
         {kIndex, {"mode", ArgType::Value}},
         kNothing,
         "Sets a layer's blend mode by number (0..17) or by name (\"normal\", \"multiply\", ...); "
         "anything else is error 5.",
         [](CallContext& c, CallArgs& args) {
             const int index = LayerArg(c, args, 0);
             Change(c, index, {.mode = ModeArg(args, 1)});
             return Reply::Nil();
         }},
        PlaneGetter("Wib_GetLayerR", "The red plane of a layer in the current frame.", 0),
        PlaneGetter("Wib_GetLayerG", "The green plane of a layer in the current frame.", 1),
        PlaneGetter("Wib_GetLayerB", "The blue plane of a layer in the current frame.", 2),
        PlaneGetter("Wib_GetLayerA",
                    "The coverage of a layer in the current frame: 0 clear ... 255 covered; all "
                    "255 for an opaque layer.",
                    3),
        PlaneSetter("Wib_SetLayerR",
                    "Replaces the red plane of a layer in the current frame when the plane has the "
                    "document's size; silent otherwise.",
                    0),
        PlaneSetter("Wib_SetLayerG",
                    "Replaces the green plane of a layer in the current frame when the plane has "
                    "the document's size; silent otherwise.",
                    1),
        PlaneSetter("Wib_SetLayerB",
                    "Replaces the blue plane of a layer in the current frame when the plane has "
                    "the document's size; silent otherwise.",
                    2),
        PlaneSetter("Wib_SetLayerA",
                    "Replaces the coverage of a layer in the current frame when the plane has the "
                    "document's size; silent otherwise.",
                    3),
        {"Wib_GetLayerInfo",
         kFamily,
         {kIndex},
         {ResultType::Params,
          "map: name (text), opacity (0..255), mode (the mode's name), visible and locked "
          "(-1 / 0)"},
         "A layer's properties; locked says whether its pixels are locked.",
         [](CallContext& c, CallArgs& args) {
             return LayerInfo(LayerAt(c.workspace(), LayerArg(c, args, 0)));
         }},
    };
}

}  // namespace wib
