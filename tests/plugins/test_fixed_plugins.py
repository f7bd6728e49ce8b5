# SPDX-License-Identifier: GPL-3.0-or-later
"""The fixed plug-in commands and the companion windows, end to end against
PROGRAM --headless. WIB_PLUGIN_DIR is the build's plug-in folder, which holds
the built Clock2_pm.exe and CalendarWidget_pm.exe."""

import os
import signal
import unittest

from test_plugin_launch import PAINTER, PluginFolderCase, wait_for_pixel
from test_python_sdk import ServerProcess, process_alive, wait_until
from wibbleton import Wibbleton_Class

FIXED = {
    "plugins.start.filmgrain", "plugins.start.confetti", "plugins.start.optimized_palette",
    "plugins.start.animated_flares", "plugins.start.multi_frame_spherize", "plugins.start.bmp",
    "plugins.start.matte_cutter", "plugins.start.force_field", "plugins.start.fx_brush",
    "plugins.start.array_to_animation", "plugins.start.clock", "plugins.start.audio_recorder",
    "plugins.start.media_player", "plugins.start.calendar",
}


def sockets_of(pid):
    folder = "/proc/%d/fd" % pid
    count = 0
    for name in os.listdir(folder):
        try:
            count += os.readlink(os.path.join(folder, name)).startswith("socket:")
        except OSError:
            pass
    return count


class FixedCommandsTest(PluginFolderCase):
    """The commands start their files by exact name; a missing one answers 0."""

    # Found by its exact name, space and all, though no menu lists a _pm file
    # of that caption under this command.
    PLUGINS = (("Audio Recorder_pm.exe", PAINTER, 0o755),)

    def test_one_command_per_fixed_plugin(self):
        commands = {c["id"]: c for c in self.wib.Wib_ListCommands()
                    if c["id"].startswith("plugins.start.")}
        self.assertEqual(set(commands), FIXED)
        self.assertEqual(commands["plugins.start.filmgrain"]["menu"], "Filter/Plug-in effects")
        self.assertEqual(commands["plugins.start.clock"]["menu"], "Plug-ins/Widgets")

    def test_present_file_starts_and_missing_one_answers_zero(self):
        self.wib.Wib_NewBuffer(8, 6)
        self.assertGreater(self.wib.Wib_RunCommand("plugins.start.audio_recorder"), 0)
        expected = 10 + 256 * 20 + 65536 * 30
        self.assertEqual(wait_for_pixel(self.wib, 1, 2, expected), expected)
        self.assertEqual(self.wib.Wib_RunCommand("plugins.start.media_player"), 0)
        self.assertEqual(self.wib.Wib_RunCommand("plugins.start.filmgrain"), 0)


class CompanionWindowTest(unittest.TestCase):
    """Clock and calendar connect to the program and end when it goes away,
    even when it dies without asking them to."""

    def setUp(self):
        self.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"],
                                    ["--plugin-dir", os.environ["WIB_PLUGIN_DIR"]])
        self.wib = Wibbleton_Class(self.server.path, self.server.token)
        self.pids = []

    def tearDown(self):
        self.wib.close()
        self.server.stop()
        # Widgets that failed the test are not left behind.
        for pid in self.pids:
            if process_alive(pid):
                os.kill(pid, signal.SIGKILL)

    def test_widgets_connect_and_end_with_the_program(self):
        program = self.server.process.pid
        before = sockets_of(program)
        self.pids = pids = [self.wib.Wib_RunCommand("plugins.start.clock"),
                            self.wib.Wib_RunCommand("plugins.start.calendar")]
        self.assertTrue(all(pid > 0 for pid in pids))
        # Each holds a connection of its own to the program.
        self.assertTrue(wait_until(lambda: sockets_of(program) == before + 2))
        self.assertTrue(all(process_alive(pid) for pid in pids))
        # Killed, the program cannot stop them: they notice the connection close.
        self.server.process.send_signal(signal.SIGKILL)
        self.server.process.wait()
        for pid in pids:
            self.assertTrue(wait_until(lambda: not process_alive(pid)), pid)


if __name__ == "__main__":
    unittest.main()
