#!/usr/bin/env python3
"""Click to picture through the live preview's interface, without a browser.

Starts `kavelin-sim --live --port 0` (on a temporary root and output folder),
then for each click does what the page does: POST /play with a tap and the
short advance the page sends with every gesture, then GET /shot.png. Prints
the median and the 95th percentile of the whole, and of its two halves, and
the processor time the server and its phone spent per click, which is what
the click costs on a machine with a core to spare (the wall-clock figures
grow with whatever else the machine runs: see the load average printed).
Usage: scripts/live-latency.py [KAVELIN_SIM] [CLICKS]. Measures; asserts nothing.
"""

import http.client
import os
import select
import signal
import statistics
import subprocess
import sys
import tempfile
import time

sim = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "build", "bin", "kavelin-sim")
clicks = int(sys.argv[2]) if len(sys.argv) > 2 else 100

with tempfile.TemporaryDirectory(prefix="kavelin-latency-") as folder:
    server = subprocess.Popen([sim, "--live", "--port", "0", "--out", os.path.join(folder, "out")], stdout=subprocess.PIPE, text=True)
    try:
        if not select.select([server.stdout], [], [], 60)[0]:
            sys.exit("the live preview printed no address within 60 s")
        port = int(server.stdout.readline().strip().rsplit(":", 1)[1].rstrip("/"))
        connection = http.client.HTTPConnection("127.0.0.1", port, timeout=30)
        headers = {"Host": "127.0.0.1:%d" % port}

        def request(method, path, body=None):
            connection.request(method, path, body=body, headers=headers)
            response = connection.getresponse()
            data = response.read()
            if response.status != 200:
                sys.exit("%s %s answered %d: %s" % (method, path, response.status, data[:200]))
            return data

        def processor_seconds():
            # The server and its children (the phone), user and system time.
            pids = [server.pid]
            for task in os.listdir("/proc/%d/task" % server.pid):
                with open("/proc/%d/task/%s/children" % (server.pid, task)) as file:
                    pids += [int(pid) for pid in file.read().split()]
            total = 0
            for pid in pids:
                with open("/proc/%d/stat" % pid) as file:
                    fields = file.read().rsplit(")", 1)[1].split()
                total += int(fields[11]) + int(fields[12])
            return total / os.sysconf("SC_CLK_TCK")

        request("GET", "/shot.png")
        plays, shots, totals = [], [], []
        processor_before = None
        for click in range(clicks + 5):
            # A spot on the lock screen that nothing takes: the same work every time.
            started = time.perf_counter()
            request("POST", "/play", b"tap 30,420\nadvance 500ms")
            played = time.perf_counter()
            request("GET", "/shot.png?v=%d" % click)
            done = time.perf_counter()
            if click == 4:
                processor_before = processor_seconds()
            if click >= 5:  # the first few warm the caches
                plays.append((played - started) * 1000)
                shots.append((done - played) * 1000)
                totals.append((done - started) * 1000)

        def summary(values):
            values = sorted(values)
            return "median %.1f ms, 95th percentile %.1f ms" % (statistics.median(values), values[int(0.95 * (len(values) - 1))])

        processor = (processor_seconds() - processor_before) * 1000 / clicks
        print("click to picture over %d clicks: %s (load average %.1f on %d cores)" % (clicks, summary(totals), os.getloadavg()[0], os.cpu_count()))
        print("  processor time of the server and the phone: %.1f ms a click" % processor)
        print("  POST /play (tap and advance 500ms): %s" % summary(plays))
        print("  GET /shot.png: %s" % summary(shots))
    finally:
        server.send_signal(signal.SIGTERM)
        server.wait(timeout=30)
