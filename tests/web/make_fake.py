#!/usr/bin/env python3
"""Puts the stand-in for the engine into a folder: make_fake.py ZELVATONE FOLDER

Its programs are what the program `zelvatone` prints, so the page shows true names and texts."""

import hashlib
import json
import shutil
import struct
import subprocess
import sys
from pathlib import Path

FAKE = Path(__file__).resolve().parent / "fake"


def printed(program, *arguments):
    return json.loads(subprocess.run([program, *arguments, "--json"], check=True,
                                     capture_output=True).stdout)


def single(value):
    return struct.unpack("f", struct.pack("f", value))[0]


def makeFake(zelvatone, folder):
    folder.mkdir(parents=True, exist_ok=True)
    programs = []
    for program in printed(zelvatone, "programs"):
        rows = printed(zelvatone, "params", "--program", str(program["number"]))
        programs.append({"index": program["number"], "name": program["name"],
                         "values": [single(row["value"]) for row in rows],
                         "displays": [row["display"] for row in rows]})
    parameters = [{"index": row["index"], "name": row["name"], "label": row["label"],
                   "default": single(row["value"])} for row in printed(zelvatone, "params")]
    (folder / "fake.json").write_text(json.dumps({"programs": programs, "parameters": parameters}))
    shutil.copyfile(FAKE / "synth.js", folder / "synth.js")
    # Of its phrases, each a float with the program's number.
    hashes = [hashlib.sha256(struct.pack("f", p["index"])).hexdigest() for p in programs]
    (folder / "hashes.json").write_text(json.dumps(hashes))


if __name__ == "__main__":
    makeFake(sys.argv[1], Path(sys.argv[2]))
