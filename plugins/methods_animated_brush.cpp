// SPDX-License-Identifier: GPL-3.0-or-later
// The animated brush: frames of one size that painting steps through, one
// frame per dab.

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Animated brush";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
constexpr int kMaxFrames = 256;
constexpr int kMaxSide = 1024;

AnimatedBrush& Brush(CallContext& c) {
    return c.host.paint.state().animatedBrush;
}

int Arg(const CallArgs& args, std::size_t i) {
    return static_cast<int>(args.integer(i));
}

int InRange(const CallArgs& args, std::size_t i, const char* what, int minimum, int maximum) {
    const int value = Arg(args, i);
    if (value < minimum || value > maximum) {
        throw BadCall(std::string(what) + " must be from " + std::to_string(minimum) + " to " +
                      std::to_string(maximum));
    }
    return value;
}

MethodSpec FrameSetter(const char* name, const char* colour, BrushChannel channel) {
    const std::string alphaNote =
        channel == BrushChannel::Alpha ? " The frame's shape follows it (255 paints fully)." : "";
    return {name,
            kFamily,
            {{"plane", ArgType::Plane}, {"frame", ArgType::Integer}},
            kNothing,
            std::string("Replaces the ") + colour +
                " plane of a frame (error 9 outside the "
                "frames); the plane must be of the brush's size (error 5 otherwise)." +
                alphaNote,
            [channel](CallContext& c, CallArgs& args) {
                if (!Brush(c).setPlane(channel, Arg(args, 1), args.takePlane(0))) {
                    throw BadCall("the plane must be of the animated brush's size");
                }
                c.workspace().events.paintOptionsChanged.notify();
                return Reply::Nil();
            }};
}

MethodSpec ValueSetter(const char* name, const char* colour, BrushChannel channel) {
    return {name,
            kFamily,
            {{"x", ArgType::Short}, {"y", ArgType::Short}, {"value", ArgType::Channel}},
            kNothing,
            std::string("Sets one ") + colour +
                " value of the current frame (error 9 outside it or with no animated brush).",
            [channel](CallContext& c, CallArgs& args) {
                Brush(c).setValue(channel, Arg(args, 0), Arg(args, 1),
                                  static_cast<std::uint8_t>(args.integer(2)));
                return Reply::Nil();
            }};
}

MethodSpec FrameGetter(const char* name, const char* colour, BrushChannel channel) {
    return {name,
            kFamily,
            {{"frame", ArgType::Integer}},
            {ResultType::Plane, "plane: a copy"},
            std::string("The ") + colour + " plane of a frame (error 9 outside the frames).",
            [channel](CallContext& c, CallArgs& args) {
                return Reply::OwnedPlane(Brush(c).plane(channel, Arg(args, 0)));
            }};
}

}  // namespace

std::vector<MethodSpec> AnimatedBrushMethods() {
    return {
        {"Wib_CreateNewAnBr",
         kFamily,
         {{"frames", ArgType::Integer}, {"width", ArgType::Short}, {"height", ArgType::Short}},
         kNothing,
         "Makes an animated brush of 1 to 256 frames of width x height (1 to 1024), black and "
         "fully transparent, frame 0 current, and paints with it from now on: each dab takes the "
         "current frame and moves to the next, after the last back to the first. Choosing a "
         "brush, or Wib_ActivateCustomBrush, stops it.",
         [](CallContext& c, CallArgs& args) {
             const int frames = InRange(args, 0, "frames", 1, kMaxFrames);
             const int width = InRange(args, 1, "width", 1, kMaxSide);
             const int height = InRange(args, 2, "height", 1, kMaxSide);
             AnimatedBrush& brush = Brush(c);
             brush.create(frames, width, height);
             brush.setActive(true);
             c.workspace().events.paintOptionsChanged.notify();
             return Reply::Nil();
         }},
        FrameSetter("Wib_SetAnimBrushRFrame", "red", BrushChannel::Red),
        FrameSetter("Wib_SetAnimBrushGFrame", "green", BrushChannel::Green),
        FrameSetter("Wib_SetAnimBrushBFrame", "blue", BrushChannel::Blue),
        FrameSetter("Wib_SetAnimBrushAFrame", "alpha", BrushChannel::Alpha),
        ValueSetter("Wib_SeAnimtBrush_R", "red", BrushChannel::Red),
        ValueSetter("Wib_SeAnimtBrush_G", "green", BrushChannel::Green),
        ValueSetter("Wib_SeAnimtBrush_B", "blue", BrushChannel::Blue),
        ValueSetter("Wib_SeAnimtBrush_A", "alpha", BrushChannel::Alpha),
        {"Wib_Animbrush_Currentframe",
         kFamily,
         {{"frame", ArgType::Integer, true}},
         {ResultType::Integer, "integer: the current frame"},
         "The frame the next dab takes; given a frame, makes that one current first (error 9 "
         "outside the frames).",
         [](CallContext& c, CallArgs& args) {
             AnimatedBrush& brush = Brush(c);
             if (args.size() > 0) {
                 brush.setCurrent(Arg(args, 0));
             }
             return Reply::Integer(brush.current());
         }},
        {"Wib_GetAnimbrush_Totalframes",
         kFamily,
         {},
         {ResultType::Integer, "integer"},
         "How many frames the animated brush has (0: none).",
         [](CallContext& c, CallArgs&) { return Reply::Integer(Brush(c).frameCount()); }},
        FrameGetter("Wib_GetAnimbrush_R", "red", BrushChannel::Red),
        FrameGetter("Wib_GetAnimbrush_G", "green", BrushChannel::Green),
        FrameGetter("Wib_GetAnimbrush_B", "blue", BrushChannel::Blue),
        FrameGetter("Wib_GetAnimbrush_A", "alpha", BrushChannel::Alpha),
        {"Wib_Animbrush_Next",
         kFamily,
         {},
         {ResultType::Integer, "integer: the new current frame"},
         "Moves to the next frame, after the last back to the first, as a dab does (error 9 with "
         "no animated brush).",
         [](CallContext& c, CallArgs&) {
             AnimatedBrush& brush = Brush(c);
             if (brush.empty()) {
                 throw SubscriptError();
             }
             brush.advance();
             return Reply::Integer(brush.current());
         }},
    };
}

}  // namespace wib
