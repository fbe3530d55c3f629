"""Times korvex load beside the databases' own load of the finished file."""

import argparse
import statistics
import sys

from databases import Sqlite, postgresql, run
from machine import build_line, build_release, machine_line
from options import positive
from paths import BENCH, scratch_folder
from timing import run_timed

DEFAULT_RECORDS = 1_000_000
DEFAULT_RUNS = 5
LAYOUT = BENCH / "load.toml"
TABLE = (
    "CREATE TABLE {} (id integer PRIMARY KEY{}, code varchar(12) NOT NULL,"
    " amount numeric(9,2) NOT NULL, day date NOT NULL, placed timestamp NOT NULL,"
    " name varchar(20) NOT NULL)"
)
CONTENT = (
    "SELECT count(*), sum(id), round(sum(amount), 2), min(day), max(placed), min(name), max(name)"
    " FROM {}"
)
ONE = {"load": TABLE.format("load", "")}
# A folder of layouts: its first table, and two that refer to it.
SEVERAL = {"load_1": TABLE.format("load_1", "")} | {
    name: TABLE.format(name, " REFERENCES load_1") for name in ("load_2", "load_3")
}


def finished_file(program, folder, records):
    """What generate writes, in UTF-8 for the databases."""
    layout = folder / LAYOUT.name
    layout.write_bytes(LAYOUT.read_bytes())
    run(program, "generate", layout, "--records", str(records))
    text = (folder / "load.csv").read_bytes().decode("cp932")
    file = folder / "load.utf8.csv"
    file.write_text(text, encoding="utf-8")
    return layout, file


def folder_of_layouts(folder, records):
    layouts = folder / "layouts"
    layouts.mkdir()
    for table in SEVERAL:
        text = LAYOUT.read_text(encoding="utf-8")
        text = text.replace("records = 1000000", f'records = {records}\ntable   = "{table}"')
        (layouts / f"{table}.toml").write_text(text, encoding="utf-8")
    return layouts


def measure(database, tables, commands, runs):
    """Seconds of each command, in turn, into empty tables; the contents must be the same."""
    seconds = {name: [] for name in commands}
    contents = {}
    for turn in range(runs + 1):
        for name, command in commands.items():
            database.empty(tables)
            taken = run_timed(command)
            if turn > 0:
                seconds[name].append(taken.wall)
            contents[name] = database.query("; ".join(CONTENT.format(table) for table in tables))
    if len(set(contents.values())) != 1:
        sys.exit(f"{database.name}: the contents differ: {contents}")
    return seconds


def print_rows(database, seconds, tables, records):
    own = statistics.median(seconds["own"])
    for name, times in seconds.items():
        median = statistics.median(times)
        label = {"korvex": "korvex load", "own": "its own load"}[name]
        label += "" if len(tables) == 1 else f", {len(tables)} tables"
        rows = records * len(tables)
        print(
            f"{database.name + ', ' + label:38} {median:9.3f} {min(times):9.3f} "
            f"{max(times):9.3f} {rows / median:12,.0f} {median / own:6.2f}"
        )


def main():
    parser = argparse.ArgumentParser(prog="bench/load", description=__doc__)
    parser.add_argument("--records", type=positive, default=DEFAULT_RECORDS, metavar="N")
    parser.add_argument("--runs", type=positive, default=DEFAULT_RUNS, metavar="N")
    options = parser.parse_args()
    program = build_release()
    with scratch_folder() as folder, postgresql() as server:
        layout, file = finished_file(program, folder, options.records)
        layouts = folder_of_layouts(folder, options.records)
        print(f"machine:  {machine_line(folder)}")
        print(f"build:    {build_line(program)}")
        print(
            f"workload: {LAYOUT.name}, {options.records:,} records, {file.stat().st_size:,} bytes"
            f" in the finished file; {options.runs} runs in turn after a warm-up"
        )
        print(
            f"\n{'':38} {'median s':>9} {'min s':>9} {'max s':>9} {'records/s':>12} {'ratio':>6}"
        )
        for database in filter(None, (Sqlite(folder), server)):
            # The databases' own loads count nothing for later plans either.
            rest = ["--quiet", "--no-analyze"]
            one = [program, "load", layout, database.target, "load"]
            one += ["--records", str(options.records), *rest]
            several = [program, "load", layouts, database.target, *rest]
            for tables, load in ((ONE, one), (SEVERAL, several)):
                commands = {"korvex": load, "own": database.own_load(file, tables)}
                seconds = measure(database, tables, commands, options.runs)
                print_rows(database, seconds, tables, options.records)
        if server is None:
            print(f"{'PostgreSQL':38} its programs are not installed")


if __name__ == "__main__":
    main()
