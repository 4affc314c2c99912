#!/usr/bin/env python3
"""Renders the editor's pictures from the templates in svg/.

make.py pictures OUT [--scale 2]   the eight pictures
make.py mock PICTURES OUT.png      the editor as it opens, from rendered pictures
make.py icon OUT.svg               the icon of the program: a knob

Needs rsvg-convert (Debian package librsvg2-bin), fc-match (fontconfig) and the fonts that
style.json names (fonts-manrope, fonts-liberation). The same sources and packages always give
the same files.
"""

import argparse
import subprocess
import sys
import tempfile
from pathlib import Path

import layout
import pictures
import png


def main():
    options = parseArguments()
    try:
        if options.command == "icon":
            options.out.write_text(pictures.drawIcon(), encoding="utf-8")
            return
        checkFonts()
        if options.command == "mock":
            render(pictures.drawMock(options.pictures), layout.FACE, 1, options.out)
            return
        options.out.mkdir(parents=True, exist_ok=True)
        for name, svg in pictures.drawAll().items():
            render(svg, pictures.PICTURES[name][1], options.scale, options.out / name)
    except (OSError, ValueError, subprocess.CalledProcessError) as error:
        sys.exit(f"make.py: {error}")


def parseArguments():
    parser = argparse.ArgumentParser(description="Render the editor's pictures.")
    commands = parser.add_subparsers(dest="command", required=True)
    eight = commands.add_parser("pictures", help="the eight pictures")
    eight.add_argument("out", type=Path)
    eight.add_argument("--scale", type=int, default=1, help="pixels per unit, 2 for sharp screens")
    mock = commands.add_parser("mock", help="the editor as it opens")
    mock.add_argument("pictures", type=Path)
    mock.add_argument("out", type=Path)
    icon = commands.add_parser("icon", help="the icon of the program")
    icon.add_argument("out", type=Path)
    return parser.parse_args()


def checkFonts():
    """A missing font would be replaced without a word, and every line would run differently."""
    for family in pictures.STYLE["fonts"].values():
        question = ["fc-match", "-f", "%{family}", family]
        found = subprocess.run(question, check=True, capture_output=True, text=True).stdout
        if family not in found.split(","):
            raise ValueError(f"font {family} is not installed (fontconfig offers {found})")


def render(svg, size, scale, out):
    """Renders one SVG text to an RGBA file of size x scale pixels.

    rsvg-convert drops the alpha channel of an opaque picture; writing it anew keeps one kind.
    """
    with tempfile.TemporaryDirectory() as folder:
        source, raw = Path(folder, "in.svg"), Path(folder, "out.png")
        source.write_text(svg, encoding="utf-8")
        command = ["rsvg-convert", "--zoom", str(scale), "-o", str(raw), str(source)]
        subprocess.run(command, check=True)
        width, height, pixels = png.read(raw)
    if (width, height) != (size[0] * scale, size[1] * scale):
        raise ValueError(f"{out.name}: rendered {width} x {height}, want {size} x {scale}")
    png.write(out, width, height, pixels)


if __name__ == "__main__":
    main()
