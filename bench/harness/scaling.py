"""Times korvex over growing record counts, and reads its peak memory."""

import argparse
import shutil
import statistics

from machine import build_line, build_release, machine_line
from options import positive
from paths import scratch_folder
from timing import remove, run_for_peak_memory, run_timed
from workload import LAYOUT_NAME, NULL_DEVICE, KorvexRun

RECORD_COUNTS = (50_000, 500_000, 5_000_000, 50_000_000)
DEFAULT_RUNS = 3
# A run of a few milliseconds differs from the next by as much as half a million records take.
LARGEST_SHORT_RUN = 500_000
SHORT_RUN_TURNS = 15
MOST_RECORD_BYTES = 100  # to see in advance whether the disk has room


def measure(run, start_up, runs):
    """Times of each run, in turn with the start-up alone, after a warm-up of both."""
    turns = (run, start_up)
    counted = ([], [])
    for turn in range(runs + 1):
        for each, times in zip(turns, counted):
            taken = run_timed(each.command, each.environment, each.output)
            if turn > 0:
                times.append(taken)
    return counted


def medians(times):
    """The median on the clock, and the processor's."""
    return tuple(statistics.median(column) for column in zip(*times))


def print_target(title, folder, program, runs, data):
    start_up = KorvexRun(program, folder, 0, data)
    print(f"\n{title}")
    print(
        f"{'records':>12} {'runs':>5} {'median s':>9} {'min s':>9} {'max s':>9} {'start-up':>9} "
        f"{'ns/record':>10} {'cpu ns/rec':>10} {'peak MiB':>9}"
    )
    for records in RECORD_COUNTS:
        if data != NULL_DEVICE:
            if shutil.disk_usage(folder).free < records * MOST_RECORD_BYTES:
                print(f"{records:12,} no room on the disk")
                continue
        run = KorvexRun(program, folder, records, data)
        turns = runs * (SHORT_RUN_TURNS if records <= LARGEST_SHORT_RUN else 1)
        times, idle_times = measure(run, start_up, turns)
        peak = run_for_peak_memory(run.command, run.environment, run.output)
        remove(run.output)
        wall, cpu = medians(times)
        idle_wall, idle_cpu = medians(idle_times)
        walls = [each.wall for each in times]
        print(
            f"{records:12,} {turns:5} {wall:9.4f} {min(walls):9.4f} {max(walls):9.4f} "
            f"{idle_wall:9.4f} {(wall - idle_wall) / records * 1e9:10.1f} "
            f"{(cpu - idle_cpu) / records * 1e9:10.1f} {peak / 1024:9.1f}",
            flush=True,
        )


def main():
    parser = argparse.ArgumentParser(prog="bench/scaling", description=__doc__)
    parser.add_argument(
        "--runs", type=positive, default=DEFAULT_RUNS, metavar="N", help="counted runs"
    )
    runs = parser.parse_args().runs
    program = build_release()
    with scratch_folder() as folder:
        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(f"workload: {LAYOUT_NAME}; per record is beyond the start-up")
        print(
            f"runs:     {runs} after a warm-up, {SHORT_RUN_TURNS} times as many of the short ones, "
            "each in turn with the start-up; output removed before each; one more for memory"
        )
        print_target("to /dev/null", folder, program, runs, NULL_DEVICE)
        print_target("to a file", folder, program, runs, folder / "scaling.csv")


if __name__ == "__main__":
    main()
