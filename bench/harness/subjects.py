"""What is timed: korvex, the copy, and what else makes the same file."""

import statistics
import sys

from machine import first_line_of
from paths import BENCH
from timing import run_timed
from workload import NULL_DEVICE, KorvexRun

PEERS = BENCH / "peers"

KORVEX, NULL, COPY, BY_HAND = "korvex", "null", "copy", "by-hand"
BY_HAND_TARGET = "wide_by_hand"
PEER_NAMES = ("mawk", "sqlite3", "python3")


class Subject:
    """A command, the file that it makes, and the times of each counted run."""

    def __init__(self, label, command, output=None, redirected=False, environment=None):
        self.label = label
        self.command = command
        self.output = output
        self.redirected = redirected
        self.environment = environment
        self.times = []

    def run(self):
        return run_timed(self.command, self.environment, self.output, self.redirected)

    def wall(self):
        return statistics.median(times.wall for times in self.times)

    def cpu(self):
        return statistics.median(times.cpu for times in self.times)


def measure_in_turn(subjects, runs):
    """One warm-up each, then in turn, so that a slow spell of the machine meets all of them."""
    for subject in subjects:
        subject.run()
    for _ in range(runs):
        for subject in subjects:
            subject.times.append(subject.run())


def korvex_subject(label, program, folder, records, data):
    run = KorvexRun(program, folder, records, data)
    return Subject(label, run.command, run.output, environment=run.environment)


def korvex_subjects(program, folder, records):
    return {
        KORVEX: korvex_subject("korvex", program, folder, records, folder / "korvex.csv"),
        NULL: korvex_subject("korvex to /dev/null", program, folder, records, NULL_DEVICE),
    }


def copy_subject(folder, original):
    return Subject("cat FILE > COPY", ["cat", original], folder / "copy.csv", redirected=True)


def by_hand_subjects(program, folder, records):
    def subject(label, output):
        return Subject(label, [program.parent / BY_HAND_TARGET, str(records), output], output)

    to_null = subject("by hand to /dev/null", NULL_DEVICE)
    to_null.output = None  # nothing to remove before a run
    return [subject("by hand", folder / "by-hand.csv"), to_null]


def mawk(folder, records):
    version = first_line_of("mawk", "-W", "version")
    if version is None:
        return None
    command = ["mawk", "-v", f"records={records}", "-f", PEERS / "wide.awk"]
    return Subject(f"mawk {version.split()[1]}", command, folder / "mawk.csv", redirected=True)


def sqlite3(folder, records):
    version = first_line_of("sqlite3", "--version")
    if version is None:
        return None
    output = folder / "sqlite3.csv"
    words = [
        ".parameter init",
        f".parameter set :records {records}",
        ".mode list",
        ".separator ,",
        f".output '{output}'",
        f".read '{PEERS / 'wide.sql'}'",
    ]
    return Subject(f"sqlite3 {version.split()[0]}", ["sqlite3", ":memory:", *words], output)


def python3(folder, records):
    version = ".".join(str(part) for part in sys.version_info[:3])
    output = folder / "python3.csv"
    command = [sys.executable, "-B", PEERS / "wide.py", str(records), output]
    return Subject(f"python3 {version}", command, output)


def peer_subject(name, folder, records):
    """None when the tool is not installed."""
    make = {"mawk": mawk, "sqlite3": sqlite3, "python3": python3}[name]
    return make(folder, records)
