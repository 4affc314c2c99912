"""The mouse turns a knob by its angle, so the pictures must point where the mouse is."""

import math
import os
import unittest
from pathlib import Path

import png

SIZE, COUNT, CENTRE = 48, 30, 24.0
DISC = 23.5  # radius
CAP = 16.0  # the pointer lies on the cap, inside this radius


def knobPictures():
    """One list of (x, y from the centre, red, green, blue, alpha) per picture, top to bottom."""
    width, _, pixels = png.read(Path(os.environ["ZELVATONE_RESOURCES"], "ANIMKNOB.PNG"))
    pictures = []
    for first in range(0, SIZE * COUNT, SIZE):
        places = ((x, y) for y in range(SIZE) for x in range(SIZE))
        pictures.append(
            [
                (x + 0.5 - CENTRE, y + 0.5 - CENTRE, *pixels[at : at + 4])
                for x, y in places
                for at in [((first + y) * width + x) * 4]
            ]
        )
    return pictures


def pointerDegrees(picture):
    """Clockwise from the lower left, from the centre of gravity of the white on the cap."""
    right = down = 0.0
    for x, y, red, green, blue, _ in picture:
        white = max(0, min(red, green, blue) - 130)
        if math.hypot(x, y) < CAP:
            right += white * x
            down += white * y
    return (math.degrees(math.atan2(right, -down)) + 135) % 360


def amber(red, green, blue):
    return red > 200 and 120 < green < 220 and blue < 120


class KnobPointer(unittest.TestCase):
    def setUp(self):
        self.pictures = knobPictures()

    def testThePointerStandsAtItsShareOf270DegreesInEveryPicture(self):
        for index, picture in enumerate(self.pictures):
            with self.subTest(picture=index + 1):
                off = (pointerDegrees(picture) - 270 * index / 29 + 180) % 360 - 180
                self.assertLess(abs(off), 1.0)

    def testTheArcFillsFromPictureToPicture(self):
        filled = [sum(amber(*pixel[2:5]) for pixel in picture) for picture in self.pictures]
        self.assertEqual(filled[0], 0)
        for fewer, more in zip(filled, filled[1:]):
            self.assertGreater(more, fewer)

    def testNothingIsPaintedOutsideTheDisc(self):
        for picture in self.pictures:
            outside = [p[5] for p in picture if math.hypot(p[0], p[1]) > DISC + 0.75]
            self.assertGreater(len(outside), 300)
            self.assertEqual(max(outside), 0)

    def testTheDiscItselfIsOpaque(self):
        for picture in self.pictures:
            inside = (p[5] for p in picture if math.hypot(p[0], p[1]) < DISC - 0.75)
            self.assertEqual(min(inside), 255)


if __name__ == "__main__":
    unittest.main()
