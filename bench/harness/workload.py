"""The layout that is measured and how korvex is told to generate it."""

import os
import pathlib
import re

from paths import BENCH

LAYOUT = BENCH / "wide.toml"
LAYOUT_NAME = f"{BENCH.name}/{LAYOUT.name}"
NULL_DEVICE = pathlib.Path("/dev/null")


class KorvexRun:
    """Generates a layout into `data`, with settings and log in a scratch folder."""

    def __init__(self, program, folder, records, data, source=LAYOUT):
        name = f"{source.stem}-{data.stem}"
        layout = folder / f"{name}.toml"
        places = {"data": data, "settings": folder / f"{name}.fif", "work": folder}
        write_layout(source, layout, places, folder)
        # None when there is nothing to remove before a run.
        self.output = data if data != NULL_DEVICE else None
        self.command = [program, "generate", layout, "--records", str(records), "--quiet"]
        # The user's own settings stay untouched.
        self.environment = os.environ | {"XDG_CONFIG_HOME": str(folder / "config")}


def write_layout(source, path, places, lists):
    """The layout with other paths; its enumeration files stand in the folder `lists`."""
    text = re.sub(r'(?m)^file = ".*/(.*)"$', rf'file = "{lists}/\1"', source.read_text())
    for key, place in places.items():
        line = f'{key} = "{place}"'
        text, replaced = re.subn(rf"(?m)^{key}\s*=.*$", lambda _: line, text, count=1)
        assert replaced, f"{source.name} has no {key}"
    path.write_text(text)
