"""Where the editor puts its knobs, and what the mock screenshot shows in them."""

import math
from collections import namedtuple

FACE = (717, 477)
KNOB = 48
KNOB_PICTURES = 30

# The editor's rectangles: a knob is 48 x 48; its label lies 20 px above, its value 20 px below.
Knob = namedtuple("Knob", "name left top normalised display")

KNOBS = (
    Knob("Mode Shift", 296, 106, 3 / 6, "0 osc"),
    Knob("Shift Interval", 379, 106, 6 / 10, "2 beats"),
    Knob("Blend Time", 462, 106, 0.0, "0.01 s"),
    Knob("Freq Drop", 545, 106, 8 / 16, "0.00"),
    Knob("Drop Mod", 628, 106, 0.0, "1.00"),
    Knob("Mode Init", 296, 199, 10 / 100, "10 osc"),
    Knob("Min Modes", 379, 199, 2 / 100, "2 osc"),
    Knob("Max Modes", 462, 199, 20 / 100, "20 osc"),
    Knob("Exit Peel", 545, 199, 5 / 10, "0.00"),
    Knob("Falloff", 30, 397, 2 / 3, "-1.00"),
    Knob("Parity", 96, 397, 1 / 2, "0.00"),
    Knob("Jitter", 162, 397, 0.0, "0.00 Hz"),
    Knob("Chop", 30, 106, 1.0, "1.00"),
    Knob("Crush", 96, 106, 0.0, "0 bits"),
    Knob("Wave", 162, 106, 0.0, "Sine"),
    Knob("Modes", 30, 260, 0.0, "0.00"),
    Knob("Detune", 96, 260, 0.25 / 1.75, "0.50"),
    Knob("Power", 162, 260, 0.49 / 1.99, "0.50"),
    Knob("Attack", 296, 397, 0.19 / 1.99, "0.20 s"),
    Knob("Decay", 362, 397, 0.09 / 1.99, "0.10 s"),
    Knob("Sustain", 428, 397, 0.7, "70%"),
    Knob("Release", 494, 397, 0.29 / 1.99, "0.30 s"),
)


def knobPicture(normalised):
    """Index of the picture that the knob control shows: it rounds down, so 29 needs a full 1."""
    return math.floor(normalised * (KNOB_PICTURES - 1))


def knobShare(picture):
    """What a picture shows, 0 to 1: the ends at the ends, else the middle of the values that it
    stands for, so that a half stands upright."""
    last = KNOB_PICTURES - 1
    return picture / last if picture in (0, last) else (picture + 0.5) / last


def knobAngle(picture):
    """Pointer angle of a picture in degrees clockwise from straight up: -135 to 135."""
    return 270 * knobShare(picture) - 135
