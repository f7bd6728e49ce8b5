# SPDX-License-Identifier: GPL-3.0-or-later
"""The bundled Python plug-ins, end to end: PROGRAM --headless --plugin-dir
with the build's plug-in folder (WIB_PLUGIN_DIR); each plug-in is started as
a user would, through its command, and its effect read back from the planes.
Headless, the value boxes answer their defaults."""

import os
import shutil
import struct
import tempfile
import unittest

from test_python_sdk import ServerProcess, process_alive, wait_until
from wibbleton import Plane, Wibbleton_Class

WIDTH, HEIGHT = 40, 30


def bmp_24(width, height, pixel):
    """An uncompressed 24-bit bitmap, bottom row first, rows padded to 4 bytes."""
    row_size = (width * 3 + 3) & ~3
    rows = b""
    for y in reversed(range(height)):
        row = b"".join(bytes(reversed(pixel(x, y))) for x in range(width))
        rows += row + b"\0" * (row_size - len(row))
    header = struct.pack("<2sIHHI", b"BM", 54 + len(rows), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(rows), 2835, 2835, 0, 0)
    return header + info + rows


def image_pixels(planes, width, height):
    """(r, g, b) of every pixel of the image, the spare column and row left out."""
    stride = planes[0].ubound_x + 1
    return [tuple(p.data[y * stride + x] for p in planes)
            for y in range(height) for x in range(width)]


def grid_level(value, levels):
    """The nearest of `levels` evenly spaced values over 0..255."""
    step = 255 / (levels - 1)
    return int(round(round(value / step) * step))


def mean_error(pixels, others):
    errors = [abs(a - b) for p, q in zip(pixels, others) for a, b in zip(p, q)]
    return sum(errors) / len(errors)


def filled(value, width=WIDTH, height=HEIGHT, at=None):
    """A plane of a width x height document; at(x, y) gives each value."""
    plane = Plane(width, height, bytes([value]) * ((width + 1) * (height + 1)))
    if at is not None:
        for y in range(height):
            for x in range(width):
                plane[x, y] = at(x, y)
    return plane


class BundledPluginTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="wib-bundled-")
        cls.bitmap = os.path.join(cls.folder, "small.bmp")
        with open(cls.bitmap, "wb") as out:
            out.write(bmp_24(5, 3, lambda x, y: (x * 50, y * 100, 7)))
        os.environ["WIBBLETON_BMP_FILE"] = cls.bitmap
        try:
            cls.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"],
                                       ["--plugin-dir", os.environ["WIB_PLUGIN_DIR"]])
        finally:
            del os.environ["WIBBLETON_BMP_FILE"]
        cls.wib = Wibbleton_Class(cls.server.path, cls.server.token)

    @classmethod
    def tearDownClass(cls):
        cls.wib.close()
        cls.server.stop()
        shutil.rmtree(cls.folder)

    def setUp(self):
        self.wib.Wib_FreeAnim()
        self.wib.Wib_NewBuffer(WIDTH, HEIGHT)
        self.log_start = len(self.server.standard_error())

    def log(self):
        """What the program and its plug-ins wrote since the test began."""
        return self.server.standard_error()[self.log_start:]

    def run_plugin(self, command, succeeds=True):
        """Starts the plug-in's command and waits for its process to end."""
        pid = self.wib.Wib_RunCommand(command)
        self.assertGreater(pid, 0, command)
        self.assertTrue(wait_until(lambda: not process_alive(pid)), command + " did not end")
        log = self.log()
        self.assertNotIn("Traceback", log)
        name = command.split(".")[-1]
        failed = any(line.startswith(name + "_p") for line in log.splitlines())
        self.assertEqual(failed, not succeeds, log)

    def planes(self):
        wib = self.wib
        return wib.Wib_GetRBuffer(), wib.Wib_GetGBuffer(), wib.Wib_GetBBuffer()

    def set_planes(self, red, green, blue):
        self.wib.Wib_SetRbuffer(red)
        self.wib.Wib_SetGBuffer(green)
        self.wib.Wib_SetBBuffer(blue)

    def frame_pixels(self, frame):
        wib = self.wib
        planes = (wib.Wib_GetRFrame(frame), wib.Wib_GetGFrame(frame), wib.Wib_GetBFrame(frame))
        return image_pixels(planes, wib.Wib_BufferWidth(), wib.Wib_BufferHeight())

    def test_film_grain_is_colourless_bounded_and_seeded(self):
        self.wib.Wib_ClearBuffer(128, 128, 128)
        self.run_plugin("plugin.filter.Filmgrain")
        first = image_pixels(self.planes(), WIDTH, HEIGHT)
        self.assertTrue(all(r == g == b for r, g, b in first))
        greys = [r for r, _, _ in first]
        # The default strength 24 is the largest offset; the spread is centred.
        self.assertLessEqual(max(abs(v - 128) for v in greys), 24)
        self.assertGreater(len(set(greys)), 10)
        self.assertLess(abs(sum(greys) / len(greys) - 128), 2)
        self.wib.Wib_ClearBuffer(128, 128, 128)
        self.run_plugin("plugin.filter.Filmgrain")
        self.assertEqual(image_pixels(self.planes(), WIDTH, HEIGHT), first)

    def test_a_filter_changes_only_the_selection_in_force(self):
        self.wib.Wib_ClearBuffer(128, 128, 128)
        self.wib.Wib_SetABuffer(filled(0, at=lambda x, y: 255 if x < 10 else 0))
        self.wib.Wib_AlphaOn()
        try:
            self.run_plugin("plugin.filter.Filmgrain")
        finally:
            self.wib.Wib_AlphaOff()
        pixels = image_pixels(self.planes(), WIDTH, HEIGHT)
        inside = [p for i, p in enumerate(pixels) if i % WIDTH < 10]
        outside = [p for i, p in enumerate(pixels) if i % WIDTH >= 10]
        self.assertEqual(set(outside), {(128, 128, 128)})
        self.assertGreater(len(set(inside)), 10)

    def test_confetti_scatters_saturated_dabs_the_same_way_each_time(self):
        self.run_plugin("plugin.filter.Confetti")
        first = image_pixels(self.planes(), WIDTH, HEIGHT)
        painted = [p for p in first if p != (255, 255, 255)]
        self.assertGreater(len(painted), WIDTH * HEIGHT // 10)
        self.assertTrue(all(max(p) == 255 and max(p) - min(p) >= 200 for p in painted))
        self.assertGreater(len(set(painted)), 20)
        self.wib.Wib_ClearBuffer(255, 255, 255)
        self.run_plugin("plugin.filter.Confetti")
        self.assertEqual(image_pixels(self.planes(), WIDTH, HEIGHT), first)

    def test_optimized_palette_keeps_at_most_256_close_colours(self):
        red = filled(0, at=lambda x, y: x * 6)
        green = filled(0, at=lambda x, y: y * 8)
        blue = filled(0, at=lambda x, y: (x * y * 3) % 256)
        self.set_planes(red, green, blue)
        before = image_pixels((red, green, blue), WIDTH, HEIGHT)
        self.assertGreater(len(set(before)), 1000)
        self.run_plugin("plugin.filter.OptimizedPalette")
        after = image_pixels(self.planes(), WIDTH, HEIGHT)
        self.assertLessEqual(len(set(after)), 256)
        self.assertGreater(len(set(after)), 200)
        # Closer than the plain 6 x 6 x 7 grid of 252 colours.
        self.assertLess(mean_error(before, after), mean_error(before, [
            tuple(grid_level(v, levels) for v, levels in zip(p, (6, 6, 7))) for p in before]))

    def test_optimized_palette_leaves_an_image_of_few_colours_alone(self):
        red = filled(0, at=lambda x, y: 200 if x < 10 else 17)
        green = filled(0, at=lambda x, y: 99 if y < 7 else 3)
        blue = filled(0, at=lambda x, y: (x + y) % 5)
        self.set_planes(red, green, blue)
        before = image_pixels((red, green, blue), WIDTH, HEIGHT)
        self.run_plugin("plugin.filter.OptimizedPalette")
        self.assertEqual(image_pixels(self.planes(), WIDTH, HEIGHT), before)

    def test_bmp_import_opens_the_named_file(self):
        self.run_plugin("plugin.import.BMP")
        self.assertEqual((self.wib.Wib_BufferWidth(), self.wib.Wib_BufferHeight()), (5, 3))
        self.assertEqual(image_pixels(self.planes(), 5, 3),
                         [(x * 50, y * 100, 7) for y in range(3) for x in range(5)])

    def test_matte_cutter_keeps_the_selection_and_fills_the_rest(self):
        red = filled(0, at=lambda x, y: x * 5)
        green = filled(0, at=lambda x, y: y * 7)
        blue = filled(90)
        self.set_planes(red, green, blue)
        before = image_pixels((red, green, blue), WIDTH, HEIGHT)
        alpha = filled(0, at=lambda x, y: 255 if x < 20 else 128 if x == 20 else 0)
        matte = [a for a, _, _ in image_pixels((alpha, alpha, alpha), WIDTH, HEIGHT)]
        self.wib.Wib_SetABuffer(alpha)
        self.wib.Wib_SetSecondaryColor(10 + 256 * 20 + 65536 * 30)
        self.run_plugin("plugin.misc.MatteCutter")
        for old, new, alpha in zip(before, image_pixels(self.planes(), WIDTH, HEIGHT), matte):
            expected = tuple((v * alpha + s * (255 - alpha) + 127) // 255
                             for v, s in zip(old, (10, 20, 30)))
            self.assertEqual(new, expected)

    def test_matte_cutter_with_nothing_selected_says_so_and_changes_nothing(self):
        self.wib.Wib_SetABuffer(filled(0))
        self.wib.Wib_ClearBuffer(1, 2, 3)
        self.run_plugin("plugin.misc.MatteCutter", succeeds=False)
        self.assertIn("MessageBox: Nothing is selected", self.log())
        self.assertEqual(set(image_pixels(self.planes(), WIDTH, HEIGHT)), {(1, 2, 3)})

    def assert_swells(self, before, after, width, height):
        """Right of the centre a swelling shows values from nearer the centre
        (smaller x, so smaller red), left of it larger; the centre and the
        corners, outside the circle, stay."""
        centre = (height // 2) * width + width // 2
        self.assertEqual(after[centre], before[centre])
        for corner in (0, width - 1, (height - 1) * width, height * width - 1):
            self.assertEqual(after[corner], before[corner])
        row = (height // 2) * width
        right = [after[row + x][0] - before[row + x][0] for x in range(width // 2 + 1, width)]
        left = [after[row + x][0] - before[row + x][0] for x in range(0, width // 2)]
        self.assertTrue(all(d <= 0 for d in right) and any(d < 0 for d in right))
        self.assertTrue(all(d >= 0 for d in left) and any(d > 0 for d in left))

    def test_force_field_pushes_outwards_about_the_centre(self):
        red = filled(0, at=lambda x, y: x * 6)
        green = filled(0, at=lambda x, y: y * 8)
        self.set_planes(red, green, filled(50))
        before = image_pixels((red, green, filled(50)), WIDTH, HEIGHT)
        self.run_plugin("plugin.misc.ForceField")
        self.assert_swells(before, image_pixels(self.planes(), WIDTH, HEIGHT), WIDTH, HEIGHT)

    def test_array_to_animation_makes_a_frame_of_each_cell(self):
        # Four cells of 10 x 30 side by side (the default grid is 4 x 1), each
        # its own colour, with a mark at its top left pixel.
        self.set_planes(filled(0, at=lambda x, y: 255 if (x % 10, y) == (0, 0) else x // 10 * 60),
                        filled(5), filled(0, at=lambda x, y: 200 - x // 10 * 40))
        self.run_plugin("plugin.misc.ArrayToAnimation")
        self.assertEqual(self.wib.Wib_GetTotalFrames(), 4)
        self.assertEqual((self.wib.Wib_BufferWidth(), self.wib.Wib_BufferHeight()), (10, 30))
        for frame in range(4):
            pixels = self.frame_pixels(frame)
            self.assertEqual(pixels[0], (255, 5, 200 - frame * 40))
            self.assertEqual(set(pixels[1:]), {(frame * 60, 5, 200 - frame * 40)})
        self.assertEqual(image_pixels(self.planes(), 10, 30), self.frame_pixels(0))

    def test_animated_flares_move_and_only_lighten(self):
        self.wib.Wib_ClearBuffer(40, 40, 40)
        self.wib.Wib_CreateAnimAdv(3, 3)
        self.run_plugin("plugin.filter.Animated_Flares")
        for frame in range(3):
            pixels = self.frame_pixels(frame)
            self.assertTrue(all(min(p) >= 40 for p in pixels))
            brightest = max(range(len(pixels)), key=lambda i: sum(pixels[i]))
            # From (20%, 25%) to (80%, 60%) of (width - 1, height - 1).
            along = frame / 2
            x = (0.2 + 0.6 * along) * (WIDTH - 1)
            y = (0.25 + 0.35 * along) * (HEIGHT - 1)
            self.assertLessEqual(abs(brightest % WIDTH - x), 1)
            self.assertLessEqual(abs(brightest // WIDTH - y), 1)

    def test_frame_plugins_refuse_an_image_without_animation(self):
        self.wib.Wib_ClearBuffer(40, 40, 40)
        for command in ("plugin.filter.Animated_Flares", "plugin.filter.MultiFrameSpherize"):
            self.log_start = len(self.server.standard_error())
            self.run_plugin(command, succeeds=False)
            self.assertIn("MessageBox: This plug-in works on an animation", self.log())
        self.assertEqual(set(image_pixels(self.planes(), WIDTH, HEIGHT)), {(40, 40, 40)})

    def test_multi_frame_spherize_grows_over_the_frames(self):
        red = filled(0, at=lambda x, y: x * 6)
        green = filled(0, at=lambda x, y: y * 8)
        self.set_planes(red, green, filled(50))
        before = image_pixels((red, green, filled(50)), WIDTH, HEIGHT)
        self.wib.Wib_CreateAnimAdv(3, 3)
        self.run_plugin("plugin.filter.MultiFrameSpherize")
        frames = [self.frame_pixels(frame) for frame in range(3)]
        self.assertEqual(frames[0], before)
        self.assert_swells(before, frames[1], WIDTH, HEIGHT)
        self.assert_swells(frames[1], frames[2], WIDTH, HEIGHT)



if __name__ == "__main__":
    unittest.main()
