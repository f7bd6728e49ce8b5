// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/shape_commands.h"

#include "core/commands.h"
#include "core/workspace.h"
#include "paint/shapes.h"

namespace wib {

namespace {

// Shapes may start or end beyond the image; only what lies inside is drawn.
constexpr double kCoordinateLimit = 32767;

// The dialog starts from the image's top left pixel to its bottom right one.
std::vector<ParamSpec> CornerParams() {
    const auto lastX = [](const Workspace& w) { return ParamValue{w.document.width - 1LL}; };
    const auto lastY = [](const Workspace& w) { return ParamValue{w.document.height - 1LL}; };
    return {IntegerParam("x0", "Start x", -kCoordinateLimit, kCoordinateLimit, 0),
            IntegerParam("y0", "Start y", -kCoordinateLimit, kCoordinateLimit, 0),
            IntegerParam("x1", "End x", -kCoordinateLimit, kCoordinateLimit, 0, lastX),
            IntegerParam("y1", "End y", -kCoordinateLimit, kCoordinateLimit, 0, lastY)};
}

std::vector<ParamSpec> BoxParams() {
    std::vector<ParamSpec> params = CornerParams();
    ParamSpec filled;
    filled.name = "filled";
    filled.caption = "Filled";
    filled.type = ParamType::Boolean;
    filled.minimum = -1;
    filled.maximum = 0;
    filled.fallback = 0LL;
    params.push_back(filled);
    return params;
}

ShapeBox BoxOf(const ParamValues& values) {
    return ShapeBox::FromCorners(
        static_cast<int>(values.integer("x0")), static_cast<int>(values.integer("y0")),
        static_cast<int>(values.integer("x1")), static_cast<int>(values.integer("y1")));
}

}  // namespace

void RegisterShapeCommands(CommandRegistry& registry, PaintSession& session) {
    // Each shape brackets itself (one undo step), as a tool calling it needs.
    registry.add({"draw.line", "&Line...", "Tools", "", CornerParams(),
                  [&session](Workspace&, const ParamValues& values) {
                      DrawLine(session, static_cast<float>(values.integer("x0")),
                               static_cast<float>(values.integer("y0")),
                               static_cast<float>(values.integer("x1")),
                               static_cast<float>(values.integer("y1")));
                      return true;
                  }});
    registry.add({"draw.rectangle", "&Rectangle...", "Tools", "", BoxParams(),
                  [&session](Workspace&, const ParamValues& values) {
                      DrawRectangle(session, BoxOf(values), values.integer("filled") != 0);
                      return true;
                  }});
    registry.add({"draw.ellipse", "&Ellipse...", "Tools", "", BoxParams(),
                  [&session](Workspace&, const ParamValues& values) {
                      DrawEllipse(session, BoxOf(values), values.integer("filled") != 0);
                      return true;
                  }});
}

}  // namespace wib
