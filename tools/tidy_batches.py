#!/usr/bin/env python3
"""Joins sources into batches for clang-tidy, which spends most of its time on the headers of
libraries: a batch reads them once.

Usage: tidy_batches.py BUILD FILE...

BUILD is a build folder with compile commands; FILEs are named from the top folder, where this runs.
Writes the batches and their compile commands to BUILD/tidy and prints one batch a line: its file, a
tab, its sources. Sources stand together when they are compiled alike, by the same .clang-tidy. A
batch holds the sources' text, not includes of them: some checks look at the main file alone.
"""
import collections
import json
import pathlib
import re
import shutil
import sys

MOST = 12  # sources; with more, one file's names meet another's more often

# The file's own part of its command, at the end of it.
OUTPUT = re.compile(r" -o \S+ -c \S+$")


def nearest_habits(source):
    for folder in source.parents:
        if (folder / ".clang-tidy").exists():
            return folder
    raise FileNotFoundError(".clang-tidy")


def is_for_windows(source):
    return source.name.endswith("Windows.cpp") or "win32" in str(source).lower()


def commands_of(build):
    entries = json.loads((build / "compile_commands.json").read_text())
    top = pathlib.Path.cwd()
    return {pathlib.Path(entry["file"]): OUTPUT.sub("", entry["command"]) for entry in entries
            if pathlib.Path(entry["file"]).is_relative_to(top)}


def text_of(sources):
    """One after the other, with each line that includes a header only where it stands first."""
    lines, included = [], set()
    for source in sources:
        own = set()
        for line in source.read_text().splitlines():
            if line.startswith("#include"):
                # Twice in one source stays, for clang-tidy to find.
                if line in included and line not in own:
                    continue
                included.add(line)
                own.add(line)
            lines.append(line)
    return "\n".join(lines) + "\n"


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    top = pathlib.Path.cwd()
    commands = commands_of(build)
    groups = collections.defaultdict(list)
    for name in sys.argv[2:]:
        source = top / name
        windows = is_for_windows(source)
        command = "" if windows else commands.get(source)
        groups[command, nearest_habits(source), windows].append(source)
    folder = build / "tidy"
    shutil.rmtree(folder, ignore_errors=True)
    entries, batches = [], []
    for (command, habits, windows), sources in groups.items():
        count = -(-len(sources) // MOST)
        size = -(-len(sources) // count)
        for start in range(0, len(sources), size):
            part = sources[start:start + size]
            place = folder / str(len(batches))
            place.mkdir(parents=True)
            if habits != top:
                shutil.copy(habits / ".clang-tidy", place)
            batch = place / ("BatchWindows.cpp" if windows else "Batch.cpp")
            batch.write_text(text_of(part))
            batches.append((batch, part))
            if command:
                entries.append({"directory": str(build), "file": str(batch),
                                "command": f"{command} -o {batch}.o -c {batch}"})
    (folder / "compile_commands.json").write_text(json.dumps(entries, indent=1))
    for batch, part in sorted(batches, key=lambda b: -len(b[1])):
        print(batch.relative_to(top), *(s.relative_to(top) for s in part), sep="\t")


if __name__ == "__main__":
    main()
