#!/usr/bin/env python3
"""Writes the seeds that are not text: small MIDI and preset files that are whole.

usage: make_seeds.py FOLDER

Makes FOLDER/midi and FOLDER/preset. A fuzzer changes them byte by byte.
"""

import struct
import sys
from pathlib import Path


def track(*events, length=None):
    content = b"".join(events)
    size = len(content) if length is None else length
    return b"MTrk" + struct.pack(">I", size) + content


def midi(form, division, *tracks):
    return b"MThd" + struct.pack(">IHHH", 6, form, len(tracks), division) + b"".join(tracks)


END = b"\x00\xff\x2f\x00"
NOTE = b"\x00\x90\x3c\x40\x60\x80\x3c\x00"
TEMPO = b"\x00\xff\x51\x03\x07\xa1\x20"
METER = b"\x00\xff\x58\x04\x03\x02\x18\x08"
QUARTER_OF_96 = 96
FILM_25_FRAMES_OF_40 = 0xE728

MIDI_FILES = {
    "note": midi(0, QUARTER_OF_96, track(NOTE, END)),
    "two-tracks": midi(1, QUARTER_OF_96, track(TEMPO, METER, END), track(NOTE, NOTE, END)),
    "running-status": midi(0, QUARTER_OF_96, track(b"\x00\x90\x3c\x40\x10\x3c\x00", END)),
    "film-frames": midi(0, FILM_25_FRAMES_OF_40, track(NOTE, TEMPO, END)),
    "exclusive": midi(0, QUARTER_OF_96, track(b"\x00\xf0\x03\x7e\x7f\xf7", END)),
    "packets": midi(0, QUARTER_OF_96, track(b"\x00\xf0\x02\x7e\x7f\x10\xf7\x02\x01\xf7", END)),
    "escape": midi(0, QUARTER_OF_96, track(b"\x00\xf7\x03\x90\x3c\x40", END)),
    "long-delta": midi(0, 1, track(b"\x87\x68\x90\x3c\x40", END)),
    "cut-short": midi(0, QUARTER_OF_96, track(NOTE, length=100)),
}
MIDI_FILES["in-riff"] = (
    b"RIFF" + struct.pack("<I", len(MIDI_FILES["note"]) + 12) + b"RMIDdata"
    + struct.pack("<I", len(MIDI_FILES["note"])) + MIDI_FILES["note"]
)


def program(name, *values):
    rest = struct.pack(f">4sIIII28s{len(values)}f", b"FxCk", 1, 0xF06A, 1, len(values), name,
                       *values)
    return b"CcnK" + struct.pack(">I", len(rest)) + rest


def bank(version, current, *programs):
    reserved = struct.pack(">I124x", current)
    rest = struct.pack(">4sIIII", b"FxBk", version, 0xF06A, 1, len(programs))
    rest += reserved + b"".join(programs)
    return b"CcnK" + struct.pack(">I", len(rest)) + rest


PRESET_FILES = {
    "program": program(b"Organ", 0.0, 0.5, 1.0),
    "no-values": program(b""),
    "bank": bank(2, 1, program(b"A", 0.25), program(b"B", 0.75)),
    "old-bank": bank(1, 0, program(b"A", 0.25)),
    "empty-bank": bank(2, 0),
}


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    for folder, suffix, files in (("midi", "mid", MIDI_FILES), ("preset", "fxp", PRESET_FILES)):
        path = Path(sys.argv[1]) / folder
        path.mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (path / f"{name}.{suffix}").write_bytes(content)


main()
