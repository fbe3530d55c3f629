"""Times a run of one record, piece by piece, beside a program that does nothing."""

import argparse
import os
import time

from machine import build_line, build_release, machine_line
from options import positive
from paths import scratch_folder
from subjects import Subject
from workload import LAYOUT_NAME, KorvexRun

DEFAULT_RUNS = 40


class SyncedFile:
    """What saving settings asks of the disk, and nothing else: a file of the same size is written
    under another name, synchronised, renamed, and its folder synchronised."""

    label = "its synchronised file alone"

    def __init__(self, like):
        self.target = like.with_suffix(".probe")
        self.bytes = like.read_bytes()
        self.seconds = []

    def run(self):
        os.sync()
        start = time.perf_counter()
        temporary = self.target.with_suffix(".probe.w")
        file = os.open(temporary, os.O_WRONLY | os.O_CREAT | os.O_EXCL, 0o666)
        os.write(file, self.bytes)
        os.fsync(file)
        os.close(file)
        os.rename(temporary, self.target)
        folder = os.open(self.target.parent, os.O_RDONLY)
        os.fsync(folder)
        os.close(folder)
        return time.perf_counter() - start


def milliseconds(seconds):
    return sorted(seconds)[len(seconds) // 2] * 1000


def main():
    parser = argparse.ArgumentParser(prog="bench/startup", description=__doc__)
    parser.add_argument(
        "--runs", type=positive, default=DEFAULT_RUNS, metavar="N", help="counted runs"
    )
    runs = parser.parse_args().runs
    program = build_release()
    with scratch_folder() as folder:
        run = KorvexRun(program, folder, 1, folder / "one.csv")
        generate = Subject("generate, one record", run.command, environment=run.environment)
        settings = Subject(
            "generate --settings-only", [*run.command, "--settings-only"], environment=run.environment
        )
        subjects = [
            Subject("true", ["/bin/true"]),
            Subject("korvex --version", [program, "--version"], environment=run.environment),
            settings,
            generate,
        ]
        generate.run()
        synced = SyncedFile(folder / f"{folder_settings(folder)}")
        for subject in subjects:
            subject.run()
        synced.run()
        for _ in range(runs):
            for subject in subjects:
                subject.times.append(subject.run())
            synced.seconds.append(synced.run())

        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(f"workload: {LAYOUT_NAME}, 1 record")
        print(f"runs:     {runs} in turn after a warm-up; medians")
        print(f"\n{'':28} {'wall ms':>8} {'cpu ms':>8}")
        for subject in subjects:
            print(f"{subject.label:28} {subject.wall() * 1000:8.2f} {subject.cpu() * 1000:8.2f}")
        print(f"{synced.label:28} {milliseconds(synced.seconds):8.2f}")


def folder_settings(folder):
    return next(path.name for path in folder.glob("*.fif"))


if __name__ == "__main__":
    main()
