# SPDX-License-Identifier: GPL-3.0-or-later
"""The installed program finds its data files and its own plug-ins without any
switch: the build is installed into a fresh prefix, the installed program is
started headless, and a bundled Python plug-in and a bundled C++ one are
listed and the Python one is run from there."""

import os
import shutil
import subprocess
import tempfile
import unittest

from test_python_sdk import ServerProcess, process_alive, wait_until
from wibbleton import Wibbleton_Class


class InstalledTreeTest(unittest.TestCase):
    def setUp(self):
        self.prefix = tempfile.mkdtemp(prefix="wib-install-")
        subprocess.run(["cmake", "--install", os.environ["WIB_BUILD_DIR"], "--prefix", self.prefix],
                       check=True, stdout=subprocess.DEVNULL)
        self.server = ServerProcess(os.path.join(self.prefix, "bin", "wibbleton"))
        self.wib = Wibbleton_Class(self.server.path, self.server.token)

    def tearDown(self):
        self.wib.close()
        self.server.stop()
        shutil.rmtree(self.prefix)

    def test_bundled_plugins_are_listed_and_run_from_the_installed_tree(self):
        ids = {c["id"] for c in self.wib.Wib_ListCommands()}
        self.assertIn("plugin.filter.InvertRed", ids)
        self.assertIn("plugin.brush.Fx_brush", ids)
        self.assertIn("plugin.misc.Clock2", ids)

        self.wib.Wib_NewBuffer(4, 2)
        self.wib.Wib_SetRGB(1, 1, 10, 20, 30)
        pid = self.wib.Wib_RunCommand("plugin.filter.InvertRed")
        self.assertGreater(pid, 0)
        self.assertTrue(wait_until(lambda: not process_alive(pid)), "the plug-in did not end")
        self.assertNotIn("Traceback", self.server.standard_error())
        # Packed as red | green << 8 | blue << 16.
        self.assertEqual(self.wib.Wib_GetRGB(1, 1), 245 | 20 << 8 | 30 << 16)


if __name__ == "__main__":
    unittest.main()
