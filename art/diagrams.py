"""The diagrams of the pages with three knobs, each computed from what the instrument does.

Each fills the well of a column, WIDTH by HEIGHT at (left, TOP); left below is PAD further in.
"""

import math

import sound
import timelines

TOP = 84
WIDTH = 209
HEIGHT = 136
COLUMNS = (28, 254, 480)
PAD = 16
INNER = WIDTH - 2 * PAD

BASE = TOP + 104  # of the spectra, with the harmonics' numbers below it
REACH = 66  # px of the loudest partial


def fragments(pen):
    """Every diagram by the name that a template uses for it."""
    first, second, third = (left + PAD for left in COLUMNS)
    return {
        "wells": "".join(well(pen, left) for left in COLUMNS),
        "chopDiagram": chop(pen, first),
        "crushDiagram": crush(pen, second),
        "waveDiagram": waves(pen, third),
        "extraModesDiagram": extraModes(pen, first),
        "detuneDiagram": detune(pen, second),
        "powerDiagram": power(pen, third),
        "falloffDiagram": falloff(pen, first),
        "parityDiagram": parity(pen, second),
        "jitterDiagram": jitter(pen, third),
        **timelines.fragments(pen),
    }


def well(pen, left):
    return (
        f'<rect x="{left + 0.5}" y="{TOP + 0.5}" width="{WIDTH - 1}" height="{HEIGHT - 1}" rx="6"'
        f' fill="{pen.colours["well"]}" stroke="{pen.colours["edge"]}"/>'
    )


def cycle(of, left, top, width, height, points=240):
    """The curve of one cycle in a box; of(phase) gives -1 to 1."""
    middle, reach = top + height / 2, height / 2
    return [
        (left + width * i / points, middle - reach * of(min(i / points, 1 - 1e-9)))
        for i in range(points + 1)
    ]


def sine(phase):
    return sound.wave("Sine", phase)


def changedSine(pen, left, changed, names):
    """What a setting makes of a sine, over the plain sine, dotted."""
    box = (left, TOP + 40, INNER, 78)
    changedName, plainName = names
    return (
        pen.line([(left, TOP + 79.5), (left + INNER, TOP + 79.5)], "line", 1)
        + pen.line(cycle(sine, *box), "sky", 1.5, dash="1 4")
        + pen.line(cycle(changed, *box, points=1024), "amber", 2.5)
        + pen.text(left, TOP + 24, "mark", pen.tag("amber", changedName), "start")
        + pen.text(left + INNER, TOP + 24, "mark", pen.tag("sky", plainName), "end")
    )


def chop(pen, left):
    return changedSine(pen, left, lambda p: sound.chopped("Sine", 0.4, p), ("0.40", "1.00"))


def crush(pen, left):
    return changedSine(pen, left, lambda p: sound.crush(sine(p), 3), ("3 bits", "off"))


def waves(pen, left):
    marks = []
    for row, kind in enumerate(("Sine", "Square", "Saw", "Poly", "Son of Poly")):
        y = TOP + 13 + 23 * row
        shape = lambda p, kind=kind: sound.wave(kind, (2 * p) % 1)
        marks.append(pen.text(left, y + 12.5, "mark", kind, "start"))
        marks.append(pen.line(cycle(shape, left + 88, y, INNER - 88, 16, 480), "amber", 1.5))
    return "".join(marks)


def extraModes(pen, left):
    """A note with three extra modes on an axis of octaves; what lies below the note is hollow."""
    modes = sound.modeSet(11, extras=3, detune=1, power=0.6)
    noteAt, perOctave, reach = left + 82, 27, REACH / modes[3][1]
    marks = pen.line([(left, BASE + 0.5), (left + INNER, BASE + 0.5)], "line", 1)
    for frequency, amplitude in modes:
        x, below = noteAt + perOctave * math.log2(frequency), frequency < 1
        colour = "sky" if below else "amber"
        marks += pen.partial(x, BASE, BASE - reach * amplitude, colour, below)
    marks += pen.text(noteAt, BASE + 19, "mark", "note")
    return marks + pen.text(left, TOP + 24, "mark", pen.tag("sky", "3 extra modes"), "start")


