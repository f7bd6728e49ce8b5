#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Inverts the red plane of the current image.

An example plug-in. Wibbleton lists executable files whose names end in
"_pf.exe" in Plug-ins > Filter plug-ins, so this script is installed under such
a name (the build links it into its plug-in folder as InvertRed_pf.exe), and
starts it with WIBBLETON_SERVER and WIBBLETON_TOKEN set. It follows the
protocol every plug-in that changes the image follows: lock the interface,
save an undo step, show progress, write the planes, redraw, unlock.
"""

import os
import sys

# The client library beside the examples, also when started through a link.
sys.path.insert(0, os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "sdk", "python"))

from wibbleton import Wibbleton_Class, WibbletonError  # noqa: E402

INVERT = bytes(255 - v for v in range(256))


def main():
    wib = Wibbleton_Class()
    wib.Wib_LockInterface()
    try:
        wib.Wib_SaveUndo()
        wib.Wib_StatusOpen("Inverting red")
        wib.Wib_SetProgress(0)
        red = wib.Wib_GetRBuffer()
        red.data = bytearray(red.data.translate(INVERT))
        wib.Wib_SetProgress(50)
        wib.Wib_SetRbuffer(red)
        wib.Wib_SetProgress(100)
        wib.Wib_StatusClose()
        wib.Wib_Refresh()
    except WibbletonError as error:
        wib.Wib_PrintError("invert_pf: %s" % error)
        return 1
    finally:
        wib.Wib_UnlockInterface()
    return 0


if __name__ == "__main__":
    sys.exit(main())
