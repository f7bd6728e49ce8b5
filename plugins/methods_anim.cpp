// SPDX-License-Identifier: GPL-3.0-or-later
// The animation frames: making, editing and stepping through them, their
// planes, and playback.

#include "anim/frame_store.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Animation frames";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr MethodResult kFramePlane{ResultType::Plane, "plane: a copy of one colour of the frame"};

FrameStore& Frames(CallContext& c) {
    return c.host.frames;
}

int Arg(const CallArgs& args, std::size_t i) {
    return static_cast<int>(args.integer(i));
}

const std::vector<ArgSpec> kIndex = {{"frame", ArgType::Integer}};

MethodSpec Action(const char* name, const char* summary, void (*action)(FrameStore&)) {
    return {name, kFamily, {}, kNothing, summary, [action](CallContext& c, CallArgs&) {
                action(Frames(c));
                return Reply::Nil();
            }};
}

MethodSpec IndexAction(const char* name, const char* summary, void (*action)(FrameStore&, int)) {
    return {name, kFamily, kIndex, kNothing, summary, [action](CallContext& c, CallArgs& args) {
                action(Frames(c), Arg(args, 0));
                return Reply::Nil();
            }};
}

MethodSpec Count(const char* name, const char* summary, std::int32_t (*read)(const FrameStore&)) {
    return {name,    kFamily,
            {},      {ResultType::Integer, "integer"},
            summary, [read](CallContext& c, CallArgs&) { return Reply::Integer(read(Frames(c))); }};
}

MethodSpec FrameGetter(const char* name, const char* summary,
                       Plane (*read)(const FrameStore&, int)) {
    return {name, kFamily, kIndex, kFramePlane, summary, [read](CallContext& c, CallArgs& args) {
                return Reply::OwnedPlane(read(Frames(c), Arg(args, 0)));
            }};
}

MethodSpec FrameSetter(const char* name, const char* summary,
                       void (*write)(FrameStore&, const Plane&, int)) {
    return {name,
            kFamily,
            {{"plane", ArgType::Plane}, {"frame", ArgType::Integer}},
            kNothing,
            summary,
            [write](CallContext& c, CallArgs& args) {
                write(Frames(c), args.takePlane(0), Arg(args, 1));
                return Reply::Nil();
            }};
}

}  // namespace

