"""The editor looks the same on Windows as on Linux. Pictures of both stay in the build folder."""

import os
import subprocess
import unittest
from pathlib import Path

import png

LINUX_HOST = os.environ["ZELVATONE_LINUX_HOST"]
WINDOWS_HOST = os.environ["ZELVATONE_EXE"]
PICTURES = Path(os.environ["ZELVATONE_PICTURES"])

FACE = (717, 477)
# The top left of each knob, 48 x 48; its name stands above it, its value below, each 88 x 20.
KNOBS = [
    *[(x, 106) for x in (30, 96, 162, 296, 379, 462, 545, 628)],
    *[(x, 199) for x in (296, 379, 462, 545)],
    *[(x, 260) for x in (30, 96, 162)],
    *[(x, 397) for x in (30, 96, 162, 296, 362, 428, 494)],
]
TEXTS = [(x - 20, y + dy, 88, 20) for x, y in KNOBS for dy in (-20, 48)]
# The background is dark: the fainter half of a letter's smoothed edge is not counted.
INK = 110


def shoot(command, name, *options):
    path = PICTURES / name
    subprocess.run(
        [*command, "screenshot", "-o", str(path), *options], check=True, stdout=subprocess.DEVNULL
    )
    width, height, pixels = png.read(path)
    return (width, height), pixels


def shootBoth(name, *options):
    linux = shoot([LINUX_HOST], f"{name}-linux.png", *options)
    windows = shoot(["wine", WINDOWS_HOST], f"{name}-windows.png", *options)
    return linux, windows


def cut(pixels, left, top, width, height):
    """The bytes of a part, row by row."""
    rows = range(top, top + height)
    return b"".join(pixels[4 * (y * FACE[0] + left) :][: 4 * width] for y in rows)


def largestDifference(a, b):
    return max(abs(x - y) for x, y in zip(a, b))


def inkBox(pixels, left, top, width, height):
    """(left, top, right, bottom) of a text's ink, or None; the latter two are not included."""
    places = [
        (x, y)
        for y in range(top, top + height)
        for x in range(left, left + width)
        if pixels[4 * (y * FACE[0] + x) + 1] > INK
    ]
    if not places:
        return None
    xs, ys = zip(*places)
    return min(xs), min(ys), max(xs) + 1, max(ys) + 1


class EditorPicture(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        PICTURES.mkdir(parents=True, exist_ok=True)
        (cls.size, cls.linux), (cls.windowsSize, cls.windows) = shootBoth("editor")

    def testBothAreAsLargeAsTheFace(self):
        self.assertEqual(self.size, FACE)
        self.assertEqual(self.windowsSize, FACE)

    def testEverythingButKnobsAndTextsIsTheSame(self):
        controls = {
            (x, y)
            for left, top in KNOBS
            for x in range(left - 20, left + 68)
            for y in range(top - 20, top + 68)
        }
        for y in range(FACE[1]):
            for x in range(FACE[0]):
                if (x, y) not in controls:
                    at = 4 * (y * FACE[0] + x)
                    if self.linux[at : at + 4] != self.windows[at : at + 4]:
                        self.fail(f"another colour at {x}, {y}")

    def testKnobsDifferByNoMoreThanTheRoundingOfTheirBlending(self):
        for left, top in KNOBS:
            knobs = [cut(p, left, top, 48, 48) for p in (self.linux, self.windows)]
            with self.subTest(knob=(left, top)):
                self.assertLessEqual(largestDifference(*knobs), 2)

    def testTextsStandWhereTheyStandOnLinux(self):
        for text in TEXTS:
            with self.subTest(text=text):
                linux, windows = inkBox(self.linux, *text), inkBox(self.windows, *text)
                self.assertIsNotNone(linux)
                self.assertIsNotNone(windows)
                self.assertLessEqual(largestDifference(linux, windows), 1)

    def testHelpPagesAreTheSame(self):
        for page in range(6):
            with self.subTest(page=page):
                linux, windows = shootBoth(f"help-{page}", "--help-page", str(page))
                self.assertTrue(linux == windows)


if __name__ == "__main__":
    unittest.main()
