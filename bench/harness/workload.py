"""The layout that is measured and how korvex is told to generate it."""

import os
import pathlib
import re

from paths import BENCH

LAYOUT = BENCH / "wide.toml"
LAYOUT_NAME = f"{BENCH.name}/{LAYOUT.name}"
NULL_DEVICE = pathlib.Path("/dev/null")


class KorvexRun:
    """Generates the layout into `data`, with settings and log in a scratch folder."""

    def __init__(self, program, folder, records, data):
        name = data.stem
        layout = folder / f"{name}.toml"
        write_layout(layout, {"data": data, "settings": folder / f"{name}.fif", "work": folder})
        # None when there is nothing to remove before a run.
        self.output = data if data != NULL_DEVICE else None
        self.command = [program, "generate", layout, "--records", str(records), "--quiet"]
        # The user's own settings stay untouched.
        self.environment = os.environ | {"XDG_CONFIG_HOME": str(folder / "config")}


def write_layout(path, places):
    """The layout with other paths."""
    text = LAYOUT.read_text()
    for key, place in places.items():
        line = f'{key} = "{place}"'
        text, replaced = re.subn(rf"(?m)^{key}\s*=.*$", lambda _: line, text, count=1)
        assert replaced, f"{LAYOUT_NAME} has no {key}"
    path.write_text(text)
