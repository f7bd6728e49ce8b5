// SPDX-License-Identifier: GPL-3.0-or-later
// The graphics-server hooks: what a plug-in that draws in a window of its own
// tells the program and asks of it.

#include <cmath>
#include <utility>

#include "paint/paint_session.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Graphics server hooks";
// More numbers than any plug-in needs to leave for another.
constexpr std::size_t kMaxTempArray = 1 << 20;

Reply IntegerArray(const IntegerList& values) {
    msgpack::sbuffer packed;
    msgpack::pack(packed, values);
    return Reply::Packed(std::move(packed));
}

}  // namespace

std::vector<MethodSpec> GraphicsServerMethods() {
    return {
        {"GS_SetHwnd",
         kFamily,
         {{"window", ArgType::Integer}},
         {ResultType::Integer, "integer: the id remembered before"},
         "Tells the program the system id of the plug-in's own graphics window (0: none), which "
         "it remembers for this plug-in until it ends; answers the id remembered before (0 at "
         "first).",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(std::exchange(c.connection.graphicsWindow, args.integer(0)));
         }},
        {"GS_GetCurvepoints",
         kFamily,
         {},
         {ResultType::Integers, "integer array: x0, y0, x1, y1, ..."},
         "The points the pen went through in the last stroke, from the canvas or from "
         "Wib_BrushDown and Wib_BrushMove: press first, then each move, in image pixels rounded "
         "to whole ones, x and y in turn. Empty before the first stroke.",
         [](CallContext& c, CallArgs&) {
             IntegerList points;
             for (const auto& [x, y] : c.host.paint.state().curve) {
                 points.push_back(std::lround(x));
                 points.push_back(std::lround(y));
             }
             return IntegerArray(points);
         }},
        {"GS_SetTempArray",
         kFamily,
         {{"values", ArgType::Integers}},
         {ResultType::Integers, "integer array: the one it replaces"},
         "Leaves an array of integers (at most 1048576) with the program until the next "
         "GS_SetTempArray, from this plug-in or another, so that one plug-in can hand numbers "
         "to the next; answers the array it replaces (empty at first). An empty array reads "
         "the one held and clears it.",
         [](CallContext& c, CallArgs& args) {
             if (args.integers(0).size() > kMaxTempArray) {
                 throw BadCall("at most 1048576 values");
             }
             return IntegerArray(std::exchange(c.server.tempArray, args.integers(0)));
         }},
    };
}

}  // namespace wib
