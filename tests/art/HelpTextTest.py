"""Help that cannot be read is no help: what the pages name, how large, and with what room."""

import os
import re
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

import pictures
import png

SVG = "{http://www.w3.org/2000/svg}"
SMALLEST = 12  # px, the size of the editor's own labels

PARAMETERS = {
    "HELP1.PNG": ["Chop", "Crush", "Wave"],
    "HELP2.PNG": [
        *("Mode Init", "Mode Shift", "Shift Interval", "Min Modes", "Max Modes", "Blend Time"),
        *("Exit Peel", "Freq Drop", "Drop Mod"),
    ],
    "HELP3.PNG": ["Modes", "Detune", "Power"],
    "HELP4.PNG": ["Falloff", "Parity", "Jitter"],
    "HELP5.PNG": ["Attack", "Decay", "Sustain", "Release"],
}
IN_THREE_COLUMNS = ("HELP1.PNG", "HELP3.PNG", "HELP4.PNG")

# The areas that open a page when clicked: left, top, right, bottom.
AREAS = (
    (14, 40, 271, 187),
    (277, 40, 697, 275),
    (14, 193, 271, 340),
    (14, 344, 271, 474),
    (277, 344, 563, 473),
)


def rowsOf(name):
    """The rendered picture as a list of rows, each a list of (red, green, blue, alpha)."""
    width, _, data = png.read(Path(os.environ["ZELVATONE_RESOURCES"], name))
    pixels = list(zip(data[0::4], data[1::4], data[2::4], data[3::4]))
    return [pixels[start : start + width] for start in range(0, len(pixels), width)]


class HelpText(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        names = ("HELPOVERLAY.PNG", *PARAMETERS)
        drawn = pictures.drawAll()
        cls.trees = {name: ElementTree.fromstring(drawn[name]) for name in names}
        cls.rows = {name: rowsOf(name) for name in names}

    def testNoTextIsSmallerThanTheEditorsOwnLabels(self):
        for name, tree in self.trees.items():
            sheet = tree.find(f"{SVG}style").text
            sizes = dict(re.findall(r"\.(\w+)\{[^}]*font-size:([\d.]+)px", sheet))
            for text in tree.iter(f"{SVG}text"):
                with self.subTest(picture=name, text="".join(text.itertext())):
                    self.assertGreaterEqual(float(sizes[text.get("class")]), SMALLEST)

    def testNothingChangesTheSizeOfTextBehindTheStyleSheet(self):
        for name, tree in self.trees.items():
            for element in tree.iter():
                with self.subTest(picture=name, element=element.tag):
                    self.assertNotIn("font", " ".join(element.keys()) + element.get("style", ""))
                    self.assertNotIn("scale", element.get("transform", ""))

    def testEachPageExplainsTheKnobsOfItsPanel(self):
        for name, parameters in PARAMETERS.items():
            named = [
                text.text for text in self.trees[name].iter(f"{SVG}text")
                if text.get("class") == "name"
            ]
            self.assertEqual(named, parameters)

    def testEachPageTellsThatAClickGoesBackAndTheIndexThatAClickCloses(self):
        for name, tree in self.trees.items():
            words = " ".join(tree.itertext())
            hint = "goes back|go back" if name in PARAMETERS else "elsewhere|anywhere else"
            self.assertRegex(words, f"Click .*({hint})")

    def testPagesKeepTheirOuterMarginsFree(self):
        for name in PARAMETERS:
            for y, row in enumerate(self.rows[name]):
                with self.subTest(picture=name, y=y):
                    self.assertEqual(len(set(row[:20] + row[-20:])), 1)

    def testTextStaysOutOfTheGuttersBetweenColumns(self):
        for name in IN_THREE_COLUMNS:
            for y in range(226, 412):
                row = self.rows[name][y]
                with self.subTest(picture=name, y=y):
                    self.assertEqual(len(set(row[240:252] + row[466:478] + row[:20])), 1)

    def testTheIndexOutlinesEveryAreaThatCanBeClicked(self):
        rows = self.rows["HELPOVERLAY.PNG"]
        for left, top, right, bottom in AREAS:
            middle, centre = (left + right) // 2, (top + bottom) // 2
            edges = (rows[centre][left], rows[centre][right - 1], rows[top][middle])
            # The lower edges of the bottom row are drawn level, one pixel inside the taller area.
            lowest = max(rows[bottom - 1][middle], rows[bottom - 2][middle])
            for red, green, blue, _ in (*edges, lowest):
                with self.subTest(area=(left, top, right, bottom)):
                    self.assertGreater(red, 200)
                    self.assertLess(blue, 100)


if __name__ == "__main__":
    unittest.main()
