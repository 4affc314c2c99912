"""The face's own artwork: knob seats, the bank of partials, and the pictogram of each panel."""

import diagrams
import layout
import sound
import timelines


def fragments(pen):
    """Every piece by the name that a template uses for it."""
    # The drawing, its place on the face (where a cell is free), its place on the index.
    marks = (
        (waveMark, (229, 117), (128.5, 66)),
        (extraMark, (229, 271), (128.5, 219)),
        (spectrumMark, (229, 408), (128.5, 362)),
        (modesMark, (638, 210), (473, 98)),
        (envelopeMark, None, (406, 362)),
    )
    return {
        "seats": seats(),
        "bank": bank(pen),
        "faceMarks": "".join(draw(pen, *cell, "dim") for draw, cell, _ in marks if cell),
        "indexMarks": "".join(draw(pen, *cell, "amber") for draw, _, cell in marks),
    }


def seats():
    """The soft shadow that each knob throws on its panel."""
    half = layout.KNOB / 2
    return "".join(
        f'<circle cx="{knob.left + half}" cy="{knob.top + half + 2}" r="29" fill="url(#seat)"/>'
        for knob in layout.KNOBS
    )


def bank(pen):
    """A note that gains a mode at every shift; past the envelope panel it opens like a horn."""
    shifts, most = 22, 16
    paths = sound.tracks(
        init=1, shift=1, least=1, most=most, interval=1, blend=0.6, peel=0.5, length=shifts,
        step=0.05, falloff=-0.5,
    )
    place = lambda time, frequency: horn(277 + 440 * time / shifts, frequency / most)
    return "".join(
        timelines.ribbon(pen, path, place, "sky" if i % 2 else "amber", 1.7, 1 - 0.03 * i)
        for i, path in enumerate(paths)
    )


def horn(x, height):
    """A point of the bank: narrow above the envelope panel, wide beside it."""
    u = min(max((x - 556) / (746 - 556), 0), 1)
    opening = u * u * (3 - 2 * u)
    floor, ceiling = 335 + 146 * opening, 287 - 2 * opening
    return x, floor + (ceiling - floor) * height


# Pictograms are 28 px wide and 26 px high, placed by their upper left corner.


def waveMark(pen, left, top, colour):
    """Three shapes: one alone would be taken for a display of the chosen wave."""
    marks = []
    for row, kind in enumerate(("Sine", "Square", "Saw")):
        shape = lambda p, kind=kind: sound.wave(kind, (2 * p) % 1)
        curve = diagrams.cycle(shape, left, top + 10 * row, 28, 6)
        marks.append(pen.line(curve, colour, 1.5))
    return "".join(marks)


def extraMark(pen, left, top, colour):
    """Two hollow tones below a note and its octave."""
    heads = ((2, 13, True), (10, 9, True), (18, 1, False), (26, 13, False))
    return "".join(
        pen.partial(left + x, top + 26, top + y, colour, hollow, 2.5) for x, y, hollow in heads
    )


def spectrumMark(pen, left, top, colour):
    return "".join(
        pen.partial(left + 2 + 8 * (k - 1), top + 26, top + 27 - 26 / k, colour, False, 2.5)
        for k in range(1, 5)
    )


def modesMark(pen, left, top, colour):
    """Modes that part from one another."""
    marks = []
    for end in (1, 9, 17, 25):
        ease = ((i / 20, (i / 20) ** 2 * (3 - i / 10)) for i in range(21))
        curve = [(left + 28 * u, top + 25 + (end - 25) * share) for u, share in ease]
        marks.append(pen.line(curve, colour, 1.75))
    return "".join(marks)


def envelopeMark(pen, left, top, colour):
    corners = ((0, 25), (7, 1), (13, 11), (20, 11), (28, 25))
    return pen.line([(left + x, top + y) for x, y in corners], colour, 2)
