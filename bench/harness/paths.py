"""Where things stand in the repository, and the folder for a measurement's scratch files."""

import contextlib
import pathlib
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
BENCH = ROOT / "bench"
RELEASE_TREE = ROOT / "build" / "release"


@contextlib.contextmanager
def scratch_folder():
    parent = ROOT / "build" / "bench"
    parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(prefix="run-", dir=parent) as folder:
        yield pathlib.Path(folder)
