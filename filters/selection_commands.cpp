// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/selection_commands.h"

#include "core/commands.h"
#include "core/document_limits.h"
#include "core/workspace.h"
#include "filters/image_point_params.h"
#include "filters/selection_edit.h"

namespace wib {

namespace {

constexpr long long kMaxDiscRadius = 100;

CommandSpec SelectionCommand(const char* id, const char* caption, const char* shortcut,
                             std::vector<ParamSpec> params,
                             std::function<void(Workspace&, const ParamValues&)> change) {
    CommandSpec spec{id, caption, "Select", shortcut, std::move(params)};
    spec.run = [change = std::move(change)](Workspace& workspace, const ParamValues& values) {
        change(workspace, values);
        return true;
    };
    spec.changesImage = true;
    return spec;
}

MatteMode ModeOf(const ParamValues& values) {
    return static_cast<MatteMode>(values.integer("mode"));
}

bool Flag(const ParamValues& values, const char* name) {
    return values.integer(name) != 0;
}

// The shape's box parameters, starting at the whole image.
std::vector<ParamSpec> ShapeParams(bool antialias) {
    ParamSpec width =
        IntegerParam("width", "Width", 0, 2 * kMaxDocumentSide, 0,
                     [](const Workspace& w) { return ParamValue{w.document.width * 1LL}; });
    ParamSpec height =
        IntegerParam("height", "Height", 0, 2 * kMaxDocumentSide, 0,
                     [](const Workspace& w) { return ParamValue{w.document.height * 1LL}; });
    return {CoordinateParam("x", "X"),
            CoordinateParam("y", "Y"),
            width,
            height,
            SelectionModeParam(),
            BooleanParam("antialias", "Anti-aliased", antialias),
            NumberParam("feather", "Feather", 0, 500, 0)};
}

void SelectShapeFrom(Workspace& workspace, const ParamValues& values, bool ellipse) {
    ShapeSelection shape;
    shape.box = {static_cast<int>(values.integer("x")), static_cast<int>(values.integer("y")),
                 static_cast<int>(values.integer("width")),
                 static_cast<int>(values.integer("height"))};
    shape.ellipse = ellipse;
    shape.antialias = Flag(values, "antialias");
    shape.feather = values.number("feather");
    shape.mode = ModeOf(values);
    SelectShape(workspace, shape);
}

// The corners as x, y pairs in image pixels.
ParamSpec CornersParam() {
    ParamSpec spec;
    spec.name = "points";
    spec.caption = "Corners (x, y pairs)";
    spec.type = ParamType::IntegerList;
    spec.minimum = -2 * kMaxDocumentSide;
    spec.maximum = 2 * kMaxDocumentSide;
    spec.fallback = IntegerList{};
    return spec;
}

bool SelectPolygonFrom(Workspace& workspace, const ParamValues& values) {
    const IntegerList& points = values.integers("points");
    if (points.size() % 2 != 0) {
        workspace.host.prompter.message("The corners must come in x, y pairs.");
        return false;
    }
    PolygonSelection polygon;
    for (std::size_t i = 0; i < points.size(); i += 2) {
        polygon.corners.push_back(
            {static_cast<double>(points[i]), static_cast<double>(points[i + 1])});
    }
    polygon.antialias = Flag(values, "antialias");
    polygon.feather = values.number("feather");
    polygon.mode = ModeOf(values);
    SelectPolygon(workspace, polygon);
    return true;
}

ParamSpec DiscRadius() {
    return IntegerParam("radius", "Radius", 0, kMaxDiscRadius, 5);
}

}  // namespace

void RegisterSelectionCommands(CommandRegistry& registry) {
    registry.add(SelectionCommand("select.all", "&All", "Ctrl+A", {},
                                  [](Workspace& w, const ParamValues&) { SelectAll(w); }));
    registry.add(SelectionCommand("select.none", "&None", "Ctrl+Shift+A", {},
                                  [](Workspace& w, const ParamValues&) { SelectNone(w); }));
    registry.add(SelectionCommand("select.invert", "&Invert", "Ctrl+I", {},
                                  [](Workspace& w, const ParamValues&) { InvertSelection(w); }));
    registry.add(SelectionCommand(
        "select.rectangle", "&Rectangle...", "", ShapeParams(false),
        [](Workspace& w, const ParamValues& values) { SelectShapeFrom(w, values, false); }));
    registry.add(SelectionCommand(
        "select.ellipse", "&Ellipse...", "", ShapeParams(true),
        [](Workspace& w, const ParamValues& values) { SelectShapeFrom(w, values, true); }));
    CommandSpec polygon{
        "select.polygon",
        "&Polygon...",
        "Select",
        "",
        {CornersParam(), SelectionModeParam(), BooleanParam("antialias", "Anti-aliased", true),
         NumberParam("feather", "Feather", 0, 500, 0)},
        SelectPolygonFrom};
    polygon.changesImage = true;
    registry.add(std::move(polygon));
    registry.add(
        SelectionCommand("select.wand", "Magic &wand...", "",
                         {CoordinateParam("x", "X"), CoordinateParam("y", "Y"), ToleranceParam(),
                          BooleanParam("contiguous", "Contiguous", true), SelectionModeParam()},
                         [](Workspace& w, const ParamValues& values) {
                             SelectSimilar(w, static_cast<int>(values.integer("x")),
                                           static_cast<int>(values.integer("y")),
                                           static_cast<int>(values.integer("tolerance")),
                                           Flag(values, "contiguous"), ModeOf(values));
                         }));
    registry.add(SelectionCommand("select.feather", "&Feather...", "",
                                  {NumberParam("radius", "Radius", 0, 500, 5)},
                                  [](Workspace& w, const ParamValues& values) {
                                      FeatherSelection(w, values.number("radius"));
                                  }));
    const struct {
        const char* id;
        const char* caption;
        void (*change)(Workspace&, int);
    } discs[] = {
        {"select.grow", "&Grow...", GrowSelection},
        {"select.shrink", "S&hrink...", ShrinkSelection},
        {"select.border", "&Border...", BorderSelection},
        {"select.smooth", "S&mooth...", SmoothSelection},
    };
    for (const auto& disc : discs) {
        registry.add(
            SelectionCommand(disc.id, disc.caption, "", {DiscRadius()},
                             [change = disc.change](Workspace& w, const ParamValues& values) {
                                 change(w, static_cast<int>(values.integer("radius")));
                             }));
    }
    registry.add(SelectionCommand(
        "select.from_layer_alpha", "From &layer alpha", "", {SelectionModeParam()},
        [](Workspace& w, const ParamValues& values) { SelectFromLayerAlpha(w, ModeOf(values)); }));
    // The swap image is not kept by undo, and saving into it leaves the
    // image and the selection as they are: no undo step.
    registry.add({"select.save_to_swap",
                  "Sa&ve selection to swap image",
                  "Select",
                  "",
                  {},
                  [](Workspace& w, const ParamValues&) {
                      SaveSelectionToSwap(w);
                      return true;
                  }});
    registry.add(SelectionCommand(
        "select.load_from_swap", "L&oad selection from swap image", "", {SelectionModeParam()},
        [](Workspace& w, const ParamValues& values) { LoadSelectionFromSwap(w, ModeOf(values)); }));
}

}  // namespace wib
