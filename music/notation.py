"""Reads a score written as text (README.md tells the notation) into notes with exact times."""

import re
from dataclasses import dataclass, field
from fractions import Fraction

SEMITONES = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
ACCIDENTALS = {"": 0, "#": 1, "b": -1}
PITCH = re.compile(r"([A-G])(#|b|)(\d)")
TOKEN = re.compile(r"(?P<what>\[[^\]]*\]|[^/~\[\]]+)"
                   r"(/(?P<value>1|2|4|8|16|32)(?P<dot>\.?))?"
                   r"(?P<tie>~?)")
HIGHEST_PITCH = 127
# A MIDI file counts a quarter in microseconds and in 24 bits, which end just below 16.8 seconds.
SLOWEST_TEMPO = 4


class ScoreError(Exception):
    """What is wrong with a score, in one line that names the place."""


@dataclass
class Note:
    """Times are in whole notes from the start of the piece; pitch is the MIDI note number."""

    start: Fraction
    length: Fraction
    pitch: int


@dataclass
class Hand:
    """Channel is the musician's 1 to 16; offset is added to every velocity of the hand."""

    name: str
    channel: int
    offset: int
    notes: list = field(default_factory=list)
    tied: list = field(default_factory=list)


@dataclass
class Score:
    """Tempos and velocities are (time in whole notes, number) pairs in rising order of time."""

    title: str = ""
    meter: tuple = (4, 4)
    hands: dict = field(default_factory=dict)
    tempos: list = field(default_factory=list)
    velocities: list = field(default_factory=list)
    bar: int = 0
    entered: set = field(default_factory=set)

    @property
    def bar_length(self):
        return Fraction(*self.meter)

    @property
    def length(self):
        return self.bar * self.bar_length


def parse_pitch(text):
    match = PITCH.fullmatch(text)
    if not match:
        raise ScoreError(f"'{text}' is not a pitch such as C4, F#3 or Bb4")
    letter, accidental, octave = match.groups()
    # Octave 4 begins at middle C, which is MIDI note 60.
    pitch = 12 * (int(octave) + 1) + SEMITONES[letter] + ACCIDENTALS[accidental]
    if pitch > HIGHEST_PITCH:
        raise ScoreError(f"'{text}' lies above G9, the highest MIDI note")
    return pitch


def parse_event(token, previous_length):
    """Returns (pitches, length, tied); a rest has no pitches."""
    match = TOKEN.fullmatch(token)
    if not match:
        raise ScoreError(f"'{token}' is not a note, chord or rest")
    length = previous_length
    if match["value"]:
        length = Fraction(1, int(match["value"])) * (Fraction(3, 2) if match["dot"] else 1)
    if length is None:
        raise ScoreError(f"'{token}' opens the bar and needs a value such as {token}/16")
    what = match["what"]
    pitches = [] if what == "r" else [parse_pitch(pitch) for pitch in what.strip("[]").split()]
    if not pitches and what != "r":
        raise ScoreError("a chord needs notes")
    return pitches, length, bool(match["tie"])


def add_event(hand, start, pitches, length, tied):
    """A tie lengthens the notes already there instead of striking them again."""
    if hand.tied:
        if sorted(pitches) != sorted(note.pitch for note in hand.tied):
            raise ScoreError("a tie must lead to the same notes")
        for note in hand.tied:
            note.length += length
        notes = hand.tied
    else:
        notes = [Note(start, length, pitch) for pitch in pitches]
        hand.notes += notes
    hand.tied = notes if tied else []


def add_bar(score, hand, text):
    """Enters one hand's bar, which must fill the meter exactly."""
    if hand.name in score.entered:
        raise ScoreError("entered twice")
    score.entered.add(hand.name)
    bar_start = (score.bar - 1) * score.bar_length
    filled = Fraction(0)
    length = None
    for token in re.findall(r"\[[^\]]*\]\S*|\S+", text):
        pitches, length, tied = parse_event(token, length)
        add_event(hand, bar_start + filled, pitches, length, tied)
        filled += length
    if filled != score.bar_length:
        raise ScoreError(f"holds {filled} of a whole note instead of {score.bar_length}")


def close_bar(score):
    missing = set(score.hands) - score.entered if score.bar else set()
    if missing:
        raise ScoreError(f"bar {score.bar}, {min(missing)}: missing")
    score.entered = set()


def parse_time(score, text):
    """'21:4.5' is halfway through the fourth beat of bar 21."""
    bar, beat = text.split(":")
    return (int(bar) - 1) * score.bar_length + (Fraction(beat) - 1) / score.meter[1]


def add_hand(score, text):
    name, channel, offset = text.split()
    if not 1 <= int(channel) <= 16:
        raise ScoreError(f"channel {channel} is not one of 1 to 16")
    score.hands[name] = Hand(name, int(channel), int(offset))


def add_point(score, points, text, least):
    place, number = text.split()
    time = parse_time(score, place)
    if int(number) < least:
        raise ScoreError(f"{number} is below {least}")
    if time <= points[-1][0] if points else time != 0:
        raise ScoreError(f"places rise from 1:1, and {place} does not")
    points.append((time, int(number)))


def read_line(score, word, rest):
    if word in score.hands and score.bar:
        try:
            add_bar(score, score.hands[word], rest)
        except ScoreError as error:
            raise ScoreError(f"bar {score.bar}, {word}: {error}") from None
    elif word == "bar":
        close_bar(score)
        if int(rest) != score.bar + 1:
            raise ScoreError(f"bar {rest} where bar {score.bar + 1} is due")
        score.bar += 1
    elif word == "title":
        score.title = rest
    elif word == "meter":
        score.meter = tuple(int(part) for part in rest.split("/", 1))
    elif word == "hand":
        add_hand(score, rest)
    elif word == "tempo":
        add_point(score, score.tempos, rest, SLOWEST_TEMPO)
    elif word == "velocity":
        add_point(score, score.velocities, rest, 1)
    else:
        raise ScoreError(f"'{word}' is neither a hand nor a known word")


def check_whole(score):
    close_bar(score)
    if not (score.bar and score.hands and score.tempos and score.velocities):
        raise ScoreError("a score needs a hand, a tempo, a velocity and a bar")
    for hand in score.hands.values():
        if hand.tied:
            raise ScoreError(f"bar {score.bar}, {hand.name}: a tie leads past the end")


def read_score(text):
    """Reads a whole score; raises ScoreError naming the line, and the bar and hand if in one."""
    score = Score()
    number = 0
    try:
        for number, line in enumerate(text.splitlines(), 1):
            # A sharp stands inside a word, so only a '#' that opens a line is a comment.
            word, _, rest = line.strip().partition(" ")
            if word and not word.startswith("#"):
                read_line(score, word, rest.strip())
        check_whole(score)
    except ScoreError as error:
        raise ScoreError(f"line {number}: {error}") from None
    except (ValueError, ZeroDivisionError):
        raise ScoreError(f"line {number}: not understood: {line.strip()}") from None
    return score
