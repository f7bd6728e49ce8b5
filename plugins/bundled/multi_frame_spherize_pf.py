#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Multi-frame spherize: bulges every frame of the animation as if seen
through a glass hemisphere about its centre, more with each frame: the first
frame is left as it is and the last gets the full strength, so played back
the sphere swells.

Inside the largest circle about the centre, a pixel at fraction t of the
radius takes the pixel at (1 - a) t + a (1 - sqrt(1 - t^2)) along the same
ray, a growing from 0 to the strength / 100 over the frames. Nearest pixel.
The image is reloaded from the shown frame at the end.

Asks for: "Final spherize strength" (1..100, default 60)."""

import math
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import radial_sources, remap, run_plugin  # noqa: E402


def lens(amount):
    return lambda t: (1.0 - amount) * t + amount * (1.0 - math.sqrt(1.0 - t * t))


def spherize_frames(job):
    strength = job.ask("Final spherize strength", 60, 1, 100) / 100.0
    frames = job.frame_count()
    for frame in range(frames):
        amount = strength * frame / (frames - 1) if frames > 1 else strength
        if amount > 0.0:
            planes = job.read_frame(frame)
            sources = radial_sources(job.width, job.height, planes[0].ubound_x + 1, lens(amount))
            job.write_frame(frame, *(remap(plane, sources) for plane in planes))
        job.progress(frame + 1, frames)
    job.wib.Wib_GetFrame()


if __name__ == "__main__":
    sys.exit(run_plugin("Multi-frame spherize", spherize_frames))
