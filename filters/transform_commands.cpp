// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/transform_commands.h"

#include "core/canvas_size.h"
#include "core/commands.h"
#include "core/document_limits.h"
#include "core/workspace.h"
#include "filters/image_point_params.h"
#include "filters/transform_edit.h"

namespace wib {

namespace {

constexpr double kShiftLimit = 32767;
constexpr double kLargestScale = 100;

CommandSpec SelectionCommand(const char* id, const char* caption, std::vector<ParamSpec> params,
                             std::function<bool(Workspace&, const ParamValues&)> change) {
    CommandSpec spec{id, caption, "Edit", "", std::move(params), std::move(change)};
    spec.changesImage = true;
    return spec;
}

// The canvas-size change saves its own undo steps, so these need no bracket.
CommandSpec TurnCommand(const char* id, const char* caption, PictureTurn turn) {
    return {id,
            caption,
            "Image",
            "",
            {},
            [turn](Workspace& workspace, const ParamValues&) {
                return TurnPicture(workspace, turn); }};
}

TransformSpec SpecOf(const ParamValues& values) {
    TransformSpec spec;
    spec.scaleX = values.number("scale_x");
    spec.scaleY = values.number("scale_y");
    spec.angle = values.number("angle");
    spec.flipH = values.integer("flip_h") != 0;
    spec.flipV = values.integer("flip_v") != 0;
    spec.dx = values.number("dx");
    spec.dy = values.number("dy");
    spec.sampling = static_cast<Sampling>(values.integer("sampling"));
    return spec;
}

}  // namespace

void RegisterTransformCommands(CommandRegistry& registry) {
    registry.add(
        SelectionCommand("transform.apply", "&Transform...",
                         {NumberParam("scale_x", "Scale x", 1 / kLargestScale, kLargestScale, 1),
                          NumberParam("scale_y", "Scale y", 1 / kLargestScale, kLargestScale, 1),
                          NumberParam("angle", "Angle (degrees)", -360, 360, 0),
                          BooleanParam("flip_h", "Flip horizontally", false),
                          BooleanParam("flip_v", "Flip vertically", false),
                          NumberParam("dx", "Shift x", -kShiftLimit, kShiftLimit, 0),
                          NumberParam("dy", "Shift y", -kShiftLimit, kShiftLimit, 0),
                          ChoiceParam("sampling", "Sampling", {"Bilinear", "Bicubic"}, 0)},
                         [](Workspace& workspace, const ParamValues& values) {
                             return TransformSelection(workspace, SpecOf(values));
                         }));
    registry.add(
        SelectionCommand("move.selection", "&Move selection...",
                         {CoordinateParam("dx", "Shift x"), CoordinateParam("dy", "Shift y")},
                         [](Workspace& workspace, const ParamValues& values) {
                             TransformSpec spec;
                             spec.dx = static_cast<double>(values.integer("dx"));
                             spec.dy = static_cast<double>(values.integer("dy"));
                             return TransformSelection(workspace, spec);
                         }));

    const auto width = [](const Workspace& w) {
        return ParamValue{static_cast<long long>(w.document.width)};
    };
    const auto height = [](const Workspace& w) {
        return ParamValue{static_cast<long long>(w.document.height)};
    };
    registry.add({"image.crop",
                  "&Crop...",
                  "Image",
                  "",
                  {IntegerParam("x", "Left", 0, kMaxDocumentSide, 0),
                   IntegerParam("y", "Top", 0, kMaxDocumentSide, 0),
                   IntegerParam("width", "Width", 1, kMaxDocumentSide, 1, width),
                   IntegerParam("height", "Height", 1, kMaxDocumentSide, 1, height)},
                  [](Workspace& workspace, const ParamValues& values) {
                      const int x = static_cast<int>(values.integer("x"));
                      const int y = static_cast<int>(values.integer("y"));
                      return ChangeCanvasSize(workspace, static_cast<int>(values.integer("width")),
                                              static_cast<int>(values.integer("height")),
                                              workspace.colours.secondary, CanvasOffsets{-x, -y});
                  }});
    registry.add(
        TurnCommand("image.flip_horizontal", "Flip &horizontally", PictureTurn::FlipHorizontal));
    registry.add(TurnCommand("image.flip_vertical", "Flip &vertically", PictureTurn::FlipVertical));
    registry.add(
        TurnCommand("image.rotate_clockwise", "Rotate 90 clock&wise", PictureTurn::Clockwise));
    registry.add(TurnCommand("image.rotate_anticlockwise", "Rotate 90 &anticlockwise",
                             PictureTurn::Anticlockwise));
    registry.add(TurnCommand("image.rotate_180", "Rotate 1&80", PictureTurn::HalfTurn));
}

}  // namespace wib
