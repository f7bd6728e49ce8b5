// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace wib {

// What the last pointer event on the canvas said about the pen. The canvas
// records it; plug-ins read it. Without a pen (the mouse) the values are those
// of an upright pen pressed fully: pressure 1, altitude 90, the rest 0.
// Angles are in degrees.
struct PenReading {
    bool tablet = false;
    double pressure = 1.0;  // 0..1, after the tablet calibration
    double altitude = 90;   // pen against the tablet's surface: 90 upright, 0 flat
    double azimuth = 0;     // where the pen leans, 0..360 counter-clockwise from the right
    double pitch = 0;       // lean towards the user (the tilt along y), -60..60
    double roll = 0;        // lean to the right (the tilt along x), -60..60
    double twist = 0;       // the barrel's rotation about its own axis
    double yaw = 0;         // where the pen leans as a compass heading: 0..360 clockwise from up
};

// A pen's reading from its tilts (degrees, positive to the right and towards
// the user), as tablets report them, and its barrel rotation.
PenReading PenFromTilt(double pressure, double xTilt, double yTilt, double rotation);

}  // namespace wib
