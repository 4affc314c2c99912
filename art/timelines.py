"""The diagrams with a time axis: modes that come and go, and the envelope."""

import math

import sound

AXIS = 176  # of time, below the modes
BEAT = 289 / 5  # px of one shift interval; a diagram shows five
BLEND = 0.4  # of a shift interval


def fragments(pen):
    return {
        "growDiagram": grow(pen, 44),
        "thinDiagram": thin(pen, 383),
        "envelopeDiagram": envelope(pen),
    }


def ribbon(pen, path, place, colour, weight=2.2, opacity=1.0):
    """A mode's path over time, as wide as the mode is loud."""
    upper, lower = [], []
    for time, frequency, amplitude in path:
        x, y = place(time, frequency)
        half = 0.3 + weight * math.sqrt(amplitude) if amplitude > 0 else 0
        upper.append((x, y - half))
        lower.append((x, y + half))
    return pen.shape(upper + lower[::-1], colour, opacity)


def modesOverTime(pen, left, captions, **count):
    """Five shift intervals of a note whose modes enter or leave with a peel of 0.5."""
    paths = sound.tracks(
        interval=1, blend=BLEND, peel=0.5, length=5, step=0.02, falloff=-0.7, **count
    )
    place = lambda time, frequency: (left + BEAT * time, AXIS - 6.6 * frequency)
    marks = pen.line([(left, AXIS + 0.5), (left + 5 * BEAT, AXIS + 0.5)], "line", 1)
    for shift in range(1, 5):
        x = round(left + BEAT * shift) + 0.5
        marks += pen.line([(x, AXIS), (x, AXIS - 68)], "line", 1)
    for i, path in enumerate(paths):
        marks += ribbon(pen, path, place, "sky" if i % 2 else "amber")
    first, second = captions
    marks += pen.text(left, 96, "mark", first, "start")
    return marks + pen.text(left + 5 * BEAT, 96, "mark", second, "end")


def grow(pen, left):
    captions = ("Mode Shift 2", "Exit Peel 0.50")
    return (
        modesOverTime(pen, left, captions, init=1, shift=2, least=1, most=7)
        + span(pen, left + BEAT, left + 2 * BEAT, "Shift Interval")
        + span(pen, left + 3 * BEAT, left + (3 + BLEND) * BEAT, "Blend Time")
    )


def thin(pen, left):
    captions = ("Mode Shift −2", "Exit Peel 0.50")
    return (
        modesOverTime(pen, left, captions, init=7, shift=-2, least=1, most=7)
        + pen.text(left, AXIS + 20, "mark", "Mode Init 7", "start")
        + pen.text(left + 5 * BEAT, AXIS + 20, "mark", "Min Modes 1", "end")
    )


def span(pen, start, end, words):
    """A bracket below the time axis, and what the time between its ends is called."""
    ends = [(start, AXIS + 3), (start, AXIS + 7), (end, AXIS + 7), (end, AXIS + 3)]
    return pen.line(ends, "quiet", 1) + pen.text((start + end) / 2, AXIS + 20, "mark", words)


def envelope(pen):
    """Four equal segments, so that each stands above its column of text."""
    left, base, height, segment = 28, 226, 124, 165.25
    times = {"attack": 1, "decay": 1, "sustain": 0.6, "release": 1, "keyUp": 3}
    moments = (0, 1, 2, 3 - 1e-6, 4)
    points = [(left + segment * t, base - height * sound.envelope(t, **times)) for t in moments]
    marks = pen.shape(points, "amber", 0.1)
    marks += pen.line([(left, base + 0.5), (left + 4 * segment, base + 0.5)], "line", 1)
    for x, y in points[1:4]:
        marks += pen.line([(round(x) + 0.5, base), (round(x) + 0.5, y)], "dim", 1, dash="1 4")
    marks += pen.line(points, "amber", 2.5)
    marks += "".join(pen.dot(x, y, 4, "amber") for x, y in points)
    marks += pen.text(left, base + 20, "mark", "key down", "start")
    return marks + pen.text(points[3][0], base + 20, "mark", "key up")
