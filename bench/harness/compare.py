"""Times korvex, a copy of its finished file, and the same file made by other programs."""

import argparse
import filecmp
import sys

from machine import build_line, build_release, machine_line
from options import positive
from paths import scratch_folder
from subjects import (
    BY_HAND,
    BY_HAND_TARGET,
    COPY,
    KORVEX,
    NULL,
    PEER_NAMES,
    by_hand_subjects,
    copy_subject,
    korvex_subjects,
    measure_in_turn,
    peer_subject,
)
from workload import LAYOUT_NAME

DEFAULT_RECORDS = 5_000_000
DEFAULT_RUNS = 7
MOST_PEER_RUNS = 3  # they take many times as long, and their spread is small beside that


def measure_peer(peer, runs):
    for _ in range(runs):
        peer.times.append(peer.run())


def check_same_bytes(subject, expected):
    if not filecmp.cmp(subject.output, expected, shallow=False):
        sys.exit(f"{subject.label} does not write the same bytes: nothing to compare")
    subject.output.unlink()


def print_table(subjects, missing, korvex, copy, records, size):
    print(
        f"\n{'':24} {'runs':>4} {'median s':>9} {'min s':>8} {'max s':>8} {'cpu ns/rec':>10} "
        f"{'records/s':>12} {'MB/s':>7} {'x copy':>7} {'x korvex':>8}"
    )
    for subject in subjects:
        walls = [times.wall for times in subject.times]
        median = subject.wall()
        beside_korvex = f"{median / korvex.wall():8.2f}" if korvex.times else ""
        print(
            f"{subject.label:24} {len(walls):4} {median:9.3f} {min(walls):8.3f} {max(walls):8.3f} "
            f"{subject.cpu() / records * 1e9:10.1f} {records / median:12,.0f} "
            f"{size / median / 1e6:7,.0f} {median / copy.wall():7.2f} {beside_korvex}"
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
        choices=[KORVEX, NULL, COPY, BY_HAND, *PEER_NAMES],
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

    program = build_release(BY_HAND_TARGET)
    with scratch_folder() as folder:
        korvex = korvex_subjects(program, folder, records)
        # The file that is copied and that the peers must equal.
        korvex[KORVEX].run()
        finished = korvex[KORVEX].output.rename(folder / "finished.csv")
        size = finished.stat().st_size
        copy = copy_subject(folder, finished)
        by_hand = by_hand_subjects(program, folder, records) if is_wanted(BY_HAND) else []
        fast = [*(korvex[name] for name in korvex if is_wanted(name)), *by_hand, copy]
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
        for subject in by_hand[:1]:
            check_same_bytes(subject, finished)
        for peer in installed:
            measure_peer(peer, peer_runs)
            check_same_bytes(peer, finished)
        print_table([*fast, *installed], missing, korvex[KORVEX], copy, records, size)
        if by_hand or installed:
            print("\nEvery other program's file was equal to korvex's, byte for byte.")


if __name__ == "__main__":
    main()
