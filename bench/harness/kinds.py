"""Times layouts of other kinds, lists and repeats, beside the plain one: seconds per byte written."""

import argparse
import statistics

from machine import build_line, build_release, machine_line
from options import positive
from paths import BENCH, scratch_folder
from timing import remove, run_timed
from workload import NULL_DEVICE, KorvexRun

LAYOUTS = ("wide", "lists", "repeats")
RECORDS = 5_000_000
DEFAULT_RUNS = 5
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


def median_seconds(run, runs):
    run_timed(run.command, run.environment, run.output)
    return statistics.median(
        run_timed(run.command, run.environment, run.output) for _ in range(runs)
    )


def file_size(program, folder, source):
    run = KorvexRun(program, folder, RECORDS, folder / "sized.csv", source)
    run_timed(run.command, run.environment, run.output)
    size = run.output.stat().st_size
    remove(run.output)
    return size


def print_layouts(program, folder, runs):
    print(f"\n{'':10} {'MB':>7} {'file s':>8} {'ns/byte':>8} {'x wide':>7} "
          f"{'null s':>8} {'ns/byte':>8} {'x wide':>7}")
    wide = {}
    for name in LAYOUTS:
        source = BENCH / f"{name}.toml"
        size = file_size(program, folder, source)
        cells = []
        for data in (folder / f"{name}.csv", NULL_DEVICE):
            seconds = median_seconds(KorvexRun(program, folder, RECORDS, data, source), runs)
            cost = seconds / size * 1e9
            wide.setdefault(data == NULL_DEVICE, cost)
            cells.append(f"{seconds:8.3f} {cost:8.3f} {cost / wide[data == NULL_DEVICE]:7.2f}")
            if data != NULL_DEVICE:
                remove(data)
        print(f"{name:10} {size / 1e6:7.0f} {' '.join(cells)}", flush=True)


def print_loading(program, folder, runs, list_bytes):
    source = BENCH / "lists.toml"
    loading = median_seconds(KorvexRun(program, folder, 1, NULL_DEVICE, source), runs)
    start_up = median_seconds(KorvexRun(program, folder, 1, NULL_DEVICE), runs)
    print(f"\nloading {3 * LIST_LINES:,} list values, {list_bytes / 1e6:.0f} MB: "
          f"{(loading - start_up) * 1000:.1f} ms beyond the start-up, "
          f"{list_bytes / (loading - start_up) / 1e6:,.0f} MB/s")


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
