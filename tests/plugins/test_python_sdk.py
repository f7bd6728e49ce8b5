# SPDX-License-Identifier: GPL-3.0-or-later
"""The Python client against a running server program, end to end.

WIB_AUTOMATION_SERVER names the program; it is run the way a plug-in host is:
PROGRAM --headless --listen PATH --token T. WIB_EXAMPLES is the folder of the
example plug-ins.
"""

import inspect
import os
import secrets
import shutil
import signal
import socket
import subprocess
import tempfile
import threading
import time
import unittest

import msgpack

from wibbleton import Plane, Wibbleton_Class, WibbletonError, resolve_server_path

PATIENCE = 10.0


def wait_until(condition):
    """Polls until the condition holds or PATIENCE runs out; its last answer."""
    deadline = time.monotonic() + PATIENCE
    while not condition() and time.monotonic() < deadline:
        time.sleep(0.02)
    return condition()


def process_alive(pid):
    """Whether the process runs; an ended one is gone or a zombie (and may
    go while its status is read)."""
    try:
        with open("/proc/%d/stat" % pid) as stat:
            return stat.read().rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


class ServerProcess:
    """The server program as a child process, its standard error in a file."""

    def __init__(self, program, arguments=()):
        self.folder = tempfile.mkdtemp(prefix="wib-py-")
        self.path = os.path.join(self.folder, "automation.sock")
        self.token = secrets.token_hex(16)
        self.error_path = os.path.join(self.folder, "stderr.txt")
        self._error = open(self.error_path, "wb")
        self.process = subprocess.Popen(
            [program, "--headless", "--listen", self.path, "--token", self.token, *arguments],
            stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=self._error)
        deadline = time.monotonic() + PATIENCE
        while not self._can_connect():
            if time.monotonic() > deadline or self.process.poll() is not None:
                self.stop()
                raise RuntimeError("the server did not start: " + self.standard_error())
            time.sleep(0.02)

    def _can_connect(self):
        with socket.socket(socket.AF_UNIX, socket.SOCK_STREAM) as probe:
            try:
                probe.connect(self.path)
                return True
            except OSError:
                return False

    def plugin_environment(self):
        env = dict(os.environ)
        env["WIBBLETON_SERVER"] = self.path
        env["WIBBLETON_TOKEN"] = self.token
        return env

    def standard_error(self):
        with open(self.error_path, encoding="utf-8", errors="replace") as text:
            return text.read()

    def wait_for_output(self, text):
        deadline = time.monotonic() + PATIENCE
        while text not in self.standard_error():
            if time.monotonic() > deadline:
                return False
            time.sleep(0.02)
        return True

    def stop(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
            try:
                self.process.wait(PATIENCE)
            except subprocess.TimeoutExpired:
                self.process.kill()
                self.process.wait()
        self.process.stdin.close()
        self._error.close()
        shutil.rmtree(self.folder, ignore_errors=True)


class EndToEnd(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.server = ServerProcess(os.environ["WIB_AUTOMATION_SERVER"])
        os.environ.update({k: v for k, v in cls.server.plugin_environment().items()
                           if k.startswith("WIBBLETON_")})

    @classmethod
    def tearDownClass(cls):
        cls.server.stop()

    def setUp(self):
        self.wib = Wibbleton_Class()
        self.wib.Wib_HardUnlock()
        self.wib.Wib_NewBuffer(64, 48)

    def tearDown(self):
        self.wib.close()

    def assertRefused(self, code, method, *args):
        with self.assertRaises(WibbletonError) as refused:
            self.wib.call(method, *args)
        self.assertEqual(refused.exception.code, code)

    def test_planes_round_trip_as_copies(self):
        red = self.wib.Wib_GetRBuffer()
        self.assertEqual((red.ubound_x, red.ubound_y), (64, 48))
        self.assertEqual(set(red.data), {255})
        for x in range(65):
            red[x, 7] = x
        self.assertEqual(self.wib.Wib_GetR(5, 7), 255)
        self.wib.Wib_SetRbuffer(red)
        self.assertEqual(self.wib.Wib_GetRBuffer(), red)
        self.assertEqual(self.wib.Wib_GetR(5, 7), 5)
        # A frame's plane travels with the frame number after it.
        self.wib.Wib_CreateAnimAdv(2, 3)
        self.wib.Wib_SetGFrame(red, 1)
        self.assertEqual(self.wib.Wib_GetGFrame(1), red)
        self.wib.Wib_FreeAnim()

    def test_answers_arrive_typed(self):
        alpha = Plane(64, 48)
        alpha[4, 6] = 9
        self.wib.Wib_SetABuffer(alpha)
        self.assertEqual(self.wib.Wib_GetAlphaBounds(), (4, 6, 4, 6))
        self.assertIsNone(self.wib.Wib_GetBrushABuffer())
        self.assertEqual(self.wib.Wib_NewFilename("take0009.tga"), "take0010.tga")
        # -1 and 0 come back as True and False.
        self.wib.Wib_SaveUndo()
        self.wib.Wib_ClearBuffer(10, 20, 30)
        self.assertEqual(self.wib.Wib_RunCommand("edit.undo"), -1)
        self.assertEqual(self.wib.Wib_GetB(0, 0), 255)
        self.assertEqual(self.wib.Wib_RunCommand("edit.redo"), -1)
        self.assertEqual(self.wib.Wib_RunCommand("edit.redo"), 0)

    def test_animated_brush_frames_round_trip(self):
        self.wib.Wib_CreateNewAnBr(2, 3, 2)
        red = Plane(2, 1)
        red[2, 1] = 77
        self.wib.Wib_SetAnimBrushRFrame(red, 1)
        self.assertEqual(self.wib.Wib_GetAnimbrush_R(1)[2, 1], 77)
        self.assertEqual(self.wib.Wib_GetAnimbrush_R(0)[2, 1], 0)
        self.assertEqual(self.wib.Wib_Animbrush_Next(), 1)
        self.assertEqual(self.wib.Wib_GetAnimbrush_Totalframes(), 2)
        self.assertRefused(5, "Wib_SetAnimBrushGFrame", Plane(2, 2), 0)

    def test_layers_through_the_client(self):
        self.assertEqual(self.wib.Wib_GetLayerCount(), 1)
        self.wib.Wib_AddLayer()
        self.assertEqual(self.wib.Wib_GetCurrentLayer(), 1)
        self.wib.Wib_SetLayerMode(1, "multiply")
        self.wib.Wib_SetLayerOpacity(1, 128)
        self.assertEqual(self.wib.Wib_GetLayerMode(1), 1)
        self.assertEqual(self.wib.Wib_GetLayerInfo(1), {
            "name": "Layer 1", "opacity": 128, "mode": "multiply", "visible": -1, "locked": 0})
        # The stored bottom layer's plane, written and read while layer 1 is current.
        red = Plane(64, 48)
        red[3, 4] = 90
        self.wib.Wib_SetLayerR(0, red)
        self.assertEqual(self.wib.Wib_GetLayerR(0), red)
        self.assertEqual(set(self.wib.Wib_GetLayerA(0).data), {255})
        self.assertRefused(9, "Wib_GetLayerR", 2)
        self.assertRefused(5, "Wib_SetLayerMode", 1, "dissolve")
        self.wib.Wib_SetCurrentLayer(0)
        self.assertEqual(self.wib.Wib_GetR(3, 4), 90)

    def test_refused_calls_raise_with_the_programs_codes(self):
        self.assertRefused(9, "Wib_GetRGB", 65, 0)
        self.assertRefused(5, "Wib_SetRGB", 0, 0, 256, 0, 0)
        self.assertRefused(438, "Wib_Levitate")
        with self.assertRaises(WibbletonError) as refused:
            Wibbleton_Class(token="not-the-token")
        self.assertEqual((refused.exception.code, refused.exception.message),
                         (70, "Permission denied"))
        # The connection goes on after a refused call.
        self.assertEqual(self.wib.Wib_GetB(0, 0), 255)

    def test_every_method_is_a_method_with_its_arguments_named(self):
        reference = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                                 "..", "..", "docs", "automation.md")
        with open(reference, encoding="utf-8") as text:
            rows = [line.split("|") for line in text if line.startswith("| `")]
        documented = {}
        for row in rows:
            arguments = row[2].strip()
            documented[row[1].strip().strip("`")] = [] if arguments == "none" else [
                (part.split(":")[0].strip(" ["), part.strip().startswith("["))
                for part in arguments.split(", ")]
        # Every row was read: the reference lists more than a hundred methods.
        self.assertGreater(len(documented), 100)
        self.assertEqual({name for name in dir(Wibbleton_Class)
                          if name.startswith(("Wib_", "Anim_", "GS_"))}, set(documented))
        for name, arguments in documented.items():
            parameters = list(inspect.signature(getattr(Wibbleton_Class, name)).parameters.values())
            self.assertEqual([(p.name, p.default is None) for p in parameters[1:]], arguments, name)

    def test_optional_arguments_left_out_are_not_sent(self):
        self.wib.Wib_StatusOpen("Busy")
        self.wib.Wib_Status("half")
        self.wib.Wib_StatusClose()
        self.wib.Wib_StatusOpen()
        self.wib.Wib_StatusClose()
        self.assertTrue(self.server.wait_for_output(
            "Status: Busy\nStatus: half\nStatus: Processing...\n"))
        self.assertEqual(self.wib.Wib_QuestionBox("Carry on?"), 2)
        self.assertTrue(self.server.wait_for_output("Question: Carry on? -> 2"))

    def test_the_example_plugin_inverts_the_red_plane(self):
        for x in range(65):
            self.wib.Wib_SetRGB(x, 0, x, 100, 200)
        example = os.path.join(os.environ["WIB_EXAMPLES"], "invert_pf.py")
        env = self.server.plugin_environment()
        env.pop("PYTHONPATH", None)  # the example finds the client itself
        done = subprocess.run(["/usr/bin/python3", example], env=env, timeout=PATIENCE)
        self.assertEqual(done.returncode, 0)
        self.assertEqual([self.wib.Wib_GetR(x, 0) for x in range(65)],
                         [255 - x for x in range(65)])
        self.assertEqual(self.wib.Wib_GetG(10, 0), 100)
        self.assertEqual(self.wib.Wib_GetR(3, 40), 0)
        # Undo takes the plug-in's change back.
        self.wib.Wib_RestoreUndo()
        self.assertEqual(self.wib.Wib_GetR(3, 0), 3)

    def test_the_readme_example_halves_every_plane(self):
        readme = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                              "..", "..", "README.md")
        with open(readme, encoding="utf-8") as text:
            example = text.read().split("```python\n")[1].split("```")[0]
        self.wib.Wib_SetRGB(10, 0, 200, 101, 50)
        done = subprocess.run(["/usr/bin/python3", "-c", example],
                              env=self.server.plugin_environment(), timeout=PATIENCE)
        self.assertEqual(done.returncode, 0)
        self.assertEqual([self.wib.Wib_GetR(10, 0), self.wib.Wib_GetG(10, 0),
                          self.wib.Wib_GetB(10, 0)], [100, 50, 25])
        self.assertEqual(self.wib.Wib_GetG(0, 5), 127)


