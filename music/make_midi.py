#!/usr/bin/python3
"""Makes a MIDI file from each score in this folder; --check only compares."""

import argparse
import io
import os
import sys
from fractions import Fraction
from pathlib import Path

from notation import ScoreError, read_score

try:
    import mido
except ImportError:
    sys.exit(f"make_midi.py: no mido in {sys.executable}; "
             "Debian's package python3-mido serves /usr/bin/python3")

TICKS_PER_QUARTER = 480
TICKS_PER_WHOLE = 4 * TICKS_PER_QUARTER
# Notes stop a tenth of their value early, so that repeated pitches speak again and the voices
# stay clear; a 64th is the most a long note gives up, or it would seem to break off.
DETACHED_SHARE = Fraction(1, 10)
LONGEST_GAP = Fraction(1, 64)
# A bar leans on its first beat, a little on its middle, and hardly on the other beats.
BAR_STRESS = 6
MIDDLE_STRESS = 4
BEAT_STRESS = 2


def to_ticks(time):
    return round(time * TICKS_PER_WHOLE)


def value_at(points, time):
    """The straight line between the points around the time; the last point holds on."""
    for (start, first), (end, second) in zip(points, points[1:]):
        if start <= time < end:
            return first + (second - first) * (time - start) / (end - start)
    return points[-1][1]


def stress_at(score, time):
    in_bar = time % score.bar_length
    if in_bar == 0:
        return BAR_STRESS
    if in_bar * 2 == score.bar_length:
        return MIDDLE_STRESS
    return BEAT_STRESS if in_bar % Fraction(1, score.meter[1]) == 0 else 0


def velocity_of(score, hand, note):
    level = round(value_at(score.velocities, note.start)) + hand.offset
    return max(1, min(127, level + stress_at(score, note.start)))


def sounding_length(score, note):
    """The last notes of the piece are held for all they are worth."""
    if note.start + note.length == score.length:
        return note.length
    return note.length - min(note.length * DETACHED_SHARE, LONGEST_GAP)


def to_track(name, timed_messages):
    """Takes (tick, message) pairs in any order; at one tick, notes end before others begin."""
    track = mido.MidiTrack([mido.MetaMessage("track_name", name=name)])
    now = 0
    in_order = sorted(timed_messages, key=lambda pair: (pair[0], pair[1].type != "note_off"))
    for tick, message in in_order:
        track.append(message.copy(time=tick - now))
        now = tick
    return track


def conductor_track(score):
    numerator, denominator = score.meter
    meter = mido.MetaMessage("time_signature", numerator=numerator, denominator=denominator)
    tempos = [(to_ticks(time), mido.MetaMessage("set_tempo", tempo=mido.bpm2tempo(bpm)))
              for time, bpm in score.tempos]
    return to_track(score.title, [(0, meter)] + tempos)


def hand_track(score, hand):
    channel = hand.channel - 1
    messages = []
    for note in hand.notes:
        velocity = velocity_of(score, hand, note)
        start, end = to_ticks(note.start), to_ticks(note.start + sounding_length(score, note))
        for tick, kind, strength in ((start, "note_on", velocity), (end, "note_off", 64)):
            messages.append((tick, mido.Message(kind, channel=channel, note=note.pitch,
                                                velocity=strength)))
    return to_track(hand.name, messages)


def midi_bytes(score):
    """The whole MIDI file, format 1: the conductor's track, then one track a hand."""
    tracks = [conductor_track(score)] + [hand_track(score, hand) for hand in score.hands.values()]
    midi = mido.MidiFile(type=1, ticks_per_beat=TICKS_PER_QUARTER)
    midi.tracks.extend(tracks)
    out = io.BytesIO()
    midi.save(file=out)
    return out.getvalue()


def write_whole(path, content):
    """The file appears complete or not at all."""
    part = path.with_suffix(".part")
    try:
        part.write_bytes(content)
        os.replace(part, path)
    finally:
        part.unlink(missing_ok=True)


def make(score_path, check):
    midi_path = score_path.with_suffix(".mid")
    try:
        content = midi_bytes(read_score(score_path.read_text(encoding="utf-8")))
    except (ScoreError, ValueError) as error:
        # mido raises ValueError for what a MIDI file cannot hold, such as a meter of 4/3.
        raise ScoreError(f"{score_path}: {error}") from None
    if not check:
        write_whole(midi_path, content)
    elif midi_path.read_bytes() != content:
        raise ScoreError(f"{midi_path}: differs from what {score_path.name} makes")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true",
                        help="write nothing; fail if a MIDI file is not what its score makes")
    parser.add_argument("scores", nargs="*", type=Path, help="default: every score of this folder")
    arguments = parser.parse_args()
    folder = Path(__file__).resolve().parent
    try:
        for path in arguments.scores or sorted(folder.glob("*.score")):
            make(path, arguments.check)
    except (ScoreError, OSError) as error:
        sys.exit(f"make_midi.py: {error}")


if __name__ == "__main__":
    main()
