#!/usr/bin/env python3
"""The live preview's HTTP interface, as a script or the page uses it.

Starts `kavelin-sim --live --port 0` on a temporary root and output folder,
reads the address it prints, and checks each route through a real socket.
Every wait is bounded; the test stops the server itself.
Usage: live_interface_test.py KAVELIN_SIM
"""

import http.client
import json
import os
import select
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time
import unittest

SIM = None


class LiveServer:
    def __init__(self, folder, scenario=()):
        self.out = os.path.join(folder, "out")
        self.root = os.path.join(folder, "root")
        self.process = subprocess.Popen(
            [SIM, "--live", *scenario, "--port", "0", "--out", self.out, "--root", self.root],
            stdout=subprocess.PIPE, stderr=sys.stderr, text=True)
        ready, _, _ = select.select([self.process.stdout], [], [], 60)
        if not ready:
            self.process.kill()
            raise RuntimeError("the live preview printed no address within 60 s")
        line = self.process.stdout.readline().strip()
        prefix = "live preview at http://127.0.0.1:"
        if not line.startswith(prefix):
            self.process.kill()
            raise RuntimeError("unexpected first line: " + line)
        self.port = int(line[len(prefix):].rstrip("/"))
        self.host = "127.0.0.1:%d" % self.port

    def request(self, method, path, body=None, headers=None, timeout=60):
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=timeout)
        all_headers = {"Host": self.host}
        all_headers.update(headers or {})
        if isinstance(body, str):
            body = body.encode()
        if method == "POST" and body is None:
            body = b""
        connection.request(method, path, body=body, headers=all_headers)
        response = connection.getresponse()
        data = response.read()
        connection.close()
        return response.status, dict(response.getheaders()), data

    def play(self, text, **options):
        status, _, data = self.request("POST", "/play", text, {"Content-Type": "text/plain"}, **options)
        return status, json.loads(data)

    def json(self, path):
        status, _, data = self.request("GET", path)
        return status, json.loads(data)

    def transcript(self):
        return self.request("GET", "/transcript.scenario")[2].decode()

    def worker_pid(self):
        # Any of the server's threads may have started the phone.
        tasks = "/proc/%d/task" % self.process.pid
        for task in os.listdir(tasks):
            with open(os.path.join(tasks, task, "children")) as file:
                children = file.read().split()
            if children:
                return int(children[0])
        return None

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        try:
            return self.process.wait(timeout=20)
        except subprocess.TimeoutExpired:
            self.process.kill()
            return None


class EventReader(threading.Thread):
    """Reads /events in the background and keeps the event types seen."""

    def __init__(self, server):
        super().__init__(daemon=True)
        self.sock = socket.create_connection(("127.0.0.1", server.port), timeout=30)
        self.sock.sendall(("GET /events HTTP/1.1\r\nHost: %s\r\n\r\n" % server.host).encode())
        self.text = ""
        self.lock = threading.Lock()
        self.start()

    def run(self):
        try:
            while True:
                chunk = self.sock.recv(65536)
                if not chunk:
                    break
                with self.lock:
                    self.text += chunk.decode(errors="replace")
        except OSError:
            pass

    def wait_for(self, needle, seconds=30):
        deadline = time.time() + seconds
        while time.time() < deadline:
            with self.lock:
                if needle in self.text:
                    return True
            time.sleep(0.05)
        return False

    def close(self):
        self.sock.close()


class LiveInterfaceTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="kavelin-live-")
        cls.server = LiveServer(cls.folder.name)

    @classmethod
    def tearDownClass(cls):
        status = cls.server.stop()
        cls.folder.cleanup()
        if status != 0:
            raise AssertionError("the server did not end cleanly on SIGTERM (status %r)" % status)

    def test_1_requests_from_elsewhere_are_refused(self):
        s = self.server
        self.assertEqual(s.request("GET", "/state.json", headers={"Host": "evil.example:%d" % s.port})[0], 403)
        self.assertEqual(s.request("GET", "/", headers={"Host": "127.0.0.1"})[0], 403)
        foreign = {"Origin": "http://evil.example"}
        self.assertEqual(s.request("POST", "/play", "advance 1s", foreign)[0], 403)
        self.assertEqual(s.request("POST", "/play", "advance 1s", {"Origin": "null"})[0], 403)
        own = {"Origin": "http://localhost:%d" % s.port, "Host": "localhost:%d" % s.port}
        self.assertEqual(s.request("POST", "/play", "advance 1s", own)[0], 200)
        self.assertEqual(s.request("POST", "/play", "# " + "x" * (1536 * 1024))[0], 413)
        self.assertEqual(s.request("GET", "/play")[0], 405)
        self.assertEqual(s.request("GET", "/no-such-file.js")[0], 404)
        self.assertEqual(s.request("GET", "/../../etc/passwd")[0], 404)
        self.assertEqual(s.request("POST", "/upload?name=../escape.ics", "x")[0], 400)
        status, _, data = s.request("POST", "/upload?name=week.ics", "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n")
        self.assertEqual(status, 200)
        self.assertEqual(os.path.dirname(json.loads(data)["path"]), os.path.join(s.out, "uploads"))
        # A second upload of the name replaces the file whole, through a part file it does not leave behind.
        self.assertEqual(s.request("POST", "/upload?name=week.ics", "BEGIN:VCALENDAR\r\n")[0], 200)
        with open(os.path.join(s.out, "uploads", "week.ics"), "rb") as uploaded:
            self.assertEqual(uploaded.read(), b"BEGIN:VCALENDAR\r\n")
        self.assertEqual(sorted(os.listdir(os.path.join(s.out, "uploads"))), ["week.ics"])
        # Host paths stay inside --out and --root.
        status, answer = s.play('file /a.txt from /etc/passwd')
        self.assertEqual(status, 400)
        self.assertIn("outside", answer["errors"][0])

    def test_1b_settings_and_an_uploaded_calendar(self):
        s = self.server
        status, pane = s.json("/settings.json")
        self.assertEqual(status, 200)
        switches = [item for item in pane["items"] if item.get("cell") == "PSSwitchCell"]
        self.assertTrue(switches, pane)
        key = switches[0]["key"]
        self.assertNotIn("value", switches[0])
        value = "no" if switches[0]["default"] else "yes"
        self.assertEqual(s.play("prefs %s %s" % (key, value))[0], 200)
        item = next(item for item in s.json("/settings.json")[1]["items"] if item.get("key") == key)
        self.assertEqual(item["value"], value == "yes")

        calendar = ("BEGIN:VCALENDAR\r\nVERSION:2.0\r\nX-WR-CALNAME:Uploaded\r\nBEGIN:VEVENT\r\nUID:1\r\n"
                    "DTSTART:20261121T150000Z\r\nDTEND:20261121T160000Z\r\nSUMMARY:Tea\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n")
        status, _, data = s.request("POST", "/upload?name=tea.ics", calendar)
        self.assertEqual(status, 200)
        status, answer = s.play('calendar-import "%s"' % json.loads(data)["file"])
        self.assertEqual(status, 200, answer)

    def test_2_a_played_line_changes_the_dump_and_a_bad_one_nothing(self):
        s = self.server
        status, _, page = s.request("GET", "/")
        self.assertEqual(status, 200)
        self.assertIn(b"<html", page.lower())
        _, before = s.json("/dump.json")
        status, answer = s.play("advance 1m\nbattery level=0.2")
        self.assertEqual((status, answer), (200, {"ok": True, "played": 2}))
        _, after = s.json("/dump.json")
        self.assertNotEqual(before["time"], after["time"])

        transcript = s.transcript()
        status, answer = s.play("advance 1s\ntapp #_timeContainerView\nadvance 2s")
        self.assertEqual(status, 400)
        self.assertEqual(answer["errors"], ["live:2: unknown command 'tapp', did you mean 'tap'?"])
        self.assertEqual(s.transcript(), transcript)

        status, answer = s.play('expect host.device "ipad2"')
        self.assertEqual(status, 200)
        self.assertFalse(answer["ok"])
        self.assertEqual(len(answer["failed"]), 1)
        self.assertEqual(s.transcript(), transcript)

        status, answer = s.play("prefs locaton 2")
        self.assertEqual(status, 200)
        self.assertIn("live:1: warning: the extension has no preference 'locaton', did you mean 'location'?", answer["warnings"][0])
        transcript = s.transcript()

        status, headers, picture = s.request("GET", "/shot.png")
        self.assertEqual(status, 200)
        self.assertEqual(headers["Content-Type"], "image/png")
        self.assertTrue(picture.startswith(b"\x89PNG"))

    def test_3_events_follow_every_change(self):
        reader = EventReader(self.server)
        try:
            self.assertTrue(reader.wait_for("event: hello"))
            self.server.play("advance 10s")
            self.assertTrue(reader.wait_for("event: screen"))
        finally:
            reader.close()

    def test_4_a_shape_line_restarts_the_phone_and_replays(self):
        s = self.server
        before = s.transcript()
        status, answer = s.play("device iphone5")
        self.assertEqual(status, 200, answer)
        _, dump = s.json("/dump.json")
        self.assertEqual(dump["screen"]["width"], 320)
        self.assertEqual(dump["screen"]["height"], 568)
        after = s.transcript()
        self.assertTrue(after.startswith("device iphone5\nboot\n"))
        self.assertEqual(after.split("boot\n", 1)[1], before.split("boot\n", 1)[1])

    def test_5_the_transcript_replays_to_the_same_dump(self):
        s = self.server
        s.play("advance 90s\ntap #_timeContainerView\nadvance 1s")
        _, live_dump = s.json("/dump.json")
        scenario = os.path.join(self.folder.name, "replay.scenario")
        with open(scenario, "w") as file:
            file.write(s.transcript() + "dump replayed.json\n")
        out = os.path.join(self.folder.name, "replay-out")
        result = subprocess.run([SIM, scenario, "--out", out], capture_output=True, text=True, timeout=120)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(os.path.join(out, "replayed.json")) as file:
            self.assertEqual(json.load(file), live_dump)

    def test_6_a_long_advance_can_be_cancelled_and_others_answer_meanwhile(self):
        s = self.server
        answers = []
        player = threading.Thread(target=lambda: answers.append(s.play("advance 300d", timeout=120)))
        player.start()
        deadline = time.time() + 30
        while time.time() < deadline and not s.json("/state.json")[1].get("busy"):
            time.sleep(0.05)
        self.assertTrue(s.json("/state.json")[1]["busy"])
        started = time.time()
        self.assertEqual(s.request("GET", "/dump.json")[0], 200)
        self.assertEqual(s.request("GET", "/shot.png")[0], 200)
        self.assertLess(time.time() - started, 5)
        self.assertEqual(s.play("advance 1s")[0], 409)
        status, _, data = s.request("POST", "/cancel")
        self.assertEqual(status, 200)
        self.assertTrue(json.loads(data)["cancelled"])
        player.join(60)
        self.assertFalse(player.is_alive())
        status, answer = answers[0]
        self.assertEqual(status, 200)
        self.assertTrue(answer.get("cancelled"))
        last = s.transcript().splitlines()[-1]
        self.assertTrue(last.startswith("advance ") and last != "advance 300d", last)

    def test_6b_a_batch_of_many_lines_stops_between_two_of_them(self):
        s = self.server
        lines = s.transcript().count("\n")
        answers = []
        player = threading.Thread(target=lambda: answers.append(s.play("advance 9s\n" * 90000, timeout=120)))
        player.start()
        deadline = time.time() + 30
        while time.time() < deadline and not s.json("/state.json")[1].get("busy"):
            time.sleep(0.05)
        time.sleep(0.5)
        self.assertEqual(s.request("POST", "/cancel")[0], 200)
        player.join(60)
        self.assertFalse(player.is_alive())
        status, answer = answers[0]
        self.assertEqual(status, 200)
        self.assertTrue(answer["cancelled"])
        self.assertLess(answer["played"], 90000)
        self.assertEqual(s.transcript().count("\n"), lines + answer["played"])

    def test_7_a_phone_that_dies_is_reported_and_restarted(self):
        s = self.server
        os.kill(s.worker_pid(), signal.SIGKILL)
        status, answer = s.play("advance 1s")
        self.assertEqual(status, 500)
        self.assertEqual(answer["phone"], "stopped")
        self.assertEqual(s.play("advance 1s")[0], 503)
        transcript = s.transcript()
        status, _, data = s.request("POST", "/restart")
        self.assertEqual(status, 200, data)
        self.assertEqual(s.transcript(), transcript)
        self.assertEqual(s.play("advance 1s")[0], 200)


