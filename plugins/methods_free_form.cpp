// SPDX-License-Identifier: GPL-3.0-or-later
// Free-form objects: paths a plug-in builds and the program strokes.

#include "paint/paint_session.h"
#include "paint/shapes.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Free-form objects";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
const ArgSpec kHandle{"handle", ArgType::Integer};

FreeFormPath& PathOf(CallContext& c, const CallArgs& args) {
    const auto found = c.connection.freeForms.find(static_cast<int>(args.integer(0)));
    if (found == c.connection.freeForms.end()) {
        throw BadCall("no free-form object has that handle");
    }
    return found->second;
}

}  // namespace

std::vector<MethodSpec> FreeFormMethods() {
    return {
        {"Wib_CreateFF",
         kFamily,
         {},
         {ResultType::Integer, "integer: the handle"},
         "Starts an empty free-form path, open, and answers its handle (1 or more), which "
         "belongs to this plug-in until Wib_FreeFF or its end.",
         [](CallContext& c, CallArgs&) {
             const int handle = c.connection.nextFreeForm++;
             c.connection.freeForms.emplace(handle, FreeFormPath{});
             return Reply::Integer(handle);
         }},
        {"Wib_SetFF",
         kFamily,
         {kHandle, {"x", ArgType::Single}, {"y", ArgType::Single}},
         kNothing,
         "Adds the point (x, y) to the path, in the units of Wib_BrushMove.",
         [](CallContext& c, CallArgs& args) {
             PathOf(c, args).points.push_back(
                 {static_cast<float>(args.number(1)), static_cast<float>(args.number(2))});
             return Reply::Nil();
         }},
        {"Wib_SetFFSettings",
         kFamily,
         {kHandle, {"closed", ArgType::Flag}},
         kNothing,
         "Whether the path's stroke goes back to its first point (true) or ends at its last.",
         [](CallContext& c, CallArgs& args) {
             PathOf(c, args).closed = args.integer(1) == -1;
             return Reply::Nil();
         }},
        {"Wib_FreeFF",
         kFamily,
         {kHandle, {"stroke", ArgType::Flag, true}},
         kNothing,
         "Ends the path; with stroke true, first paints it as one stroke of the current brush "
         "(the plug-in saves undo itself, as for Wib_BrushMove).",
         [](CallContext& c, CallArgs& args) {
             const FreeFormPath path = std::move(PathOf(c, args));
             c.connection.freeForms.erase(static_cast<int>(args.integer(0)));
             if (args.size() > 1 && args.integer(1) == -1) {
                 StrokePoints(c.host.paint, path.points, path.closed);
             }
             return Reply::Nil();
         }},
    };
}

}  // namespace wib
