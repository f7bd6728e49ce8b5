#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Optimized palette: reduces the image to at most 256 colours chosen for it
by median cut, then maps every pixel to one of them.

An image with that many colours or fewer keeps them and does not change.
Otherwise colours are grouped in cells of 8 x 8 x 8 values, and a subsample
of the pixels (about 65536, evenly spread) counts how many fall in each cell
and where in it. Median cut then starts with all cells in one box and splits
the box whose widest channel's span times its pixel count is largest (big,
busy boxes first) at the pixel-weighted median of that channel, until there
are enough boxes or none can be split; a box's colour is the mean of the
sampled pixels in it. Every pixel takes the colour of its
cell's box; a cell the subsample missed takes the box its middle falls in
by the same splits, so that no search is needed.

Asks for: "Colours" (2..256, default 256)."""

import os
import sys
from array import array

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import run_plugin  # noqa: E402

SAMPLES = 65536
CELL = bytes(v >> 3 for v in range(256))
# Where red, green and blue go in a 4-byte word so that the word reads as the
# integer r + 256 g + 65536 b.
OFFSETS = (0, 1, 2) if sys.byteorder == "little" else (3, 2, 1)


def packed(channels):
    """Three equal byte strings as one integer r + 256 g + 65536 b per pixel."""
    words = bytearray(4 * len(channels[0]))
    for offset, channel in zip(OFFSETS, channels):
        words[offset::4] = channel
    return memoryview(words).cast("I")


def unpacked(words):
    data = array("I", words).tobytes()
    return [bytearray(data[offset::4]) for offset in OFFSETS]


def rgb(colour):
    return colour & 0xFF, (colour >> 8) & 0xFF, colour >> 16


class Box:
    """Cells as sampled_cells() gives them, and the span of each channel."""

    def __init__(self, cells):
        self.cells = cells
        self.halves = ()
        self.pixels = sum(c[1] for c in cells)
        self.spans = [max(c[0][k] for c in cells) - min(c[0][k] for c in cells)
                      for k in range(3)]

    def widest(self):
        return max(range(3), key=lambda k: self.spans[k])

    def split(self):
        """Splits the box in two at the weighted median of its widest channel;
        a colour below `threshold` in `channel` belongs to the first half."""
        channel = self.widest()
        ordered = sorted(self.cells, key=lambda c: c[0][channel])
        half = sum(c[1] for c in ordered) / 2.0
        seen = 0
        cut = 1
        for cut, c in enumerate(ordered, 1):
            seen += c[1]
            if seen >= half:
                break
        cut = min(cut, len(ordered) - 1)
        self.channel = channel
        self.threshold = (ordered[cut - 1][0][channel] + ordered[cut][0][channel]) / 2.0
        self.halves = Box(ordered[:cut]), Box(ordered[cut:])
        return self.halves

    def leaf_for(self, colour):
        """The undivided box a colour (r, g, b) falls in."""
        box = self
        while box.halves:
            box = box.halves[0] if colour[box.channel] < box.threshold else box.halves[1]
        return box

    def colour(self):
        """The mean of the sampled pixels, packed."""
        r, g, b = (int(sum(c[2][k] for c in self.cells) / self.pixels + 0.5) for k in range(3))
        return r + 256 * g + 65536 * b


def median_cut(cells, limit):
    """The box of all cells, split into at most `limit` undivided boxes, and those."""
    root = Box(cells)
    boxes = [root]
    while len(boxes) < limit:
        splittable = [b for b in boxes if len(b.cells) > 1]
        if not splittable:
            break
        box = max(splittable, key=lambda b: b.spans[b.widest()] * b.pixels)
        boxes.remove(box)
        boxes.extend(box.split())
    return root, boxes


def cell_of(colour):
    r, g, b = rgb(colour)
    return CELL[r] + 256 * CELL[g] + 65536 * CELL[b]


def sampled_cells(colours, step):
    """(mean colour, pixel count, colour sums, packed cell) for each cell that
    every step-th of the packed colours falls in."""
    sums = {}
    for colour in colours[::step]:
        r, g, b = rgb(colour)
        key = cell_of(colour)
        entry = sums.get(key)
        if entry is None:
            sums[key] = [1, r, g, b]
        else:
            entry[0] += 1
            entry[1] += r
            entry[2] += g
            entry[3] += b
    return [(tuple(v / count for v in total), count, tuple(total), key)
            for key, (count, *total) in sums.items()]


def reduce_colours(job):
    limit = job.ask_int("Colours", 256, 2, 256)
    planes = job.read_rgb()
    stride = planes[0].ubound_x + 1
    # The image without the spare column and row.
    colours = packed([b"".join(plane.data[row:row + job.width]
                               for row in range(0, stride * job.height, stride))
                      for plane in planes])
    if len(set(colours)) <= limit:
        return
    job.progress(1, 4)
    root, boxes = median_cut(sampled_cells(colours, max(1, len(colours) // SAMPLES)), limit)
    job.progress(2, 4)
    palette = {box: box.colour() for box in boxes}
    table = {cell[3]: palette[box] for box in boxes for cell in box.cells}
    cells = packed([plane.data.translate(CELL) for plane in planes])
    for cell in set(cells) - table.keys():
        centre = [v * 8 + 4 for v in rgb(cell)]
        table[cell] = palette[root.leaf_for(centre)]
    job.progress(3, 4)
    for plane, data in zip(planes, unpacked(map(table.__getitem__, cells))):
        plane.data = data
    job.write_rgb(*planes)


if __name__ == "__main__":
    sys.exit(run_plugin("Optimized palette", reduce_colours))
