"""The editor writes names and values in white straight onto the background picture."""

import os
import unittest
from pathlib import Path

import png

# Upper left corner of the first knob of each row, the step to the next, and how many there are.
ROWS = (
    (296, 106, 83, 5),
    (296, 199, 83, 4),
    (30, 397, 66, 3),
    (30, 106, 66, 3),
    (30, 260, 66, 3),
    (296, 397, 66, 4),
)
KNOB, MARGIN, LINE = 48, 20, 20


def textRectangles():
    """(left, top, right, bottom) of the 22 labels above the knobs and the 22 values below."""
    for left, top, step, count in ROWS:
        for x in range(left, left + step * count, step):
            for y in (top - LINE, top + KNOB):
                yield x - MARGIN, y, x + KNOB + MARGIN, y + LINE


def linear(level):
    share = level / 255
    return share / 12.92 if share <= 0.04045 else ((share + 0.055) / 1.055) ** 2.4


def contrastWithWhite(red, green, blue):
    """Contrast ratio as the web's accessibility guidelines define it, 1 to 21."""
    return 1.05 / (
        0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue) + 0.05
    )


class LabelContrast(unittest.TestCase):
    def testContrastRunsFromOneOnWhiteToTwentyOneOnBlack(self):
        self.assertAlmostEqual(contrastWithWhite(255, 255, 255), 1)
        self.assertAlmostEqual(contrastWithWhite(0, 0, 0), 21)

    def testWhiteTextStandsOutSevenToOneFromEveryPixelBehindIt(self):
        width, _, pixels = png.read(Path(os.environ["ZELVATONE_RESOURCES"], "BACKGROUND.PNG"))
        rectangles = list(textRectangles())
        self.assertEqual(len(rectangles), 44)
        for left, top, right, bottom in rectangles:
            colours = set()
            for y in range(top, bottom):
                row = pixels[(y * width + left) * 4 : (y * width + right) * 4]
                colours.update(zip(row[0::4], row[1::4], row[2::4]))
            with self.subTest(rectangle=(left, top, right, bottom)):
                self.assertGreaterEqual(min(contrastWithWhite(*c) for c in colours), 7)


if __name__ == "__main__":
    unittest.main()
