#!/usr/bin/env python3
"""Sends SIGTERM at random instants of a start. Usage: startup_races.py LAUNCHER MODULE_DIRECTORY COUNT

A start may end in three ways: by the signal's default action, while no handler is installed; with the report of a
StopService that cannot be found, while no module is known; or by StopService, when the service ends with status 0.
Prints how often it saw each. Status 1 if a start ended in another way, or not at all.
"""
import collections
import random
import signal
import subprocess
import sys
import time

DEADLINE = 60  # seconds
UNKNOWN_MODULE = "received quit symbol\nError: find StopService symbol from  failed!\n"


def launch():
    command = [sys.argv[1], "-boot=service", "wait"]
    return subprocess.Popen(command, env={"LD_LIBRARY_PATH": sys.argv[2], "NORV_ROOT": "."}, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def time_to_ready():
    begin = time.monotonic()
    with launch() as process:
        process.stderr.readline()
        process.kill()
    return time.monotonic() - begin


def outcome(delay):
    with launch() as process:
        end = time.monotonic() + delay
        while time.monotonic() < end:  # sleeps are too coarse
            pass
        process.terminate()
        try:
            output, _ = process.communicate(timeout=DEADLINE)
        except subprocess.TimeoutExpired:
            process.kill()
            return "hung"
    answers = output.count("received signal symbol 15\n")
    if process.returncode == -signal.SIGTERM and answers == 0:
        return "default action"
    if process.returncode == 255 and answers == 1 and UNKNOWN_MODULE in output:
        return "module unknown"
    if process.returncode == 0 and answers == 1 and output.count("stop the service ...\n") == 1:
        return "served"
    return f"UNEXPECTED: status {process.returncode}, {output!r}"


def main():
    usual = sorted(time_to_ready() for _ in range(20))[10]
    ends = collections.Counter(outcome(random.uniform(0, 1.2 * usual)) for _ in range(int(sys.argv[3])))
    for end, count in ends.most_common():
        print(f"{count:6} {end}")
    sys.exit(not set(ends) <= {"default action", "module unknown", "served"})


main()
