"""Times records of sources and ways beside what Python makes of the same columns."""

import argparse
import shutil

from machine import build_line, build_release, first_line_of, machine_line
from options import positive
from paths import BENCH, scratch_folder
from subjects import PEERS, Subject, measure_in_turn
from timing import run_for_peak_memory

DEFAULT_RECORDS = 2_000_000
DEFAULT_RUNS = 7
LAYOUTS = ("sources.toml", "sources_customers.toml")
# Debian's own, which sees Debian's packages whatever python3 is the user's.
PYTHON = "/usr/bin/python3"
FAKE_PACKAGE = "python3-fake-factory"
# They take so much longer that a part of the records must do.
RANDOM_PART, FAKE_PART = 20, 400


def export(program, folder, records):
    layout = folder / LAYOUTS[0]
    return [program, "export", layout, "-o", "-", "--records", str(records)]


def peers(records):
    """Each with its records; None in place of one that is not installed."""
    version = first_line_of(PYTHON, "--version")
    if version is None:
        return {"python3 with random": None, FAKE_PACKAGE: None}
    drawn, faked = max(records // RANDOM_PART, 1), max(records // FAKE_PART, 1)
    fake = first_line_of(PYTHON, "-c", "import faker; print(faker.VERSION)")
    return {
        f"{version.lower()} with random": (drawn, "sources.py"),
        f"{FAKE_PACKAGE} {fake or ''}".strip(): fake and (faked, "sources_fake.py"),
    }


def print_row(subject, records, korvex):
    cpu = subject.cpu() / records
    beside = cpu / (korvex[0].cpu() / korvex[1])
    print(
        f"{subject.label:32} {records:10,} {len(subject.times):4} {subject.wall():9.3f} "
        f"{cpu * 1e9:11,.0f} {records / subject.wall():13,.0f} {beside:8.1f}"
    )


def main():
    parser = argparse.ArgumentParser(prog="bench/sources", description=__doc__)
    parser.add_argument("--records", type=positive, default=DEFAULT_RECORDS, metavar="N")
    parser.add_argument(
        "--runs", type=positive, default=DEFAULT_RUNS, metavar="N", help="counted runs"
    )
    options = parser.parse_args()
    program = build_release()
    with scratch_folder() as folder:
        for layout in LAYOUTS:
            shutil.copy(BENCH / layout, folder)
        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(f"workload: bench/{LAYOUTS[0]}, ten shuffled items and three keys, to /dev/null")
        print(f"runs:     {options.runs} in turn after a warm-up", flush=True)
        korvex = Subject("korvex export", export(program, folder, options.records))
        subjects = [(korvex, options.records)]
        missing = []
        for label, peer in peers(options.records).items():
            if peer is None:
                missing.append(label)
                continue
            records, script = peer
            subjects.append((Subject(label, [PYTHON, "-B", PEERS / script, str(records)]), records))
        measure_in_turn([subject for subject, _ in subjects], options.runs)
        print(
            f"\n{'':32} {'records':>10} {'runs':>4} {'median s':>9} {'cpu ns/rec':>11} "
            f"{'records/s':>13} {'x korvex':>8}"
        )
        for subject, records in subjects:
            print_row(subject, records, subjects[0])
        for label in missing:
            print(f"{label:32} not installed: scripts/setup bench installs it")
        print()
        for records in (options.records // 10, options.records, options.records * 5):
            peak = run_for_peak_memory(export(program, folder, records), None)
            print(f"peak memory, {records:11,} records: {peak / 1024:6.1f} MiB")


if __name__ == "__main__":
    main()
