"""Times layouts of other kinds, lists and repeats, beside the plain one and copies of their files."""

import argparse

from machine import build_line, build_release, machine_line
from options import positive
from paths import BENCH, scratch_folder
from subjects import Subject, copy_subject, measure_in_turn
from timing import remove
from workload import NULL_DEVICE, KorvexRun

LAYOUTS = ("wide", "lists", "repeats")
RECORDS = 5_000_000
DEFAULT_RUNS = 7
LIST_LINES = 1_000_000


def write_lists(folder):
    """The enumeration files of lists.toml; answers their bytes."""
    values = {
        "names": (f"Customer {number:07d}" for number in range(LIST_LINES)),
        "prices": (f"{number % 99999}.{number % 100:02d}" for number in range(LIST_LINES)),
        "codes": (f"C{number:07d}-{number % 97:02d}" for number in range(LIST_LINES)),
    }
    size = 0
    for name, lines in values.items():
        path = folder / f"{name}.txt"
        path.write_text("".join(f"{line}\n" for line in lines))
        size += path.stat().st_size
    return size


def subject_of(program, folder, source, data, records=RECORDS):
    run = KorvexRun(program, folder, records, data, source)
    return Subject(source.stem, run.command, run.output, environment=run.environment)


def print_layouts(program, folder, runs):
    print(
        f"\n{'':10} {'MB':>7} {'file s':>8} {'copy s':>8} {'x copy':>7} "
        f"{'null s':>8} {'cpu ns/rec':>10}"
    )
    for name in LAYOUTS:
        source = BENCH / f"{name}.toml"
        to_file = subject_of(program, folder, source, folder / f"{name}.csv")
        to_null = subject_of(program, folder, source, NULL_DEVICE)
        to_file.run()
        finished = to_file.output.rename(folder / "finished.csv")
        size = finished.stat().st_size
        copy = copy_subject(folder, finished)
        measure_in_turn([to_file, copy, to_null], runs)
        print(
            f"{name:10} {size / 1e6:7.0f} {to_file.wall():8.3f} {copy.wall():8.3f} "
            f"{to_file.wall() / copy.wall():7.2f} {to_null.wall():8.3f} "
            f"{to_null.cpu() / RECORDS * 1e9:10.1f}",
            flush=True,
        )
        for file in (to_file.output, copy.output, finished):
            remove(file)


def print_loading(program, folder, runs, list_bytes):
    loading = subject_of(program, folder, BENCH / "lists.toml", NULL_DEVICE, 1)
    start_up = subject_of(program, folder, BENCH / "wide.toml", NULL_DEVICE, 1)
    measure_in_turn([loading, start_up], runs)
    seconds = loading.wall() - start_up.wall()
    print(
        f"\nloading {3 * LIST_LINES:,} list values, {list_bytes / 1e6:.0f} MB: "
        f"{seconds * 1000:.1f} ms beyond the start-up, {list_bytes / seconds / 1e6:,.0f} MB/s"
    )


def main():
    parser = argparse.ArgumentParser(prog="bench/kinds", description=__doc__)
    parser.add_argument(
        "--runs", type=positive, default=DEFAULT_RUNS, metavar="N", help="counted runs"
    )
    runs = parser.parse_args().runs
    program = build_release()
    with scratch_folder() as folder:
        list_bytes = write_lists(folder)
        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(f"workload: bench/{{{','.join(LAYOUTS)}}}.toml, {RECORDS:,} records each")
        print(f"runs:     {runs} after a warm-up, output removed before each")
        print_layouts(program, folder, runs)
        print_loading(program, folder, runs, list_bytes)


if __name__ == "__main__":
    main()
