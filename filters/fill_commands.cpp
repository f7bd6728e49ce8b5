// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/fill_commands.h"

#include <type_traits>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/fill_edit.h"
#include "filters/image_point_params.h"

namespace wib {

namespace {

CommandSpec EditCommand(const char* id, const char* caption, std::vector<ParamSpec> params,
                        std::function<bool(Workspace&, const ParamValues&)> change) {
    CommandSpec spec{id, caption, "Edit", "", std::move(params), std::move(change)};
    spec.changesImage = true;
    return spec;
}

int Whole(const ParamValues& values, const char* name) {
    return static_cast<int>(values.integer(name));
}

// A parameter whose starting value is the fill setting `member`, so that a
// fill run without it follows the "Fill settings" panel.
template <typename T>
ParamSpec FromSettings(ParamSpec spec, T FillSettings::*member) {
    spec.current = [member](const Workspace& workspace) -> ParamValue {
        const T value = workspace.fill.*member;
        if constexpr (std::is_same_v<T, bool>) {
            return value ? -1LL : 0LL;
        } else {
            return static_cast<long long>(value);
        }
    };
    return spec;
}

std::vector<ParamSpec> FloodFillParams() {
    return {CoordinateParam("x", "X"),
            CoordinateParam("y", "Y"),
            ToleranceParam(),
            BooleanParam("contiguous", "Contiguous", true),
            IntegerParam("connectivity", "Connectivity", 4, 8, 4),
            FromSettings(ChoiceParam("source", "Fill with",
                                     {"Primary", "Secondary", "Pattern", "Gradient"}, 0),
                         &FillSettings::source),
            FromSettings(ChoiceParam("sample", "Sample", {"Layer", "Composite"}, 0),
                         &FillSettings::sample),
            FromSettings(BooleanParam("antialias", "Anti-aliased edge", false),
                         &FillSettings::antialias),
            FromSettings(ChoiceParam("gradient", "Gradient", {"Region", "Last"}, 0),
                         &FillSettings::gradient)};
}

bool RunFloodFill(Workspace& workspace, const ParamValues& values) {
    const int connectivity = Whole(values, "connectivity");
    if (connectivity != 4 && connectivity != 8) {
        workspace.host.prompter.message("Connectivity must be 4 or 8.");
        return false;
    }
    const auto source = static_cast<FillSource>(values.integer("source"));
    if (source == FillSource::Pattern && workspace.brush.empty()) {
        workspace.host.prompter.message("A pattern fill needs a brush image.");
        return false;
    }
    FloodFill(workspace,
              {.x = Whole(values, "x"),
               .y = Whole(values, "y"),
               .tolerance = Whole(values, "tolerance"),
               .contiguous = values.integer("contiguous") != 0,
               .eightConnected = connectivity == 8,
               .source = source,
               .sample = static_cast<FillSample>(values.integer("sample")),
               .antialias = values.integer("antialias") != 0,
               .gradient = static_cast<FillGradientPlacement>(values.integer("gradient"))});
    return true;
}

}  // namespace

void RegisterFillCommands(CommandRegistry& registry) {
    registry.add(EditCommand("edit.fill", "Flood &fill...", FloodFillParams(), RunFloodFill));
    registry.add(EditCommand("edit.fill_selection", "Fill &selection", {},
                             [](Workspace& workspace, const ParamValues&) {
                                 FillSelection(workspace);
                                 return true;
                             }));
    registry.add(EditCommand(
        "draw.gradient", "&Gradient...",
        {CoordinateParam("x0", "Start X"), CoordinateParam("y0", "Start Y"),
         CoordinateParam("x1", "End X", 100), CoordinateParam("y1", "End Y"),
         ChoiceParam("shape", "Shape", {"Linear", "Radial", "Conical", "Diamond", "Reflected"}, 0),
         BooleanParam("dither", "Dither", false),
         ChoiceParam("dither_kind", "Dither kind", {"Ordered", "Random"}, 0)},
        [](Workspace& workspace, const ParamValues& values) {
            const bool random = values.integer("dither_kind") == 1;
            DrawGradient(workspace, {.x0 = values.number("x0"),
                                     .y0 = values.number("y0"),
                                     .x1 = values.number("x1"),
                                     .y1 = values.number("y1"),
                                     .shape = static_cast<GradientShape>(values.integer("shape")),
                                     .dither = values.integer("dither") == 0 ? GradientDither::None
                                               : random ? GradientDither::Random
                                                        : GradientDither::Ordered});
            return true;
        }));
}

}  // namespace wib
