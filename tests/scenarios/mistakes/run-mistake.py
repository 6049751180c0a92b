#!/usr/bin/env python3
"""Plays a scenario that must not play cleanly, and checks how it stops.

  run-mistake.py KAVELIN_SIM SCENARIO OUT_DIR

The scenario says what to expect in its leading comments:
  # options: --strict          extra command-line options
  # exit: 2                    the exit status
  # stderr: TEXT               a line standard error must hold (FILE is the
                               scenario's path as given); any number of these
"""
import subprocess
import sys

sim, scenario, out = sys.argv[1:4]
options, status, wanted = [], None, []
with open(scenario, encoding="utf-8") as f:
    for line in f:
        if not line.startswith("#"):
            break
        key, _, value = line[1:].strip().partition(": ")
        if key == "options":
            options += value.split()
        elif key == "exit":
            status = int(value)
        elif key == "stderr":
            wanted.append(value.replace("FILE", scenario))
run = subprocess.run([sim, scenario, "--out", out, *options], capture_output=True, text=True, timeout=300)
problems = []
if status is not None and run.returncode != status:
    problems.append(f"exit status {run.returncode}, expected {status}")
for text in wanted:
    if text not in run.stderr:
        problems.append(f"standard error lacks: {text}")
if problems:
    print("\n".join(problems), file=sys.stderr)
    print("--- standard error was:\n" + run.stderr, file=sys.stderr)
    sys.exit(1)
