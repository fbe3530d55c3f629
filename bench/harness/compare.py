"""Times korvex, a copy of its finished file, and the same file made by other tools."""

import argparse
import filecmp
import statistics
import sys

from machine import build_line, build_release, machine_line
from options import positive
from paths import scratch_folder
from subjects import COPY, KORVEX, NULL, PEER_NAMES, copy_subject, korvex_subjects, peer_subject
from workload import LAYOUT_NAME

DEFAULT_RECORDS = 5_000_000
DEFAULT_RUNS = 5
MOST_PEER_RUNS = 3  # they take many times as long, and their spread is small beside that


def measure_in_turn(subjects, runs):
    """One warm-up each, then in turn, so that a slow spell of the machine meets all of them."""
    for subject in subjects:
        subject.run()
    for _ in range(runs):
        for subject in subjects:
            subject.seconds.append(subject.run())


def measure_peer(peer, runs, expected):
    for _ in range(runs):
        peer.seconds.append(peer.run())
        if not filecmp.cmp(peer.output, expected, shallow=False):
            sys.exit(f"{peer.label} does not write the same bytes: nothing to compare")
    peer.output.unlink()


def print_table(subjects, missing, copy, records, size):
    print(
        f"\n{'':24} {'runs':>4} {'median s':>9} {'min s':>9} {'max s':>9} "
        f"{'records/s':>12} {'MB/s':>7} {'x copy':>7}"
    )
    for subject in subjects:
        seconds = subject.seconds
        median = statistics.median(seconds)
        ratio = median / statistics.median(copy.seconds)
        print(
            f"{subject.label:24} {len(seconds):4} {median:9.3f} {min(seconds):9.3f} "
            f"{max(seconds):9.3f} {records / median:12,.0f} {size / median / 1e6:7,.0f} "
            f"{ratio:7.2f}"
        )
    for name in missing:
        print(f"{name:24} not installed")


def read_options():
    parser = argparse.ArgumentParser(prog="bench/run", description=__doc__)
    parser.add_argument("--records", type=positive, default=DEFAULT_RECORDS, metavar="N")
    parser.add_argument(
        "--runs", type=positive, default=DEFAULT_RUNS, metavar="N", help="counted runs"
    )
    parser.add_argument(
        "--only",
        choices=[KORVEX, NULL, COPY, *PEER_NAMES],
        metavar="NAME",
        help="measure just NAME, and the copy that it is compared with: %(choices)s",
    )
    return parser.parse_args()


def main():
    options = read_options()
    records, runs = options.records, options.runs
    peer_runs = min(runs, MOST_PEER_RUNS)

    def is_wanted(name):
        return options.only in (None, name)

    program = build_release()
    with scratch_folder() as folder:
        korvex = korvex_subjects(program, folder, records)
        # The file that is copied and that the peers must equal.
        korvex[KORVEX].run()
        finished = korvex[KORVEX].output.rename(folder / "finished.csv")
        size = finished.stat().st_size
        copy = copy_subject(folder, finished)
        fast = [*(korvex[name] for name in korvex if is_wanted(name)), copy]
        peers = {name: peer_subject(name, folder, records) for name in PEER_NAMES if is_wanted(name)}
        installed = [peer for peer in peers.values() if peer]
        missing = [name for name, peer in peers.items() if peer is None]

        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(f"workload: {LAYOUT_NAME}, {records:,} records, {size:,} bytes")
        others = f"; other tools {peer_runs}, no warm-up" if installed else ""
        print(
            f"runs:     {runs} in turn after a warm-up, output removed before each{others}",
            flush=True,
        )
        measure_in_turn(fast, runs)
        for peer in installed:
            measure_peer(peer, peer_runs, finished)
        print_table([*fast, *installed], missing, copy, records, size)
        if installed:
            print("\nEach other tool's file was equal to korvex's, byte for byte.")


if __name__ == "__main__":
    main()