class ClientAlone(unittest.TestCase):
    """The client against a scripted peer, for what the program cannot be made to do."""

    def test_notifications_wait_in_events_until_taken(self):
        folder = tempfile.mkdtemp(prefix="wib-py-")
        path = os.path.join(folder, "peer.sock")
        listener = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        listener.bind(path)
        listener.listen(1)

        def peer():
            connection, _ = listener.accept()
            unpacker = msgpack.Unpacker(raw=False)
            for expected_id in (1, 2):
                while True:
                    request = next(unpacker, None)
                    if request is not None:
                        break
                    unpacker.feed(connection.recv(4096))
                self.assertEqual(request[1], expected_id)
                connection.sendall(msgpack.packb([2, "WibMouseDown", [1, 0, 10, 20]]))
                connection.sendall(msgpack.packb([1, expected_id, None, -1]))
            connection.close()

        thread = threading.Thread(target=peer)
        thread.start()
        try:
            wib = Wibbleton_Class(server=path, token="t")
            self.assertEqual(wib.call("Wib_Anything"), -1)
            self.assertEqual(wib.events(), [("WibMouseDown", [1, 0, 10, 20])] * 2)
            self.assertEqual(wib.events(), [])
            wib.close()
        finally:
            thread.join(PATIENCE)
            listener.close()
            shutil.rmtree(folder, ignore_errors=True)

    def test_bare_names_resolve_where_qt_puts_them(self):
        saved = os.environ.get("TMPDIR")
        try:
            os.environ["TMPDIR"] = "/var/tmp/"
            self.assertEqual(resolve_server_path("wibbleton-12"), "/var/tmp/wibbleton-12")
            del os.environ["TMPDIR"]
            self.assertEqual(resolve_server_path("wibbleton-12"), "/tmp/wibbleton-12")
            self.assertEqual(resolve_server_path("/run/user/1/w.sock"), "/run/user/1/w.sock")
        finally:
            if saved is not None:
                os.environ["TMPDIR"] = saved

    def test_planes_index_within_their_bounds(self):
        plane = Plane(2, 1, b"abcdef")
        self.assertEqual(plane[2, 1], ord("f"))
        plane[0, 1] = 0
        self.assertEqual(bytes(plane.data), b"abc\x00ef")
        with self.assertRaises(IndexError):
            plane[3, 0]
        with self.assertRaises(ValueError):
            Plane(2, 1, b"abc")


if __name__ == "__main__":
    unittest.main()
