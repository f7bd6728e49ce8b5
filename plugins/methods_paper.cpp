// SPDX-License-Identifier: GPL-3.0-or-later
// The paper: its grain, as made or set, and as strokes read it; and what fills lay.

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/paper.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Paper, media and fill";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr MethodResult kPlane{ResultType::Plane, "plane: a copy of the whole grain"};
constexpr int kFlat = 128;

// Index modulo a size, for a tiling grain.
int Wrap(long long value, std::size_t size) {
    const auto n = static_cast<long long>(size);
    return static_cast<int>(((value % n) + n) % n);
}

}  // namespace

std::vector<MethodSpec> PaperMethods() {
    return {
        {"Wib_NewPaper",
         kFamily,
         {{"kind", ArgType::Integer}},
         kNothing,
         "Makes the paper's grain anew: 0 canvas, 1 rough, 2 fine.",
         [](CallContext& c, CallArgs& args) {
             const long long kind = args.integer(0);
             if (kind < 0 || kind >= kPaperKindCount) {
                 throw BadCall("paper kinds are 0 to " + std::to_string(kPaperKindCount - 1));
             }
             c.host.paint.choosePaper(static_cast<PaperKind>(kind));
             return Reply::Nil();
         }},
        {"Wib_SetPaper",
         kFamily,
         {{"grain", ArgType::Plane}},
         kNothing,
         "Takes the plane as the paper's grain, tiled over the image (any size; 128 is flat, "
         "higher stands up).",
         [](CallContext& c, CallArgs& args) {
             Plane grain = args.takePlane(0);
             if (grain.empty()) {
                 throw BadCall("a paper grain needs at least one element");
             }
             c.host.paint.setPaperSource(std::move(grain));
             return Reply::Nil();
         }},
        {"Wib_GetPaper",
         kFamily,
         {},
         kPlane,
         "The paper's grain as made or set, before the paper panel's scale, emboss and depth.",
         [](CallContext& c, CallArgs&) {
             return Reply::BorrowedPlane(c.host.paint.paperSource());
         }},
        {"Wib_GetPaperWidth",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "The width of the paper's grain in elements.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(c.host.paint.paperSource().stride()));
         }},
        {"Wib_GetPaperHeight",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "The height of the paper's grain in elements.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(c.host.paint.paperSource().rows()));
         }},
        {"Wib_GetBump",
         kFamily,
         {{"x", ArgType::Integer}, {"y", ArgType::Integer}},
         {ResultType::Integer, "byte"},
         "The grain under image pixel (x, y) as strokes read it (the grain tiles, so any x and "
         "y will do); 128 where there is no grain.",
         [](CallContext& c, CallArgs& args) {
             const Plane& grain = c.host.paint.state().paper;
             if (grain.empty()) {
                 return Reply::Integer(kFlat);
             }
             return Reply::Integer(grain.at(Wrap(args.integer(0), grain.stride()),
                                            Wrap(args.integer(1), grain.rows())));
         }},
        {"Wib_GetMediaPreview",
         kFamily,
         {},
         kPlane,
         "The grain as strokes read it: the paper after the paper panel's scale, emboss, "
         "inversion and depth.",
         [](CallContext& c, CallArgs&) {
             return Reply::BorrowedPlane(c.host.paint.state().paper);
         }},
        {"Wib_SetFillMode",
         kFamily,
         {{"mode", ArgType::Integer}},
         kNothing,
         "What fills lay: 0 the primary colour, 1 the secondary, 2 the brush image as a "
         "pattern, 3 the gradient.",
         [](CallContext& c, CallArgs& args) {
             const long long mode = args.integer(0);
             if (mode < 0 || mode >= kFillSourceCount) {
                 throw BadCall("fill modes are 0 to " + std::to_string(kFillSourceCount - 1));
             }
             c.workspace().fill.source = static_cast<FillSource>(mode);
             c.workspace().events.paintOptionsChanged.notify();
             return Reply::Nil();
         }},
        {"Wib_GetFillMode",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "What fills lay, as Wib_SetFillMode takes it.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(static_cast<long long>(c.workspace().fill.source));
         }},
    };
}

}  // namespace wib
