#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""BMP import: opens a Windows bitmap (.bmp) as the image, through the
program's own bitmap reader (uncompressed 8, 24 and 32-bit files).

The file is, in this order: the plug-in's first argument, the environment
variable WIBBLETON_BMP_FILE (for scripted runs), or the one chosen in the
program's file dialog. Cancelling the dialog changes nothing."""

import os
import sys

sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))

from bundled_kit import PluginFailure, run_plugin  # noqa: E402

FILTER = "Windows bitmap (*.bmp);;All files (*)"


def chosen_file(job):
    if len(sys.argv) > 1:
        return sys.argv[1]
    named = os.environ.get("WIBBLETON_BMP_FILE")
    if named:
        return named
    return job.wib.Wib_RequestFile_Open("Import a bitmap", FILTER)


def import_bitmap(job):
    path = chosen_file(job)
    if not path:
        return
    job.wib.Wib_Status(os.path.basename(path))
    # False when refused; the program has told the user why.
    if not job.wib.Wib_LoadBMP(os.path.abspath(path)):
        raise PluginFailure("Could not open %s as a bitmap." % path)


if __name__ == "__main__":
    sys.exit(run_plugin("Import bitmap", import_bitmap))
