// SPDX-License-Identifier: GPL-3.0-or-later
// The tablet: what the last canvas event said about the pen.

#include "paint/paint_session.h"
#include "plugins/method_families.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Tablet";

MethodSpec PenValue(const char* name, const char* summary, double PenReading::*value) {
    return {name,
            kFamily,
            {},
            {ResultType::Number, "number"},
            summary,
            [value](CallContext& c, CallArgs&) {
                return Reply::Number(c.host.paint.state().pen.*value);
            }};
}

}  // namespace

std::vector<MethodSpec> PenMethods() {
    return {
        {"Wib_IsTabletActive",
         kFamily,
         {},
         {ResultType::Flag, "boolean"},
         "Whether the last canvas event came from a pen (true) or the mouse.",
         [](CallContext& c, CallArgs&) {
             return Reply::Integer(c.host.paint.state().pen.tablet ? -1 : 0);
         }},
        PenValue("Wib_GetPressure",
                 "The pen's pressure 0..1 at the last canvas event; 1 for the mouse.",
                 &PenReading::pressure),
        PenValue(
            "Wib_GetAltitude",
            "The pen's angle with the tablet in degrees: 90 upright (and for the mouse), 0 flat.",
            &PenReading::altitude),
        PenValue(
            "Wib_GetAzimuth",
            "Where the pen leans, in degrees 0..360 counter-clockwise from the right; 0 for the "
            "mouse.",
            &PenReading::azimuth),
        PenValue("Wib_GetPitch",
                 "The pen's tilt towards the user in degrees (negative away); 0 for the mouse.",
                 &PenReading::pitch),
        PenValue("Wib_GetRoll",
                 "The pen's tilt to the right in degrees (negative to the left); 0 for the mouse.",
                 &PenReading::roll),
        PenValue("Wib_GetTwist",
                 "The pen barrel's rotation about its own axis in degrees; 0 for the mouse.",
                 &PenReading::twist),
        PenValue("Wib_GetYaw",
                 "Where the pen leans as a compass heading, degrees 0..360 clockwise from the "
                 "tablet's top; 0 for the mouse and an upright pen.",
                 &PenReading::yaw),
    };
}

}  // namespace wib
