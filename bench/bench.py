#!/usr/bin/env python3
"""Measures the launcher beside its lower limits and prints tables. Usage: bench.py BUILD_DIRECTORY, as scripts/bench.sh
calls it. It passes no judgement. Programs that are compared are run in turn, so that both see the same machine."""
import collections
import concurrent.futures
import contextlib
import csv
import functools
import os
import pathlib
import re
import signal
import statistics
import subprocess
import sys
import tempfile

BUILD = pathlib.Path(sys.argv[1]).resolve()
BENCH = BUILD / "bench"
LAUNCHER, EMPTY = BUILD / "src/launcher", BENCH / "empty"
HOSTS = ("floor", "sigwait", "launcher")
ENVIRONMENT = {"PATH": os.environ["PATH"], "LD_LIBRARY_PATH": str(BENCH), "NORV_ROOT": "."}
RECORD = pathlib.Path("var/oss_tmp/svc_0.pid")
DELIVERY_RUNS = 8  # of 250 deliveries each


def hosted(host, module, *arguments):
    command = [LAUNCHER, f"-boot={module}"] if host == "launcher" else [BENCH / host, f"lib{module}.so"]
    return [*command, *arguments]


def table(title, columns, rows):
    print(f"\n{title}\n\n| {' | '.join(columns)} |\n|{' --- |' * len(columns)}")
    for row in rows:
        print(f"| {' | '.join(str(cell) for cell in row)} |", flush=True)


def run(command, **options):
    return subprocess.run(command, env=ENVIRONMENT, stdin=subprocess.DEVNULL, text=True, check=False, **options)


def instructions(command):
    """Of the whole process in user space, the dynamic loader's included."""
    counted = run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", *command], capture_output=True)
    return int(re.search(r"Collected : (\d+)", counted.stderr)[1])


def table_of_instructions(title, counts):
    first = next(iter(counts.values()))
    table(title, ["program", "instructions", "ratio"],
          [(name, count, f"{count / first:.3f}") for name, count in counts.items()])


def start():
    table_of_instructions("Start: the whole process, whose Bootstrap returns at once",
                          {host: instructions(hosted(host, "service", "once")) for host in HOSTS})


def stop():
    """Of a process that ignores SIGTERM, so that one will do for all stops."""
    def counted(command):
        RECORD.write_text(str(target.pid), encoding="utf-8")
        return instructions(command)

    ignore = functools.partial(signal.signal, signal.SIGTERM, signal.SIG_IGN)
    with subprocess.Popen(["svc", "1000"], executable="/bin/sleep", preexec_fn=ignore) as target:
        pathlib.Path("svc").symlink_to(LAUNCHER)
        table_of_instructions("Stop: the whole process", {
            "empty program": counted([EMPTY]), "launcher without a record": counted(["./svc", "-p=1", "-s=stop"]),
            "launcher": counted(["./svc", "-s=stop"]),
            "start-stop-daemon": counted(["start-stop-daemon", "--stop", "--pidfile", RECORD.resolve(), "--exec",
                                          pathlib.Path("/bin/sleep").resolve()])})
        target.kill()


def deliver(command):
    """The microseconds of each delivery, and how the run ended."""
    ended = run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    end = {0: "complete", 99: "hung"}.get(ended.returncode, f"status {ended.returncode}")
    return [int(line) / 1000 for line in ended.stderr.split() if line.isdigit()], end


def deliveries():
    rows = []
    for work in ("idle", "busy"):
        for host in ("launcher", "sigwait", "in_handler"):
            with concurrent.futures.ThreadPoolExecutor(os.cpu_count() if work == "busy" else 1) as pool:
                runs = list(pool.map(deliver, [hosted(host, "service", work)] * DELIVERY_RUNS))
            times = sorted(value for values, _ in runs for value in values)
            ends = collections.Counter(end for _, end in runs)
            parts = (f"{times[int(len(times) * part)]:.0f}" for part in (0.5, 0.99))
            rows.append((f"{host}, {work}", len(times), *parts, f"{times[-1]:.0f}",
                         sum(value > 100_000 for value in times),
                         ", ".join(f"{count} {end}" for end, count in ends.items())))
    table(f"SIGTERM to StopService: microseconds over {DELIVERY_RUNS} processes, each until 250 deliveries or its end",
          ["program and service", "deliveries", "median", "99 %", "worst", "over 0.1 s", "runs"], rows)


def work(command):
    """Nanoseconds of each benchmark that the command runs."""
    lines = run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout.splitlines()
    return {row[0] + ", ns": float(row[3]) for row in csv.reader(lines) if len(row) > 3 and row[1].isdigit()}


def memory(command):
    """Kibibytes of a process whose service waits: at most until then, and what is mapped from no file (proc(5))."""
    with subprocess.Popen(command, env=ENVIRONMENT, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE) as process:
        process.stderr.readline()
        status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
        process.kill()
    return {f"{name} memory of an idle service, KiB": int(re.search(field + r":\s+(\d+)", status)[1])
            for name, field in {"peak": "VmHWM", "anonymous": "RssAnon"}.items()}


def hosting():
    """The very same libraries in each host, so that the host is all that differs."""
    options = ["--benchmark_format=csv", "--benchmark_min_time=0.2"]
    rounds = [{host: work(hosted(host, "work", *options)) | memory(hosted(host, "service", "wait")) for host in HOSTS}
              for _ in range(9)]
    rows = []
    for task in rounds[0]["floor"]:
        medians = [statistics.median(measured[host][task] for measured in rounds) for host in HOSTS]
        rows.append((task, *(round(median, 1) for median in medians), f"{medians[-1] / medians[0]:.2f}"))
    table("Hosting: the same module in each host, median of 9 (CPU time)", ["work", *HOSTS, "launcher / floor"], rows)


def main():
    with tempfile.TemporaryDirectory() as scratch, contextlib.chdir(scratch):
        RECORD.parent.mkdir(parents=True)
        start()
        stop()
        deliveries()
        hosting()


main()
