"""A Windows without Arial, and without a font that is to be taken for it, shows all texts too."""

import os
import subprocess
import unittest
from pathlib import Path

import png

EXE = os.environ["ZELVATONE_EXE"]
PICTURES = Path(os.environ["ZELVATONE_PICTURES"])
REPLACEMENTS = r"HKCU\Software\Wine\Fonts\Replacements"

# The top left of some knobs, 48 x 48; the name stands above, the value below, each 88 x 20.
KNOBS = [(30, 106), (296, 106), (628, 106), (296, 199), (30, 260), (30, 397), (494, 397)]
TEXTS = [(x - 20, y + dy, 88, 20) for x, y in KNOBS for dy in (-20, 48)]
INK = 110  # of the green of a pixel; the background is dark


def registry(*command):
    subprocess.run(["wine", "reg", *command], check=True, stdout=subprocess.DEVNULL)


class MissingFont(unittest.TestCase):
    def setUp(self):
        registry("delete", REPLACEMENTS, "/f", "/v", "Arial")
        self.addCleanup(registry, "add", REPLACEMENTS, "/f", "/v", "Arial", "/d", "Liberation Sans")

    def testNamesAndValuesAreWrittenInAnotherOne(self):
        PICTURES.mkdir(parents=True, exist_ok=True)
        picture = PICTURES / "editor-without-arial.png"
        subprocess.run(
            ["wine", EXE, "screenshot", "-o", str(picture)], check=True, stdout=subprocess.DEVNULL
        )
        width, _, pixels = png.read(picture)
        for left, top, columns, rows in TEXTS:
            bright = sum(
                pixels[4 * (y * width + x) + 1] > INK
                for y in range(top, top + rows)
                for x in range(left, left + columns)
            )
            # "2 osc" and the like: some strokes of some pixels at least.
            with self.subTest(text=(left, top)):
                self.assertGreater(bright, 25)


if __name__ == "__main__":
    unittest.main()
