#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Array to animation: cuts a sprite sheet (a grid of equal cells) into the
frames of an animation, left to right, then top to bottom.

The image becomes one cell in size (the top left cell), the held animation
is replaced by one frame per cell, and the first frame is shown. Cells are
the image's width / columns by its height / rows, rounded down; what is left
over at the right and bottom is dropped.

Asks for: "Columns in the sheet" (1..256, default 4) and "Rows in the sheet"
(1..256, default 1)."""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import PluginFailure, run_plugin  # noqa: E402
from wibbleton import Plane  # noqa: E402

TOP_LEFT = 0
# Wib_CreateAnimAdv: frames start cleared; a held animation goes without asking.
REPLACE_ANIMATION = 2


def cell(sheet, left, top, width, height):
    """One cell of a sheet's plane as a plane of a width x height document."""
    stride = sheet.ubound_x + 1
    out = Plane(width, height)
    for y in range(height):
        start = (top + y) * stride + left
        out.data[y * (width + 1):y * (width + 1) + width] = sheet.data[start:start + width]
    return out


def split_sheet(job):
    wib = job.wib
    columns = job.ask_int("Columns in the sheet", 4, 1, 256)
    rows = job.ask_int("Rows in the sheet", 1, 1, 256)
    width, height = job.width // columns, job.height // rows
    if width < 1 or height < 1:
        raise PluginFailure("The image is too small for %d x %d cells." % (columns, rows))
    sheet = job.read_rgb()
    wib.Wib_ChangeBufferSize(width, height, 255, 255, 255, TOP_LEFT)
    frames = columns * rows
    wib.Wib_CreateAnimAdv(frames, REPLACE_ANIMATION)
    for index in range(frames):
        left, top = (index % columns) * width, (index // columns) * height
        job.write_frame(index, *(cell(plane, left, top, width, height) for plane in sheet))
        job.progress(index + 1, frames)
    # The image is the first cell already, so storing it into frame 0 is harmless.
    wib.Wib_GotoFrame(0)


if __name__ == "__main__":
    sys.exit(run_plugin("Array to animation", split_sheet))
