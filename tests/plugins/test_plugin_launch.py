# SPDX-License-Identifier: GPL-3.0-or-later
"""Plug-ins dropped into a folder, listed and started by the program itself,
end to end: PROGRAM --headless --plugin-dir FOLDER, driven through the Python
client. The plug-ins started are scripts that use the same client."""

import os
import shutil
import socket
import tempfile
import threading
import unittest

import msgpack

from test_python_sdk import ServerProcess, wait_until
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


class PluginFolderCase(unittest.TestCase):
    """The program started on a plug-in folder of its own, which holds the
    files of PLUGINS: (name, text, mode)."""

    PLUGINS = ()

    def setUp(self):
        self.plugins = tempfile.mkdtemp(prefix="wib-plugins-")
        for name, text, mode in self.PLUGINS:
            write_plugin(os.path.join(self.plugins, name), text, mode)
        self.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"],
                                    ["--plugin-dir", self.plugins])
        self.wib = Wibbleton_Class(self.server.path, self.server.token)

    def tearDown(self):
        self.wib.close()
        self.server.stop()
        shutil.rmtree(self.plugins)


class PluginLaunchTest(PluginFolderCase):
    PLUGINS = (("Dot_pf.exe", PAINTER, 0o755), ("Idle_pf.exe", PAINTER, 0o644),
               ("Broken_pm.exe", "#!/nonexistent/interpreter\n", 0o755))

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
        self.assertEqual(wait_for_pixel(self.wib, 1, 2, expected), expected)
        # It ran in the plug-in folder.
        self.assertTrue(wait_until(lambda: os.path.exists(os.path.join(self.plugins, "ran.txt"))))

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


def wait_for_pixel(wib, x, y, expected):
    wait_until(lambda: wib.Wib_GetRGB(x, y) == expected)
    return wib.Wib_GetRGB(x, y)


class StartupPluginTest(unittest.TestCase):
    """The plug-ins the settings name are started at start-up."""

    def setUp(self):
        self.plugins = tempfile.mkdtemp(prefix="wib-plugins-")
        self.config = tempfile.mkdtemp(prefix="wib-config-")
        write_plugin(os.path.join(self.plugins, "Dot_pm.exe"), PAINTER)
        os.makedirs(os.path.join(self.config, "Wibbleton"))
        with open(os.path.join(self.config, "Wibbleton", "Wibbleton.conf"), "w") as settings:
            settings.write("[Settings]\nStartup_Plugins_Count=2\n"
                           "Startup_Plugins=Missing_pm.exe|Dot_pm.exe|Never_pm.exe\n")
        self.saved = os.environ.get("XDG_CONFIG_HOME")
        os.environ["XDG_CONFIG_HOME"] = self.config
        self.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"],
                                    ["--plugin-dir", self.plugins])
        self.wib = Wibbleton_Class(self.server.path, self.server.token)

    def tearDown(self):
        self.wib.close()
        self.server.stop()
        if self.saved is None:
            del os.environ["XDG_CONFIG_HOME"]
        else:
            os.environ["XDG_CONFIG_HOME"] = self.saved
        shutil.rmtree(self.plugins)
        shutil.rmtree(self.config)

    def test_named_plugin_runs_without_being_asked(self):
        self.assertEqual(wait_for_pixel(self.wib, 1, 2, 10 + 256 * 20 + 65536 * 30),
                         10 + 256 * 20 + 65536 * 30)


class FakeProgram:
    """One connection's worth of the program: answers every request with nil
    and, after Wib_ListenEvents, sends the notifications it was given."""

    def __init__(self, notifications):
        self.folder = tempfile.mkdtemp(prefix="wib-fake-")
        self.path = os.path.join(self.folder, "fake.sock")
        self.listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self.listener.bind(self.path)
        self.listener.listen(1)
        self.notifications = notifications
        self.thread = threading.Thread(target=self._serve, daemon=True)
        self.thread.start()

    def _serve(self):
        connection, _ = self.listener.accept()
        unpacker = msgpack.Unpacker(raw=False)
        with connection:
            while True:
                data = connection.recv(4096)
                if not data:
                    return
                unpacker.feed(data)
                for _, msgid, method, _ in unpacker:
                    reply = [1, msgid, None, -1 if method == "Wib_ListenEvents" else None]
                    connection.sendall(msgpack.packb(reply))
                    if method == "Wib_ListenEvents":
                        for notification in self.notifications:
                            connection.sendall(msgpack.packb([2] + notification))

    def close(self):
        self.listener.close()
        shutil.rmtree(self.folder)


class ClientEventTest(unittest.TestCase):
    def test_wait_event_returns_notifications_in_order(self):
        program = FakeProgram([["WibMouseDown", [1, 1, 3, 4, 0.5]], ["WibEnd", []]])
        try:
            with Wibbleton_Class(program.path, "token") as wib:
                self.assertEqual(wib.Wib_ListenEvents(-1), True)
                self.assertEqual(wib.wait_event(), ("WibMouseDown", [1, 1, 3, 4, 0.5]))
                self.assertEqual(wib.wait_event(), ("WibEnd", []))
                self.assertIsNone(wib.wait_event(timeout=0.01))
        finally:
            program.close()


if __name__ == "__main__":
    unittest.main()
