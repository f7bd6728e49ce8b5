// SPDX-License-Identifier: GPL-3.0-or-later
#include "paint/fill_tools.h"

#include <cmath>

#include "paint/paint_session.h"
#include "paint/tool_context.h"

namespace wib {

void FillTool::press(const ToolInput& input) {
    if (input.button != 1) {
        return;
    }
    const ToolOptions& options = session_.state().toolOptions;
    const auto [x, y] = PixelUnder(session_.workspace(), input);
    session_.tools().runCommand("edit.fill",
                                {{"x", x},
                                 {"y", y},
                                 {"tolerance", static_cast<long long>(options.tolerance)},
                                 {"contiguous", options.contiguous ? -1LL : 0LL},
                                 {"connectivity", options.eightConnected ? 8LL : 4LL}});
}

void GradientTool::apply(Point from, Point to, const ToolModifiers&) {
    const ToolOptions& options = session().state().toolOptions;
    session().tools().runCommand("draw.gradient",
                                 {{"x0", std::llround(from[0])},
                                  {"y0", std::llround(from[1])},
                                  {"x1", std::llround(to[0])},
                                  {"y1", std::llround(to[1])},
                                  {"shape", static_cast<long long>(options.gradientShape)},
                                  {"dither", options.gradientDither != 0 ? -1LL : 0LL},
                                  {"dither_kind", options.gradientDither == 2 ? 1LL : 0LL}});
}

void ShapeTool::apply(Point from, Point to, const ToolModifiers&) {
    std::map<std::string, ParamValue> values{{"x0", std::llround(from[0])},
                                             {"y0", std::llround(from[1])},
                                             {"x1", std::llround(to[0])},
                                             {"y1", std::llround(to[1])}};
    if (!line_) {
        values["filled"] = session().state().toolOptions.shapeFilled ? -1LL : 0LL;
    }
    session().tools().runCommand(command_, values);
}

}  // namespace wib
