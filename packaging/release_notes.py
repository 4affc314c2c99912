#!/usr/bin/env python3
"""Prints the section of one version of CHANGELOG.md.

release_notes.py VERSION CHANGELOG.md               as it stands there, for people
release_notes.py --appstream VERSION CHANGELOG.md   as the description in AppStream's metadata
release_notes.py --date VERSION CHANGELOG.md        its date alone, YYYY-MM-DD
"""

import argparse
import re
import sys
from pathlib import Path
from xml.sax.saxutils import escape

HEADING = re.compile(r"^## \[(?P<version>[^\]]+)\](?: - (?P<date>\d{4}-\d\d-\d\d))?$", re.MULTILINE)


def sectionOf(version, changelog):
    """(date, text) of the version's section; an error without one that has a date."""
    headings = list(HEADING.finditer(changelog))
    for heading, following in zip(headings, headings[1:] + [None]):
        if heading["version"] == version and heading["date"]:
            end = following.start() if following else len(changelog)
            return heading["date"], changelog[heading.end():end].strip() + "\n"
    raise ValueError(f"the changelog has no section of version {version} with a date")


def blocksOf(section):
    """(kind, text) of each heading ("###"), list item ("-") and paragraph (""), on one line each."""
    blocks = []
    for line in section.splitlines():
        kind, text = re.match(r"(### |- |)(.*)", line).groups()
        if kind or not line.strip() or not blocks or blocks[-1] is None:
            blocks.append((kind.strip(), text.strip()) if line.strip() else None)
        else:
            blocks[-1] = (blocks[-1][0], f"{blocks[-1][1]} {text.strip()}")
    return [block for block in blocks if block]


def appstream(section):
    """The section as AppStream's markup, which knows paragraphs, lists and no Markdown."""
    lines, inList = ["<description>"], False
    for kind, text in blocksOf(section):
        if inList != (kind == "-"):
            lines.append("  <ul>" if kind == "-" else "  </ul>")
            inList = kind == "-"
        text = escape(text.replace("`", ""))
        lines.append(f"    <li>{text}</li>" if inList else f"  <p>{text}</p>")
    lines += (["  </ul>"] if inList else []) + ["</description>"]
    return "".join(f"      {line}\n" for line in lines)


def main():
    parser = argparse.ArgumentParser(description="Print the section of one version of the changelog.")
    parser.add_argument("--appstream", action="store_true", help="as AppStream's description")
    parser.add_argument("--date", action="store_true", help="the date alone")
    parser.add_argument("version")
    parser.add_argument("changelog", type=Path)
    options = parser.parse_args()
    try:
        date, section = sectionOf(options.version, options.changelog.read_text(encoding="utf-8"))
    except (OSError, ValueError) as error:
        sys.exit(f"release_notes.py: {error}")
    if options.date:
        print(date)
    else:
        sys.stdout.write(appstream(section) if options.appstream else section)


if __name__ == "__main__":
    main()
