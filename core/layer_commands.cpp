// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_commands.h"

#include <string>
#include <utility>

#include "core/commands.h"
#include "core/layer_edit.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr int kMaxLayerIndex = 65535;

using LayerAction = bool (*)(Workspace&);

// A command without parameters that changes the picture: one undo step.
CommandSpec PlainLayerCommand(const char* id, const char* caption, const char* shortcut,
                              LayerAction action) {
    CommandSpec spec{id,      caption,
                     "Layer", shortcut,
                     {},      [action](Workspace& w, const ParamValues&) { return action(w); }};
    spec.changesImage = true;
    spec.keepsLayerPixels = true;
    return spec;
}

// A layer index parameter, starting at the current layer.
ParamSpec IndexParam(const char* name = "index", const char* caption = "Layer") {
    return IntegerParam(name, caption, 0, kMaxLayerIndex, 0, [](const Workspace& w) {
        return ParamValue{static_cast<long long>(CurrentLayer(w))};
    });
}

// The properties parameters start at the current layer's values, so that the
// dialog shows them; a script changes only those it names.
std::vector<ParamSpec> PropertyParams() {
    ParamSpec name;
    name.name = "name";
    name.caption = "Name";
    name.type = ParamType::Text;
    name.fallback = std::string();
    name.current = [](const Workspace& w) { return ParamValue{LayerAt(w, CurrentLayer(w)).name}; };

    ParamSpec opacity = IntegerParam("opacity", "Opacity", 0, 255, 255, [](const Workspace& w) {
        return ParamValue{static_cast<long long>(LayerAt(w, CurrentLayer(w)).opacity)};
    });

    ParamSpec mode;
    mode.name = "mode";
    mode.caption = "Mode";
    mode.type = ParamType::Choice;
    mode.fallback = 0LL;
    for (int i = 0; i < kBlendModeCount; ++i) {
        mode.choices.emplace_back(BlendModeName(static_cast<BlendMode>(i)));
    }
    mode.current = [](const Workspace& w) {
        return ParamValue{static_cast<long long>(LayerAt(w, CurrentLayer(w)).mode)};
    };

    ParamSpec visible;
    visible.name = "visible";
    visible.caption = "Visible";
    visible.type = ParamType::Boolean;
    visible.fallback = -1LL;
    visible.current = [](const Workspace& w) {
        return ParamValue{LayerAt(w, CurrentLayer(w)).visible ? -1LL : 0LL};
    };
    ParamSpec locked;
    locked.name = "locked";
    locked.caption = "Locked";
    locked.type = ParamType::Boolean;
    locked.fallback = 0LL;
    locked.current = [](const Workspace& w) {
        return ParamValue{LayerAt(w, CurrentLayer(w)).lockPixels ? -1LL : 0LL};
    };
    return {IndexParam(), name, opacity, mode, visible, locked};
}

bool SetFromValues(Workspace& workspace, const ParamValues& values) {
    const int index = static_cast<int>(values.integer("index"));
    LayerChange change;
    if (values.given("name"))
        change.name = values.text("name");
    if (values.given("opacity"))
        change.opacity = static_cast<int>(values.integer("opacity"));
    if (values.given("mode")) {
        change.mode = BlendModeFromNumber(static_cast<int>(values.integer("mode")));
    }
    if (values.given("visible"))
        change.visible = values.integer("visible") != 0;
    if (values.given("locked"))
        change.lockPixels = values.integer("locked") != 0;
    return ChangeLayer(workspace, index, change);
}

}  // namespace

void RegisterLayerCommands(CommandRegistry& registry) {
    registry.add(PlainLayerCommand("layer.new", "&New layer", "Insert", AddLayer));
    registry.add(
        PlainLayerCommand("layer.duplicate", "&Duplicate layer", "Ctrl+J", DuplicateLayer));
    registry.add(PlainLayerCommand("layer.delete", "De&lete layer", "",
                                   [](Workspace& w) { return DeleteLayer(w, CurrentLayer(w)); }));
    registry.add(PlainLayerCommand("layer.merge_down", "&Merge down", "Ctrl+E", MergeDown));
    registry.add(
        PlainLayerCommand("layer.merge_visible", "Merge &visible", "Ctrl+Shift+E", MergeVisible));
    registry.add(PlainLayerCommand("layer.flatten", "&Flatten image", "", Flatten));
    registry.add(PlainLayerCommand("layer.move_up", "Move layer &up", "Ctrl+]",
                                   [](Workspace& w) { return MoveLayer(w, CurrentLayer(w), 1); }));
    registry.add(PlainLayerCommand("layer.move_down", "Move layer do&wn", "Ctrl+[",
                                   [](Workspace& w) { return MoveLayer(w, CurrentLayer(w), -1); }));
    CommandSpec move{"layer.move",
                     "Move layer &to...",
                     "Layer",
                     "",
                     {IndexParam(), IndexParam("to", "To place")},
                     [](Workspace& workspace, const ParamValues& values) {
                         return MoveLayerTo(workspace, static_cast<int>(values.integer("index")),
                                            static_cast<int>(values.integer("to")));
                     }};
    move.changesImage = true;
    move.keepsLayerPixels = true;
    registry.add(std::move(move));
    registry.add(PlainLayerCommand("layer.clear", "&Clear layer", "", ClearLayer));
    registry.add(PlainLayerCommand("layer.from_selection", "Layer from &selection", "Ctrl+Alt+J",
                                   LayerFromSelection));
    registry.add({"layer.select",
                  "Select layer...",
                  "Layer",
                  "",
                  {IndexParam()},
                  [](Workspace& workspace, const ParamValues& values) {
                      return SelectLayer(workspace, static_cast<int>(values.integer("index")));
                  }});
    CommandSpec set{"layer.set", "Layer &properties...", "Layer",
                    "",          PropertyParams(),       SetFromValues};
    set.changesImage = true;
    set.keepsLayerPixels = true;
    registry.add(std::move(set));
}

}  // namespace wib
