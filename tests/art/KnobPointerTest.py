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


def luminance(colour):
    """As the web's accessibility guidelines define it, 0 to 1."""

    def linear(level):
        share = level / 255
        return share / 12.92 if share <= 0.04045 else ((share + 0.055) / 1.055) ** 2.4

    red, green, blue = map(linear, colour)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    """Contrast ratio of two colours, 1 to 21."""
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


class KnobPointer(unittest.TestCase):
    def setUp(self):
        self.pictures = knobPictures()

    def testThePointerStandsInTheMiddleOfTheValuesOfItsPicture(self):
        # Picture i is shown from i/29 up to (i + 1)/29; the last one for 1 alone, and the first
        # one shows the end too.
        shares = [0, *((index + 0.5) / 29 for index in range(1, 29)), 1]
        for index, (picture, share) in enumerate(zip(self.pictures, shares)):
            with self.subTest(picture=index + 1):
                off = (pointerDegrees(picture) - 270 * share + 180) % 360 - 180
                self.assertLess(abs(off), 1.0)

    def testAHalfStandsUpright(self):
        self.assertLess(abs(pointerDegrees(self.pictures[14]) - 135), 0.2)

    def testTheUnlitArcIsSeenOnItsGroundAndTheLitOneOnIt(self):
        colour = {
            (x, y): pixel for x, y, *pixel, _ in self.pictures[0]
        }
        unlit, ground = colour[-0.5, -19.5], colour[0.5, 21.5]
        lit = {(x, y): pixel for x, y, *pixel, _ in self.pictures[29]}[-0.5, -19.5]
        self.assertGreaterEqual(contrast(unlit, ground), 3)
        self.assertGreaterEqual(contrast(lit, unlit), 3)

    def testThePointerIsTheBrightestPart(self):
        for picture in self.pictures:
            x, y, *_ = max(picture, key=lambda pixel: luminance(pixel[2:5]))
            self.assertLess(math.hypot(x, y), CAP)

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
