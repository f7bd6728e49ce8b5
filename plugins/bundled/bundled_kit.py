# SPDX-License-Identifier: GPL-3.0-or-later
"""What the bundled Python plug-ins share: the connection, the protocol every
plug-in that changes the image follows, and plane helpers.

A plug-in body is a function work(job) run by run_plugin(). The kit locks the
interface and the canvas, saves undo and opens the status window before it;
refreshes after it; and whatever happens closes the status window and
unlocks. A failure is written to standard error, and also shown to the user
(a PluginFailure: something the user can put right) or written to the
program's log (a refused call); the plug-in then exits 1.
"""

import os
import sys

sys.path.insert(0, os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "sdk", "python"))

from wibbleton import Wibbleton_Class, WibbletonError  # noqa: E402

# v -> v clamped to a byte, for v in -255..510: CLAMP[v + 255].
CLAMP = bytes(min(255, max(0, v - 255)) for v in range(766))
ALPHA_IN_FORCE = 255


class PluginFailure(Exception):
    """A reason to stop that the user should read."""


class Job:
    """The connection and the image's shape, handed to a plug-in's work."""

    def __init__(self, wib):
        self.wib = wib
        self.width = wib.Wib_BufferWidth()
        self.height = wib.Wib_BufferHeight()

    def progress(self, done, total):
        self.wib.Wib_SetProgress(100.0 * done / total if total else 100.0)

    def ask(self, prompt, default, low, high):
        """A number from the program's value box; the default when cancelled."""
        return self.wib.Wib_ValueBox(prompt, default, low, high)

    def ask_int(self, prompt, default, low, high):
        return int(round(self.ask(prompt, default, low, high)))

    def read_rgb(self):
        wib = self.wib
        return wib.Wib_GetRBuffer(), wib.Wib_GetGBuffer(), wib.Wib_GetBBuffer()

    def write_rgb(self, red, green, blue):
        """Writes the three planes; while a selection is in force they are
        blended in through it, as the program's own filters do."""
        wib = self.wib
        if wib.Wib_GetAlphabits() == ALPHA_IN_FORCE:
            wib.Wib_DoAlphaBlend(red, green, blue, 0)
            return
        wib.Wib_SetRbuffer(red)
        wib.Wib_SetGBuffer(green)
        wib.Wib_SetBBuffer(blue)

    def frame_count(self):
        """The animation's frame count; a failure when there is none."""
        frames = self.wib.Wib_GetTotalFrames()
        if frames < 1:
            raise PluginFailure("This plug-in works on an animation: make one first.")
        return frames

    def read_frame(self, frame):
        wib = self.wib
        return wib.Wib_GetRFrame(frame), wib.Wib_GetGFrame(frame), wib.Wib_GetBFrame(frame)

    def write_frame(self, frame, red, green, blue):
        wib = self.wib
        wib.Wib_SetRFrame(red, frame)
        wib.Wib_SetGFrame(green, frame)
        wib.Wib_SetBFrame(blue, frame)


def unpack_colour(colour):
    return colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF


def remap(plane, sources):
    """A copy of the plane with byte i taken from byte sources[i]."""
    plane.data = bytearray(map(plane.data.__getitem__, sources))
    return plane


def radial_sources(width, height, stride, source_fraction):
    """For every byte of a plane `stride` bytes wide, the index of the byte it
    takes its value from, for a distortion about the image's centre inside the
    largest circle that fits: a pixel at fraction t (0..1) of the radius from
    the centre takes the pixel at fraction source_fraction(t) along the same
    ray. Pixels outside the circle, and the spare column and row, stay."""
    cx = (width - 1) / 2.0
    cy = (height - 1) / 2.0
    radius = max(min(width, height) / 2.0, 1.0)
    sources = list(range(stride * (height + 1)))
    for y in range(height):
        dy = y - cy
        row = y * stride
        for x in range(width):
            dx = x - cx
            t = (dx * dx + dy * dy) ** 0.5 / radius
            if t >= 1.0 or t == 0.0:
                continue
            scale = source_fraction(t) / t
            sx = min(width - 1, max(0, int(round(cx + dx * scale))))
            sy = min(height - 1, max(0, int(round(cy + dy * scale))))
            sources[row + x] = sy * stride + sx
    return sources


def run_plugin(caption, work):
    """Runs work(job) under the plug-in protocol; answers the exit status."""
    name = os.path.basename(sys.argv[0])
    try:
        wib = Wibbleton_Class()
    except (OSError, RuntimeError, WibbletonError) as error:
        print("%s: cannot reach Wibbleton: %s" % (name, error), file=sys.stderr)
        return 2
    try:
        wib.Wib_LockInterface()
        wib.Wib_LockBuffer()
        try:
            wib.Wib_SaveUndo()
            wib.Wib_StatusOpen(caption)
            try:
                job = Job(wib)
                wib.Wib_SetProgress(0)
                work(job)
                wib.Wib_SetProgress(100)
            finally:
                wib.Wib_StatusClose()
            wib.Wib_Refresh()
        finally:
            wib.Wib_UnlockBuffer()
            wib.Wib_UnlockInterface()
    except PluginFailure as failure:
        print("%s: %s" % (name, failure), file=sys.stderr)
        wib.Wib_MessageBox(str(failure), caption)
        return 1
    except (WibbletonError, ValueError) as error:
        print("%s: %s" % (name, error), file=sys.stderr)
        wib.Wib_PrintError("%s: %s" % (name, error))
        return 1
    except OSError as error:
        print("%s: lost Wibbleton: %s" % (name, error), file=sys.stderr)
        return 1
    finally:
        wib.close()
    return 0
