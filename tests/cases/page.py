"""Pages of the documentation as stories: a reader who tries what stands there sees what the page shows.

A block ```toml that begins with "# NAME" is that file, or has items for it; any other changes the file that was named last. One
that begins with "name" has keys of the item of that name. Items take the places of those of the same name, or come after
them; a file that began without items has just those of the block. In a block ```console, "$ " is what a reader types, and
what follows is what the program shows, but for seconds. The reader finds the examples in the folder "examples".
"""

import re

FENCE = re.compile(r"```(\w*)$")


def changed(line, text):
    return type(line)(text, line.place, line.at)


def blocks_of(lines):
    found = None
    for line in lines:
        fence = FENCE.match(line.text)
        if fence and found is None:
            kind, found = fence[1], []
        elif fence:
            yield kind, found
            found = None
        elif found is not None:
            found.append(line)


def items_of(lines):
    """The lines of a layout before its items, and those of each item by its name."""
    part, items = [], {}
    head = part
    for number, line in enumerate(lines):
        if line.text == "[[item]]":
            part = items[value_of(lines[number + 1])] = []
        part.append(line)
    return head, items


def with_keys(item, block):
    """An item with other values for some keys."""
    new = {key_of(line): line for line in block}
    kept = [new.pop(key_of(line), line) for line in item]
    return kept + list(new.values())


def key_of(line):
    return line.text.split("=")[0].strip()


def value_of(line):
    return line.text.partition("=")[2].strip()


def typed_in(block):
    """What a reader types, each with the lines that follow."""
    for line in block:
        if line.text.startswith("$ "):
            command, shown = line, []
            yield command, shown
        else:
            shown.append(changed(line, re.sub(r"\b\d+\.\d+ s\b", "<t> s", line.text)))


def steps_of(lines):
    heads = {}
    for kind, block in blocks_of(lines):
        if kind == "toml":
            named = re.fullmatch(r"# (\S+)", block[0].text)
            begin, items = items_of(block)
            if begin and key_of(begin[0]) == "name":
                items = {value_of(begin[0]): with_keys(kept[value_of(begin[0])], begin)}
            elif named:
                file, kept = named[1], items if begin[1:] else {}
                heads[file] = begin if begin[1:] else heads[file]
            parts = kept | items
            yield changed(block[0], f"file {file}"), [line for part in (heads[file], *parts.values()) for line in part]
            kept = parts if kept else kept
        elif kind == "console":
            for command, shown in typed_in(block):
                typed = re.sub(r"\bexamples/", "<examples>/", command.text[2:])
                yield changed(command, f"$ {{ {typed}\n}} 2>&1 | tr -d '\\r'"), shown
