#!/usr/bin/env python3
"""Puts the page of the instrument in a browser into a folder, beside the engine's files.

    web/put_page.py --face PROGRAM FOLDER

Copies web/page and the editor's pictures, and writes what the page reads:

    face.json   where the editor has its knobs: what PROGRAM prints (target zelvatone_web_face)
    help.json   the texts of the help pages, from the pictures' sources in art/svg
    site.json   what the tour says of each program, when FOLDER/tour is there"""

import argparse
import json
import re
import shutil
import subprocess
import sys
import xml.etree.ElementTree as xml
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
HELP_PAGES = 5
# Of twice the size, for screens of more pixels. The help pages are not: with them, the page would be
# larger than 1 MB.
LARGE_PICTURES = ("BACKGROUND.PNG", "ANIMKNOB.PNG")


def putPage(folder, faceProgram):
    folder.mkdir(parents=True, exist_ok=True)
    for file in sorted((ROOT / "web/page").iterdir()):
        shutil.copyfile(file, folder / file.name)
    putPictures(folder / "pictures")
    face = subprocess.run([faceProgram], check=True, capture_output=True, text=True).stdout
    writeJson(folder / "face.json", json.loads(face))
    writeJson(folder / "help.json", [helpPage(page) for page in range(1, HELP_PAGES + 1)])
    writeJson(folder / "site.json", siteOf(folder / "tour"))


def putPictures(folder):
    shutil.rmtree(folder, ignore_errors=True) # those of an earlier time
    folder.mkdir(parents=True)
    for picture in sorted((ROOT / "resources").glob("*.PNG")):
        source = picture.parent / "2x" / picture.name if picture.name in LARGE_PICTURES else picture
        shutil.copyfile(source, folder / picture.name.lower())


def writeJson(path, value):
    text = json.dumps(value, ensure_ascii=False, separators=(",", ":"))
    path.write_text(text + "\n", encoding="utf-8")


def helpPage(number):
    """The texts of one page: {title, lead, knobs: [{name, range, text}], attempt}."""
    source = (ROOT / f"art/svg/help{number}.svg").read_text(encoding="utf-8")
    page = {"title": "", "lead": "", "knobs": [], "attempt": ""}
    svg = xml.fromstring(re.sub(r"\$(?!\w+\")\w+", "", source)) # drawings have no texts of their own
    for element in svg.iter("{http://www.w3.org/2000/svg}text"):
        addText(page, element.get("class"), " ".join("".join(element.itertext()).split()))
    return page


def addText(page, kind, text):
    if kind in ("title", "lead"):
        page[kind] = f"{page[kind]} {text}".strip()
    elif kind == "name":
        page["knobs"].append({"name": text, "range": "", "text": ""})
    elif kind == "range":
        page["knobs"][-1]["range"] = text
    elif kind in ("body", "compact"):
        # After the last knob's text stands what to try.
        knob = page["knobs"][-1] if page["knobs"] else None
        if knob is not None and not knob["text"]:
            knob["text"] = text
        else:
            page["attempt"] = text


def siteOf(tour):
    """{tags: [{name, rule}], programs: [{tags, description, card}]}; empty lists without a tour."""
    data = tour / "programs.json"
    if not data.is_file():
        return {"tags": [], "programs": []}
    known = json.loads(data.read_text(encoding="utf-8"))
    programs = [
        {
            "tags": program["tags"],
            "description": program["description"],
            "card": Path(program["files"]["preset"]).stem,
        }
        for program in known["programs"]
    ]
    return {"tags": known["tags"], "programs": programs}


def main():
    parser = argparse.ArgumentParser(description="Puts the page into a folder.")
    parser.add_argument("--face", required=True, help="the built program zelvatone_web_face")
    parser.add_argument("folder", type=Path)
    options = parser.parse_args()
    putPage(options.folder, options.face)


if __name__ == "__main__":
    sys.exit(main())
