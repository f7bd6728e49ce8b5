#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Animated flares: a lens flare that travels across the animation, added
(lightening only) to every frame.

The flare's centre moves in a straight line from (20%, 25%) of the frame's
width and height on the first frame to (80%, 60%) on the last. The flare is
a warm white core, a faint blue ring about it, and three coloured ghosts on
the line from the flare through the frame's centre, as a camera's lens
makes them. Sizes follow the frame's smaller side. The image is reloaded
from the shown frame at the end.

Asks for: "Flare brightness" (10..200 percent, default 100)."""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import run_plugin  # noqa: E402

START = (0.20, 0.25)
END = (0.80, 0.60)


def core(t):
    return (1.0 - t) ** 2


def ring(t):
    return max(0.0, 1.0 - abs(t - 0.85) / 0.15)


def ghost(t):
    return 1.0 - t ** 4


# (place on the flare's line through the centre: 0 at the flare, 0.5 at the
# centre, 1 at the mirror point; radius as a part of the frame's smaller side; shape;
# colour at full strength).
ELEMENTS = (
    (0.0, 0.12, core, (255, 235, 200)),
    (0.0, 0.20, ring, (50, 60, 110)),
    (0.6, 0.05, ghost, (40, 70, 30)),
    (1.0, 0.08, ghost, (30, 35, 80)),
    (1.4, 0.03, ghost, (80, 40, 50)),
)


def add_glow(planes, width, height, cx, cy, radius, shape, colour):
    """Adds colour * shape(distance / radius) to the pixels within radius."""
    stride = planes[0].ubound_x + 1
    for y in range(max(0, int(cy - radius)), min(height, int(cy + radius) + 2)):
        for x in range(max(0, int(cx - radius)), min(width, int(cx + radius) + 2)):
            t = ((x - cx) ** 2 + (y - cy) ** 2) ** 0.5 / radius
            if t >= 1.0:
                continue
            weight = shape(t)
            index = y * stride + x
            for plane, value in zip(planes, colour):
                plane.data[index] = min(255, plane.data[index] + int(value * weight + 0.5))


def flare_frames(job):
    brightness = job.ask("Flare brightness", 100, 10, 200) / 100.0
    frames = job.frame_count()
    side = min(job.width, job.height)
    mid_x, mid_y = (job.width - 1) / 2.0, (job.height - 1) / 2.0
    for frame in range(frames):
        along = frame / (frames - 1) if frames > 1 else 0.0
        fx = (START[0] + (END[0] - START[0]) * along) * (job.width - 1)
        fy = (START[1] + (END[1] - START[1]) * along) * (job.height - 1)
        planes = job.read_frame(frame)
        for place, size, shape, colour in ELEMENTS:
            cx = fx + (2.0 * (mid_x - fx)) * place
            cy = fy + (2.0 * (mid_y - fy)) * place
            add_glow(planes, job.width, job.height, cx, cy, max(1.0, size * side), shape,
                     [v * brightness for v in colour])
        job.write_frame(frame, *planes)
        job.progress(frame + 1, frames)
    job.wib.Wib_GetFrame()


if __name__ == "__main__":
    sys.exit(run_plugin("Animated flares", flare_frames))
