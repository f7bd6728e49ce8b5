#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Force field: pushes the image away from its centre, or pulls it in,
inside the largest circle about the centre that fits in the image.

A pixel at fraction t of the radius from the centre takes the pixel at
t - s t (1 - t)^2 along the same ray, s being the strength / 100 times 0.9
(below 1, so no two pixels swap order along a ray). The shift is strongest
part-way out and nothing at the centre and the rim, so the field blends into
the untouched corners. A positive strength pushes outwards (the middle
swells), a negative one pulls inwards (it pinches). Nearest pixel.

Asks for: "Force (-100 pull .. 100 push)" (default 50)."""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import radial_sources, remap, run_plugin  # noqa: E402


def push(job):
    strength = job.ask("Force (-100 pull .. 100 push)", 50, -100, 100) / 100.0 * 0.9
    red, green, blue = job.read_rgb()
    sources = radial_sources(job.width, job.height, red.ubound_x + 1,
                             lambda t: t - strength * t * (1.0 - t) ** 2)
    job.progress(1, 2)
    job.write_rgb(*(remap(plane, sources) for plane in (red, green, blue)))


if __name__ == "__main__":
    sys.exit(run_plugin("Force field", push))
