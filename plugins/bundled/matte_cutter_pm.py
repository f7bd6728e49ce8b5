#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Matte cutter: cuts the image out along the selection (the alpha plane).

The image has no transparency of its own, so what lies outside the matte
becomes the secondary colour: a pixel keeps alpha/255 of itself and takes
(255 - alpha)/255 of the secondary colour. Fully selected pixels (alpha 255)
stay exactly as they were; unselected ones (alpha 0) become the secondary
colour; a soft edge fades between them. The alpha plane is used whether or
not the selection is shown, and is left as it was. With nothing selected the
plug-in says so and changes nothing. No options."""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import PluginFailure, run_plugin, unpack_colour  # noqa: E402
from wibbleton import Plane  # noqa: E402

# Wib_DoAlphaBlend weighs the given planes by 255 - alpha with this flag.
WEIGH_BY_UNSELECTED = 1


def cut(job):
    wib = job.wib
    alpha = wib.Wib_GetABuffer()
    stride = alpha.ubound_x + 1
    if not any(any(alpha.data[row:row + job.width])
               for row in range(0, stride * job.height, stride)):
        raise PluginFailure("Nothing is selected: select what to keep, then cut.")
    size = len(alpha.data)
    backdrop = [Plane(alpha.ubound_x, alpha.ubound_y, bytes([value]) * size)
                for value in unpack_colour(wib.Wib_GetSecondaryColor())]
    job.progress(1, 2)
    wib.Wib_DoAlphaBlend(*backdrop, WEIGH_BY_UNSELECTED)


if __name__ == "__main__":
    sys.exit(run_plugin("Matte cutter", cut))