class LiveServerStartTest(unittest.TestCase):
    def test_a_scenario_that_boots_twice_shows_its_last_boot(self):
        with tempfile.TemporaryDirectory(prefix="kavelin-live-") as folder:
            scenario = os.path.join(folder, "two.scenario")
            with open(scenario, "w") as file:
                file.write('now 2026-11-21T08:00:00\nboot\nadvance 1s\ndevice iphone5\nboot\nadvance 2s\n')
            server = LiveServer(folder, [scenario])
            try:
                self.assertEqual(server.transcript(), "now 2026-11-21T08:00:00\ndevice iphone5\nboot\nadvance 2s\n")
            finally:
                self.assertEqual(server.stop(), 0)

    def test_an_interrupt_ends_a_long_starting_scenario(self):
        with tempfile.TemporaryDirectory(prefix="kavelin-live-") as folder:
            scenario = os.path.join(folder, "long.scenario")
            with open(scenario, "w") as file:
                file.write("boot\nadvance 300d\n")
            process = subprocess.Popen([SIM, "--live", scenario, "--port", "0", "--out", os.path.join(folder, "out")],
                                       stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
            time.sleep(1.5)
            process.send_signal(signal.SIGINT)
            try:
                out, err = process.communicate(timeout=20)
            except subprocess.TimeoutExpired:
                process.kill()
                self.fail("kavelin-sim --live did not end on SIGINT while its scenario played")
            self.assertEqual(process.returncode, 0, err)
            self.assertEqual(out, "")

    def test_a_scenario_that_cannot_play_ends_as_a_batch_run_does(self):
        with tempfile.TemporaryDirectory(prefix="kavelin-live-") as folder:
            scenario = os.path.join(folder, "bad.scenario")
            with open(scenario, "w") as file:
                file.write("boot\ntap #nothing-here\n")
            result = subprocess.run([SIM, "--live", scenario, "--port", "0", "--out", os.path.join(folder, "out")],
                                    capture_output=True, text=True, timeout=60)
            self.assertEqual(result.returncode, 2)
            self.assertIn(scenario + ":2: ", result.stderr)
            self.assertEqual(result.stdout, "")


if __name__ == "__main__":
    SIM = sys.argv.pop(1)
    unittest.main(verbosity=2)
