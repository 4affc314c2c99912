#!/usr/bin/env python3
"""Brings the table of docs/programs.md up to date with a tour of all programs.

programs_page.py TOUR          rewrites the table
programs_page.py --check TOUR  fails when it is not that of the tour

TOUR is a folder that `zelvatone tour` has written. The columns of frequencies stay as they are:
they come from inside the engine, and the others from the sound.
"""

import json
import re
import sys
from pathlib import Path

PAGE = Path("docs/programs.md")
HEAD = "| No. | Program | lowest Hz | highest Hz | peak dB | DC | DC at −1 dB | LUFS | Character |"
RULE = "|---|---|---|---|---|---|---|---|---|"


def signed(number, digits):
    text = f"{abs(number):.{digits}f}"
    if float(text) == 0:
        return text
    return ("−" if number < 0 else "+") + text


def row(program, lowest, highest):
    peak, dc = program["peakDecibels"], program["dcOffset"]
    levelled = dc * 10 ** ((-1 - peak) / 20)
    return (f"| {program['number']} | {program['name']} | {lowest} | {highest} | {signed(peak, 1)} "
            f"| {signed(dc, 2)} | {signed(levelled, 2)} | {signed(program['lufs'], 1)} "
            f"| {program['description']} |")


def updated(text, programs):
    """The page with the table of these programs, from its head on, in place of the old one."""
    before, after = text.split("| No. | Program |", 1)
    table, rest = re.match(r"(.*?\n)((?!\|).*)", after, re.DOTALL | re.MULTILINE).groups()
    old = [[cell.strip() for cell in line.split("|")] for line in table.splitlines()[2:]]
    frequencies = {int(cells[1]): (cells[3], cells[4]) for cells in old}
    rows = [row(program, *frequencies[program["number"]]) for program in programs]
    return before + "\n".join([HEAD, RULE, *rows]) + "\n" + rest


def main(arguments):
    *options, tour = arguments
    programs = json.loads(Path(tour, "programs.json").read_text(encoding="utf-8"))["programs"]
    text = PAGE.read_text(encoding="utf-8")
    new = updated(text, programs)
    if options == ["--check"]:
        if new != text:
            sys.exit(f"{PAGE} is not up to date: zelvatone tour -o tour, then "
                     "tools/programs_page.py tour")
    else:
        PAGE.write_text(new, encoding="utf-8")


main(sys.argv[1:])
