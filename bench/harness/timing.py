"""Runs of commands, with their wall time, processor time and peak memory."""

import collections
import os
import pathlib
import select
import subprocess
import sys
import time

MEMORY_POLL_MS = 1


# Seconds on the clock, and seconds of the processor in the program and in the system for it.
Times = collections.namedtuple("Times", "wall cpu")


def run_timed(command, environment=None, output=None, redirected=False):
    """Times of the command that makes its output file, which is removed before.

    Nothing that an earlier run has written is left to be written during this one.
    """
    remove(output)
    os.sync()
    with open(output if redirected else os.devnull, "wb") as sink:
        start = time.perf_counter()
        process = subprocess.Popen(command, env=environment, stdout=sink)
        _, status, usage = os.wait4(process.pid, 0)
        wall = time.perf_counter() - start
    process.returncode = os.waitstatus_to_exitcode(status)
    fail_unless_done(process)
    return Times(wall, usage.ru_utime + usage.ru_stime)


def run_for_peak_memory(command, environment, output=None):
    """The largest resident set in KiB, read from the running process every millisecond.

    The kernel's own figure at the end would not do: it includes the measuring process as it was
    before the program took its place.
    """
    remove(output)
    peak = 0
    with subprocess.Popen(command, env=environment, stdout=subprocess.DEVNULL) as process:
        descriptor = os.pidfd_open(process.pid)
        ended = select.poll()
        ended.register(descriptor, select.POLLIN)
        status = pathlib.Path(f"/proc/{process.pid}/status")
        while not ended.poll(MEMORY_POLL_MS):
            for line in status.read_text().splitlines():
                if line.startswith("VmHWM:"):
                    peak = int(line.split()[1])
        os.close(descriptor)
    fail_unless_done(process)
    return peak


def remove(output):
    if output:
        output.unlink(missing_ok=True)


def fail_unless_done(process):
    if process.returncode != 0:
        words = " ".join(str(word) for word in process.args)
        sys.exit(f"exit status {process.returncode}: {words}")