def detune(pen, left):
    """Where five extra modes lie, in octaves below the note, for three settings."""
    marks, noteAt, perOctave = "", left + INNER - 6, 19.2
    for row, setting in enumerate((0.25, 1.0, 2.0)):
        y = TOP + 28.5 + 34 * row
        marks += pen.line([(left + 34, y), (noteAt, y)], "line", 1)
        marks += pen.text(left, y + 4.5, "mark", pen.tag("sky", f"{setting:.2f}"), "start")
        for frequency, _ in sound.modeSet(6, extras=5, detune=setting)[:5]:
            marks += pen.dot(noteAt + perOctave * math.log2(frequency), y, 3, "sky", 1, True)
        marks += pen.dot(noteAt, y, 3.5, "amber")
    return marks + pen.text(noteAt + 6, TOP + 123, "mark", "note", "end")


def power(pen, left):
    """One extra mode and four harmonics at three settings, as loud as they sound."""
    marks = ""
    for group, setting in enumerate((0.25, 1.0, 2.0)):
        x = left + 12 + 62 * group
        marks += pen.line([(x - 10, BASE + 0.5), (x + 42, BASE + 0.5)], "line", 1)
        for i, (_, amplitude) in enumerate(sound.modeSet(5, extras=1, detune=1, power=setting)):
            top, colour = BASE - 165 * amplitude, "amber" if i else "sky"
            marks += pen.partial(x + 8 * i, BASE, top, colour, i == 0)
        marks += pen.text(x + 16, BASE + 19, "mark", pen.tag("sky", f"{setting:.2f}"))
    return marks


def axis(pen, left, pitch, count, width=INNER):
    """A base line numbered by harmonics."""
    return pen.line([(left, BASE + 0.5), (left + width, BASE + 0.5)], "line", 1) + "".join(
        pen.text(left + 10 + pitch * (k - 1), BASE + 19, "mark", str(k))
        for k in range(1, count + 1)
    )


def spectrum(pen, left, pitch, modes):
    """Odd partials solid amber, even ones hollow sky."""
    marks = axis(pen, left, pitch, len(modes))
    loudest = modes[0][1]
    for k, (frequency, amplitude) in enumerate(modes, start=1):
        x, even = left + 10 + pitch * (frequency - 1), k % 2 == 0
        top = BASE - REACH * amplitude / loudest
        marks += pen.partial(x, BASE, top, "sky" if even else "amber", even)
    return marks


def falloff(pen, left):
    """Seven harmonics at -1, between the extremes."""
    pitch, count = 26, 7
    last = left + 10 + pitch * (count - 1)
    marks = axis(pen, left, pitch, count, last - left)
    for slope in (0, -3):
        curve = [
            (left + 10 + pitch * (k / 8 - 1), BASE - REACH * (k / 8) ** slope)
            for k in range(8, 8 * count + 1)
        ]
        marks += pen.line(curve, "sky", 1.5, dash="1 4")
    for k in range(1, count + 1):
        marks += pen.partial(left + 10 + pitch * (k - 1), BASE, BASE - REACH / k, "amber")
    # Each where its curve ends, and the middle one beside a head.
    marks += pen.text(last + 9, BASE - REACH + 4.5, "mark", pen.tag("sky", "0"), "start")
    marks += pen.text(left + 43, BASE - 37, "mark", pen.tag("amber", "−1"), "start")
    return marks + pen.text(last + 9, BASE + 4.5, "mark", pen.tag("sky", "−3"), "start")


def parity(pen, left):
    modes = sound.modeSet(8, falloff=-0.5, parity=0.7)
    label = pen.text(left + INNER, TOP + 24, "mark", pen.tag("amber", "0.70"), "end")
    return spectrum(pen, left, 22, modes) + label


def jitter(pen, left):
    """A 100 Hz note with 30 Hz of jitter; dotted stems stand where the harmonics were."""
    pitch, modes = 30, sound.modeSet(6, falloff=-0.5, jitter=0.3)
    words = pen.tag("amber", "30 Hz, note at 100 Hz")
    marks = pen.text(left + INNER, TOP + 24, "mark", words, "end")
    for k, (_, amplitude) in enumerate(modes[1:], start=2):
        x, top = left + 10 + pitch * (k - 1), BASE - REACH * amplitude / modes[0][1]
        marks += pen.line([(x, BASE), (x, top)], "dim", 1.5, dash="1 4")
    return marks + spectrum(pen, left, pitch, modes)
