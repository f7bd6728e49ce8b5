// SPDX-License-Identifier: GPL-3.0-or-later
// The grid over the canvas, the canvas's pointer and the program's windows.

#include "core/document_limits.h"
#include "core/workspace.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kGrid = "Grid";
constexpr const char* kWindow = "Application and window";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr MethodResult kInteger{ResultType::Integer, "integer"};
// The classic pointer numbers: 0 the tool's own, 1 the arrow ... 11 busy ... 15.
constexpr int kLastPointer = 15;

int Spacing(const CallArgs& args, std::size_t i) {
    const long long value = args.integer(i);
    if (value < 1 || value > kMaxDocumentSide) {
        throw BadCall("grid spacing must be from 1 to " + std::to_string(kMaxDocumentSide));
    }
    return static_cast<int>(value);
}

int Pointer(const CallArgs& args) {
    const long long shape = args.integer(0);
    if (shape < 0 || shape > kLastPointer) {
        throw BadCall("pointer shapes are 0 to " + std::to_string(kLastPointer));
    }
    return static_cast<int>(shape);
}

void ShowPointer(Workspace& workspace, int shape) {
    workspace.pointerShape = shape;
    workspace.host.view.pointerShapeChanged(shape);
}

}  // namespace

std::vector<MethodSpec> CanvasMethods() {
    return {
        {"Wib_SetGrid",
         kGrid,
         {{"show", ArgType::Flag}, {"x", ArgType::Short}, {"y", ArgType::Short}},
         kNothing,
         "Shows (true) or hides the grid over the canvas, its lines every x by y image pixels "
         "(1 or more) from the top left corner; View > Show grid shows the same.",
         [](CallContext& c, CallArgs& args) {
             GridState& grid = c.workspace().view.grid;
             grid = {args.integer(0) == -1, Spacing(args, 1), Spacing(args, 2)};
             c.workspace().host.view.refresh();
             return Reply::Nil();
         }},
        {"Wib_GetGridState",
         kGrid,
         {},
         {ResultType::Flag, "boolean"},
         "Whether the grid is shown.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.workspace().view.grid.shown ? -1 : 0);
         }},
        {"Wib_GetGridX",
         kGrid,
         {},
         kInteger,
         "The grid's horizontal spacing in image pixels.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.workspace().view.grid.spacingX);
         }},
        {"Wib_GetGridY",
         kGrid,
         {},
         kInteger,
         "The grid's vertical spacing in image pixels.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.workspace().view.grid.spacingY);
         }},
        {"Wib_SetMousePointer",
         kWindow,
         {{"shape", ArgType::Integer}},
         kNothing,
         "Sets the canvas's pointer: 0 the active tool's own, 1 arrow, 2 cross, 3 text beam, 5 "
         "and 15 move, 6 to 9 sizing, 10 up arrow, 11 busy, 12 forbidden, 13 arrow and busy, "
         "14 help.",
         [](CallContext& c, CallArgs& args) {
             ShowPointer(c.workspace(), Pointer(args));
             return Reply::Nil();
         }},
        {"Wib_ChangePointer",
         kWindow,
         {{"shape", ArgType::Integer}},
         kNothing,
         "Sets the canvas's pointer as Wib_SetMousePointer does, remembering the one before for "
         "Wib_RestorePointer (also given back if the plug-in ends first).",
         [](CallContext& c, CallArgs& args) {
             const int shape = Pointer(args);
             if (!c.connection.pointerBefore) {
                 c.connection.pointerBefore = c.workspace().pointerShape;
             }
             ShowPointer(c.workspace(), shape);
             return Reply::Nil();
         }},
        {"Wib_RestorePointer",
         kWindow,
         {},
         kNothing,
         "Gives back the pointer that Wib_ChangePointer replaced; nothing when none was.",
         [](CallContext& c, CallArgs&) {
             if (const auto before = std::exchange(c.connection.pointerBefore, std::nullopt)) {
                 ShowPointer(c.workspace(), *before);
             }
             return Reply::Nil();
         }},
        {"Wib_GetHwnd",
         kWindow,
         {},
         kInteger,
         "The system's id of the canvas window (an X11 window id, say), for parenting a "
         "plug-in's own windows; 0 in headless mode.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.workspace().host.view.canvasWindowId());
         }},
        {"Wib_ParentWindow",
         kWindow,
         {},
         kInteger,
         "The system's id of the program's main window; 0 in headless mode.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.workspace().host.view.mainWindowId());
         }},
    };
}

}  // namespace wib
