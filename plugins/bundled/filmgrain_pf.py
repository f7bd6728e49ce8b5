#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Film grain: the same random brightness offset added to red, green and blue
of every pixel, so the grain is colourless, as on black-and-white film. The
noise is seeded, so a seed gives the same grain on the same image every time.

Asks for: "Grain strength" (1..100, default 24: the largest offset) and
"Grain seed" (0..999999, default 1)."""

import os
import random
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import CLAMP, run_plugin  # noqa: E402


def add_grain(job):
    strength = job.ask_int("Grain strength", 24, 1, 100)
    seed = job.ask_int("Grain seed", 1, 0, 999999)
    rng = random.Random(seed)
    red, green, blue = job.read_rgb()
    size = len(red.data)
    # Two random bytes per pixel, summed: a triangular spread over
    # -255..255 peaked at 0, which looks more like grain than flat noise.
    first = rng.randbytes(size)
    second = rng.randbytes(size)
    scale = strength / 255.0
    offsets = [int(round((a + b - 255) * scale)) + 255 for a, b in zip(first, second)]
    for step, plane in enumerate((red, green, blue)):
        plane.data = bytearray(map(lambda v, o: CLAMP[v + o], plane.data, offsets))
        job.progress(step + 1, 4)
    job.write_rgb(red, green, blue)


if __name__ == "__main__":
    sys.exit(run_plugin("Film grain", add_grain))
