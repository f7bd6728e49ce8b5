#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Confetti: round dabs of bright, random colours scattered over the image.
Seeded, so a seed scatters the same confetti every time.

Asks for: "Pieces of confetti" (1..5000, default 150), "Largest piece radius"
(1..32 pixels, default 4; each piece gets 1..that) and "Confetti seed"
(0..999999, default 1)."""

import colorsys
import os
import random
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import run_plugin  # noqa: E402


def bright_colour(rng):
    """A strongly saturated, full-brightness colour of random hue."""
    r, g, b = colorsys.hsv_to_rgb(rng.random(), 0.85, 1.0)
    return int(round(r * 255)), int(round(g * 255)), int(round(b * 255))


def scatter(job):
    pieces = job.ask_int("Pieces of confetti", 150, 1, 5000)
    largest = job.ask_int("Largest piece radius", 4, 1, 32)
    rng = random.Random(job.ask_int("Confetti seed", 1, 0, 999999))
    planes = job.read_rgb()
    stride = planes[0].ubound_x + 1
    for piece in range(pieces):
        cx, cy = rng.randrange(job.width), rng.randrange(job.height)
        radius = rng.randint(1, largest)
        colour = bright_colour(rng)
        for y in range(max(0, cy - radius), min(job.height, cy + radius + 1)):
            for x in range(max(0, cx - radius), min(job.width, cx + radius + 1)):
                if (x - cx) ** 2 + (y - cy) ** 2 <= radius * radius:
                    for plane, value in zip(planes, colour):
                        plane.data[y * stride + x] = value
        if piece % 50 == 0:
            job.progress(piece, pieces)
    job.write_rgb(*planes)


if __name__ == "__main__":
    sys.exit(run_plugin("Confetti", scatter))
