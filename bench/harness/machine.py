"""What a figure was measured on: the machine and the build."""

import os
import pathlib
import platform
import re
import subprocess
import sys

from paths import RELEASE_TREE, ROOT


def first_line_of(*command):
    """Of a command's output, or None when it cannot be run."""
    try:
        done = subprocess.run(command, capture_output=True, text=True, check=True)
    except (OSError, subprocess.CalledProcessError):
        return None
    return (done.stdout or done.stderr).partition("\n")[0].strip()


def cpu_model():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.partition(":")[2].strip()
    return platform.machine()


def file_system(folder):
    """Its type, such as ext4."""
    table = subprocess.run(
        ["df", "--output=fstype", folder], capture_output=True, text=True, check=True
    ).stdout
    return table.splitlines()[1].split()[0]


def machine_line(folder):
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    return (
        f"{cpu_model()}, {os.cpu_count()} cores, {memory:.0f} GiB, "
        f"Linux {platform.release()}, {file_system(folder)}, load {os.getloadavg()[0]:.1f}"
    )


def build_release(*further_targets):
    """Builds the program with the release preset and answers its path."""
    for command in (
        ["cmake", "--preset", "release"],
        ["cmake", "--build", RELEASE_TREE, "--target", "korvex_program", *further_targets],
    ):
        done = subprocess.run(command, cwd=ROOT, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{done.stdout}{done.stderr}the release build failed")
    return RELEASE_TREE / "bin" / "korvex"


def build_line(program):
    """Version, source, compiler and flags of a program in its build tree."""
    cache = (program.parent.parent / "CMakeCache.txt").read_text()
    setting = dict(re.findall(r"^(\w+):\w+=(.*)$", cache, re.MULTILINE))
    build_type = setting["CMAKE_BUILD_TYPE"]
    flags = f"{setting['CMAKE_CXX_FLAGS']} {setting[f'CMAKE_CXX_FLAGS_{build_type.upper()}']}"
    commit = first_line_of("git", "-C", ROOT, "describe", "--always", "--dirty")
    return ", ".join(
        [
            first_line_of(program, "--version"),
            f"commit {commit}" if commit else "not a git checkout",
            first_line_of(setting["CMAKE_CXX_COMPILER"], "--version"),
            f"{build_type} ({flags.strip()})",
        ]
    )
