# SPDX-License-Identifier: GPL-3.0-or-later
"""Plug-ins dropped into a folder, listed and started by the program itself,
end to end: PROGRAM --headless --plugin-dir FOLDER, driven through the Python
client. The plug-ins started are scripts that use the same client."""

import os
import shutil
import stat
import tempfile
import time
import unittest

from test_python_sdk import PATIENCE, ServerProcess
from wibbleton import Wibbleton_Class

# Paints one pixel, and leaves a file in the folder it was started in.
PAINTER = """#!/usr/bin/python3
from wibbleton import Wibbleton_Class
wib = Wibbleton_Class()
wib.Wib_SetRGB(1, 2, 10, 20, 30)
wib.Wib_Refresh()
open("ran.txt", "w").write("ran")
"""


def write_plugin(path, text, mode=0o755):
    with open(path, "w") as script:
        script.write(text)
    os.chmod(path, mode)


class PluginLaunchTest(unittest.TestCase):
    def setUp(self):
        self.plugins = tempfile.mkdtemp(prefix="wib-plugins-")
        write_plugin(os.path.join(self.plugins, "Dot_pf.exe"), PAINTER)
        write_plugin(os.path.join(self.plugins, "Idle_pf.exe"), PAINTER, 0o644)
        write_plugin(os.path.join(self.plugins, "Broken_pm.exe"), "#!/nonexistent/interpreter\n")
        self.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"],
                                    ["--plugin-dir", self.plugins])
        self.wib = Wibbleton_Class(self.server.path, self.server.token)

    def tearDown(self):
        self.wib.close()
        self.server.stop()
        shutil.rmtree(self.plugins)

    def plugin_commands(self):
        return [(c["id"], c["caption"], c["menu"]) for c in self.wib.Wib_ListCommands()
                if c["id"].startswith("plugin.")]

    def test_listing_and_start_up_log(self):
        self.assertEqual(sorted(self.plugin_commands()), [
            ("plugin.filter.Dot", "Dot", "Plug-ins/Filter plug-ins"),
            ("plugin.misc.Broken", "Broken", "Plug-ins/Misc plug-ins"),
        ])
        log = self.server.standard_error()
        self.assertLess(log.index("Enumerating plugins..."),
                        log.index("Running startup plugins, if any."))

    def test_started_plugin_connects_and_paints(self):
        self.wib.Wib_NewBuffer(8, 6)
        pid = self.wib.Wib_RunCommand("plugin.filter.Dot")
        self.assertGreater(pid, 0)
        expected = 10 + 256 * 20 + 65536 * 30
        deadline = time.monotonic() + PATIENCE
        while self.wib.Wib_GetRGB(1, 2) != expected and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual(self.wib.Wib_GetRGB(1, 2), expected)
        # It ran in the plug-in folder.
        while not os.path.exists(os.path.join(self.plugins, "ran.txt")) \
                and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertTrue(os.path.exists(os.path.join(self.plugins, "ran.txt")))

    def test_unstartable_plugin_answers_zero(self):
        self.assertEqual(self.wib.Wib_RunCommand("plugin.misc.Broken"), 0)

    def test_rescan_lists_a_new_file_once(self):
        write_plugin(os.path.join(self.plugins, "Late_pi.exe"), PAINTER)
        os.remove(os.path.join(self.plugins, "Broken_pm.exe"))
        self.assertEqual(self.wib.Wib_RunCommand("plugins.rescan"), -1)
        self.assertEqual(self.wib.Wib_RunCommand("plugins.rescan"), -1)
        ids = [c[0] for c in self.plugin_commands()]
        self.assertEqual(sorted(ids), ["plugin.filter.Dot", "plugin.import.Late"])

    def test_missing_special_plugin_says_so(self):
        self.assertEqual(self.wib.Wib_RunCommand("plugins.wibbyfx"), 0)
        self.assertTrue(self.server.wait_for_output("MessageBox: Couldn't find WibbyFX plugin."))


if __name__ == "__main__":
    unittest.main()
