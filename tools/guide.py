#!/usr/bin/env python3
"""Makes a page from docs/guide.md with a picture and a sound of every knob position named there.

Plays music/knob.mid and photographs the editor with the zelvatone of build/release, for each
position in the tables "The knobs"."""

import argparse
import html
import json
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
# The panels in the editor's picture: left, top, width and height, in pixels.
PANELS = {"Wave": (14, 40, 257, 147), "Modes over time": (277, 40, 420, 235),
          "Extra modes": (14, 193, 257, 147), "Spectrum": (14, 344, 257, 129),
          "Envelope": (277, 344, 286, 129)}
STYLE = """
:root { color-scheme: light dark; }
body { max-width: 72rem; margin: 2rem auto; padding: 0 1rem; font: 1rem/1.5 sans-serif; }
.positions { display: flex; flex-wrap: wrap; gap: 1rem; }
figure { margin: 0; }
figcaption { font-weight: bold; }
img { display: block; object-fit: none; max-width: 100%; border-radius: 4px; }
audio { width: 100%; max-width: 26rem; }
code { font-size: 0.85rem; }
"""


class Knob:
    """A row of the tables: a knob, what is set before it, its positions and what they do."""

    def __init__(self, panel, row):
        cells = [cell.strip() for cell in row.strip().strip("|").split("|")]
        self.panel = panel
        self.name, first, positions, self.text = cells
        self.first = [part.strip() for part in first.split(",") if part.strip()]
        self.positions = [part.strip() for part in positions.split("·")]

    def settings(self, position):
        """The values of --set, in order."""
        return [*self.first, f"{self.name}={position}"]

    def fileName(self, number):
        return f"{self.name.lower().replace(' ', '-')}-{number}"


def knobsOf(text):
    """The knobs of the guide, and the sentence below the heading of each panel."""
    knobs, sentences, panel = [], {}, None
    for line in text.splitlines():
        if line.startswith("#"):
            panel = line[4:] if line[4:] in PANELS else None
        elif panel and line and not line.startswith("|"):
            sentences.setdefault(panel, line)
        elif panel and line.startswith("|") and not re.match(r"\|( knob |-)", line):
            knobs.append(Knob(panel, line))
    return knobs, sentences


class Maker:
    """Makes the files of the page with one zelvatone."""

    def __init__(self, program, folder):
        self.program = program
        self.folder = folder

    def run(self, *arguments):
        # Without the user's display: no window flashes up.
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        return subprocess.run([self.program, *arguments], env=environment, check=True,
                              stdout=subprocess.PIPE, text=True).stdout

    def make(self, knob, number):
        """The sound and the picture of a position; returns what the knob shows there."""
        sets = [word for value in knob.settings(knob.positions[number]) for word in ("--set", value)]
        name = str(self.folder / knob.fileName(number))
        self.run("render", str(ROOT / "music/knob.mid"), "-o", name + ".ogg", "--mono", "-q", *sets)
        self.run("screenshot", "-o", name + ".png", *sets)
        shown = json.loads(self.run("params", "--json", *sets))
        return next(row["display"] for row in shown if row["name"] == knob.name)


def figureOf(knob, number, shown):
    left, top, width, height = PANELS[knob.panel]
    name = knob.fileName(number)
    title = html.escape(f"{knob.name}: {shown}")
    command = " ".join(f"--set '{value}'" for value in knob.settings(knob.positions[number]))
    return (f'<figure style="width: {width}px"><figcaption>{title}</figcaption>'
            f'<img src="{name}.png" alt="{title}" width="{width}" height="{height}" loading="lazy"'
            f' style="object-position: -{left}px -{top}px">'
            f'<audio controls preload="none" src="{name}.ogg" aria-label="{title}"></audio>'
            f'<br><code>{html.escape(command)}</code></figure>\n')


def pageOf(knobs, sentences, shown):
    """The page; `shown` has what every (knob, number) shows."""
    parts = ['<!DOCTYPE html>\n<html lang="en">\n<meta charset="utf-8">\n<title>Zelvatone: knobs</title>\n'
             '<meta name="viewport" content="width=device-width">\n'
             f"<style>{STYLE}</style>\n<h1>The knobs of Zelvatone</h1>\n"
             "<p>Each player plays C3, C4, G3 and C3 with the knobs as pictured.</p>\n"]
    panel = None
    for knob in knobs:
        if knob.panel != panel:
            panel = knob.panel
            parts.append(f"<h2>{panel}</h2>\n<p>{html.escape(sentences[panel])}</p>\n")
        parts.append(f'<h3>{knob.name}</h3>\n<p>{html.escape(knob.text)}</p>\n<div class="positions">\n')
        parts += [figureOf(knob, number, shown[knob.name, number])
                  for number in range(len(knob.positions))]
        parts.append("</div>\n")
    return "".join(parts) + "</html>\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("-o", "--output", type=Path, default=ROOT / "out/guide", metavar="FOLDER",
                        help="the folder for the page and its files; out/guide by default")
    parser.add_argument("--zelvatone", default=str(ROOT / "build/release/bin/zelvatone"),
                        metavar="FILE", help="the program to make it with")
    parser.add_argument("knobs", nargs="*", metavar="KNOB", help="only these knobs")
    options = parser.parse_args()
    knobs, sentences = knobsOf((ROOT / "docs/guide.md").read_text(encoding="utf-8"))
    unknown = set(options.knobs) - {knob.name for knob in knobs}
    if unknown:
        parser.error(f"unknown knob: {', '.join(sorted(unknown))}")
    knobs = [knob for knob in knobs if not options.knobs or knob.name in options.knobs]
    options.output.mkdir(parents=True, exist_ok=True)
    maker = Maker(options.zelvatone, options.output)
    places = [(knob, number) for knob in knobs for number in range(len(knob.positions))]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        texts = list(pool.map(lambda place: maker.make(*place), places))
    shown = {(knob.name, number): text for (knob, number), text in zip(places, texts)}
    (options.output / "index.html").write_text(pageOf(knobs, sentences, shown), encoding="utf-8")
    print(f"{options.output}/index.html: {len(knobs)} knobs, {len(places)} positions")


if __name__ == "__main__":
    try:
        main()
    except (OSError, subprocess.CalledProcessError) as error:
        sys.exit(f"guide.py: {error}")
