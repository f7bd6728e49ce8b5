// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/view_commands.h"

#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr double kRotateStep = 15.0;

CommandSpec ViewCommand(const char* id, const char* caption, const char* shortcut,
                        std::vector<ParamSpec> params,
                        std::function<void(ViewState&, const ParamValues&)> change) {
    return {id,
            caption,
            "View",
            shortcut,
            std::move(params),
            [change = std::move(change)](Workspace& workspace, const ParamValues& values) {
                change(workspace.view, values);
                workspace.host.view.viewChanged();
                return true;
            }};
}

}  // namespace

void RegisterViewCommands(CommandRegistry& registry) {
    ParamSpec angle = NumberParam("angle", "Angle (degrees, clockwise)", -360, 360, 0);
    angle.current = [](const Workspace& workspace) { return workspace.view.rotation; };
    registry.add(ViewCommand("view.rotate", "&Rotate view...", "", {angle},
                             [](ViewState& view, const ParamValues& values) {
                                 view.rotation = NormalisedAngle(values.number("angle"));
                             }));
    registry.add(ViewCommand("view.rotate_left", "Rotate view &left", "Ctrl+Shift+Left", {},
                             [](ViewState& view, const ParamValues&) {
                                 view.rotation = NormalisedAngle(view.rotation - kRotateStep);
                             }));
    registry.add(ViewCommand("view.rotate_right", "Rotate view r&ight", "Ctrl+Shift+Right", {},
                             [](ViewState& view, const ParamValues&) {
                                 view.rotation = NormalisedAngle(view.rotation + kRotateStep);
                             }));
    // Its starting value is the other state, so the menu entry flips the view.
    ParamSpec mirrored = BooleanParam("mirrored", "Mirrored", true);
    mirrored.current = [](const Workspace& workspace) {
        return ParamValue(workspace.view.mirrored ? 0LL : -1LL);
    };
    registry.add(ViewCommand("view.mirror", "&Mirror view", "Ctrl+Alt+M", {mirrored},
                             [](ViewState& view, const ParamValues& values) {
                                 view.mirrored = values.integer("mirrored") != 0;
                             }));
    registry.add(ViewCommand("view.reset_rotation", "R&eset rotation and mirror", "Ctrl+Alt+0", {},
                             [](ViewState& view, const ParamValues&) {
                                 view.rotation = 0;
                                 view.mirrored = false;
                             }));
}

}  // namespace wib
