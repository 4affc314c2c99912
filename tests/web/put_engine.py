#!/usr/bin/env python3
"""Puts the built engine beside the page: put_engine.py WEB NATIVE FOLDER

WEB and NATIVE are the folders with the programs for a browser and for this machine."""

import gzip
import shutil
import subprocess
import sys
from pathlib import Path

ENGINE = Path(__file__).resolve().parents[2] / "web/engine"


def putEngine(web, native, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for script in ENGINE.glob("*.js"):
        shutil.copyfile(script, folder / script.name)
    (folder / "zelvatone.wasm.gzip").write_bytes(gzip.compress((web / "zelvatone.wasm").read_bytes()))
    hashes = subprocess.run([native / "zelvatone_phrase_hashes"], check=True, capture_output=True)
    (folder / "hashes.json").write_bytes(hashes.stdout)


if __name__ == "__main__":
    putEngine(*map(Path, sys.argv[1:]))