std::vector<MethodSpec> AnimationMethods() {
    return {
        IndexAction("Wib_CreateAnim",
                    "Turns the image into an animation of that many frames, each a copy of the "
                    "image (asks first when one is held).",
                    [](FrameStore& s, int frames) { s.CreateAnimation(frames, 255); }),
        {"Wib_CreateAnimAdv",
         kFamily,
         {{"frames", ArgType::Integer}, {"flags", ArgType::Integer}},
         kNothing,
         "As Wib_CreateAnim; flags bit 0 copies the image into every frame (else they start "
         "cleared), bit 1 frees a held animation first without asking.",
         [](CallContext& c, CallArgs& args) {
             FrameStore& store = Frames(c);
             const int flags = Arg(args, 1);
             // The held animation goes only once the new one is sure to fit.
             store.CreateAnimation(Arg(args, 0), (flags & 1) != 0 ? 255 : 0, (flags & 2) == 0);
             return Reply::Nil();
         }},
        Action("Wib_FreeAnim", "Lets go of the animation; the image stays.",
               [](FrameStore& s) { s.FreeAnimation(); }),
        IndexAction("Wib_InsertFrame", "Inserts a frame at the index (out of range: ignored).",
                    [](FrameStore& s, int index) { s.InsertFrame(index); }),
        IndexAction("Wib_DeleteFrame", "Deletes the frame at the index (out of range: ignored).",
                    [](FrameStore& s, int index) { s.DeleteFrame(index); }),
        IndexAction("Wib_GotoFrame",
                    "Stores the image into the current frame and shows another, the index clamped "
                    "to the frames; stops playback.",
                    [](FrameStore& s, int index) { s.showFrame(index); }),
        {"Wib_GotoFrameAdv",
         kFamily,
         {{"frame", ArgType::Integer}, {"flags", ArgType::Integer}},
         kNothing,
         "As Wib_GotoFrame; flags bit 0 skips the canvas redraw, bit 1 the per-frame update.",
         [](CallContext& c, CallArgs& args) {
             const int flags = Arg(args, 1);
             Frames(c).showFrame(Arg(args, 0),
                                 {.frameUpdate = (flags & 2) == 0, .redraw = (flags & 1) == 0});
             return Reply::Nil();
         }},
        Action("Wib_GetFrame", "Loads the current frame into the image.",
               [](FrameStore& s) { s.LoadCurrentFrame(); }),
        Action("Wib_StoreFrame", "Stores the image into the current frame.",
               [](FrameStore& s) { s.StoreCurrentFrame(); }),
        Count("Wib_GetTotalFrames", "How many frames the animation has (0: none).",
              [](const FrameStore& s) { return s.FrameCount(); }),
        Count("Wib_GetCurrentFrame", "The index of the frame shown.",
              [](const FrameStore& s) { return s.CurrentFrame(); }),
        FrameGetter("Wib_GetRFrame", "The red plane of a frame (error 9 outside the frames).",
                    [](const FrameStore& s, int i) { return s.framePlane(FrameColour::Red, i); }),
        FrameGetter("Wib_GetGFrame", "The green plane of a frame (error 9 outside the frames).",
                    [](const FrameStore& s, int i) { return s.framePlane(FrameColour::Green, i); }),
        FrameGetter("Wib_GetBFrame", "The blue plane of a frame (error 9 outside the frames).",
                    [](const FrameStore& s, int i) { return s.framePlane(FrameColour::Blue, i); }),
        FrameSetter(
            "Wib_SetRFrame", "Writes the red plane of a frame, as much as it holds.",
            [](FrameStore& s, const Plane& p, int i) { s.setFramePlane(FrameColour::Red, p, i); }),
        FrameSetter("Wib_SetGFrame", "Writes the green plane of a frame, as much as it holds.",
                    [](FrameStore& s, const Plane& p, int i) {
                        s.setFramePlane(FrameColour::Green, p, i);
                    }),
        FrameSetter(
            "Wib_SetBFrame", "Writes the blue plane of a frame, as much as it holds.",
            [](FrameStore& s, const Plane& p, int i) { s.setFramePlane(FrameColour::Blue, p, i); }),
        IndexAction("Wib_AnimToMain", "Copies a frame into the image without going to it.",
                    [](FrameStore& s, int index) { s.AnimToMain(index); }),
        Action("Wib_PlayAnimation",
               "Starts playback and answers at once; Wib_StopAnimation stops it.",
               [](FrameStore& s) { s.PlayAnimation(); }),
        Action("Wib_StopAnimation", "Stops playback.", [](FrameStore& s) { s.StopAnimation(); }),
        {"Wib_SetFrameRate",
         kFamily,
         {{"rate", ArgType::Number}},
         kNothing,
         "Sets the frame rate in frames per second.",
         [](CallContext& c, CallArgs& args) {
             Frames(c).rateField().setRate(args.number(0));
             return Reply::Nil();
         }},
        Count("Wib_GetFrameRate", "The frame rate in frames per second.",
              [](const FrameStore& s) { return s.rateField().rate(); }),
        Action("Wib_ShowScrub", "Brings the playback controls with the frame slider into view.",
               [](FrameStore& s) { s.showControls(); }),
        {"Anim_Set_Name",
         kFamily,
         {{"name", ArgType::Text}},
         kNothing,
         "Names the animation.",
         [](CallContext& c, CallArgs& args) {
             Frames(c).setName(args.text(0));
             return Reply::Nil();
         }},
        {"Anim_Get_Name",
         kFamily,
         {},
         {ResultType::Text, "text"},
         "The animation's name.",
         [](CallContext& c, CallArgs&) { return Reply::Text(Frames(c).name()); }},
    };
}

}  // namespace wib
