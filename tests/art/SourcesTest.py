"""The committed pictures are those that the sources in art/ give, in both sizes."""

import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

MAKE = Path(os.environ["ZELVATONE_ART"], "make.py")
RESOURCES = Path(os.environ["ZELVATONE_RESOURCES"])
ICON = MAKE.parents[1] / "packaging/desktop/com.quillfeather.zelvatone.svg"


class Sources(unittest.TestCase):
    def expectPictures(self, committed, scale):
        with tempfile.TemporaryDirectory() as folder:
            command = [sys.executable, "-B", MAKE, "pictures", folder, "--scale", str(scale)]
            subprocess.run(command, check=True)
            made = {file.name: file.read_bytes() for file in Path(folder).iterdir()}
        kept = {file.name: file.read_bytes() for file in committed.glob("*.PNG")}
        self.assertEqual(made.keys(), kept.keys())
        for name, content in made.items():
            with self.subTest(name):
                self.assertTrue(content == kept[name])

    def testGiveThePicturesOfTheEditorsOwnSize(self):
        self.expectPictures(RESOURCES, 1)

    def testGiveThePicturesOfTwiceThatSize(self):
        self.expectPictures(RESOURCES / "2x", 2)

    def testGiveTheIcon(self):
        with tempfile.TemporaryDirectory() as folder:
            made = Path(folder, "icon.svg")
            subprocess.run([sys.executable, "-B", MAKE, "icon", made], check=True)
            self.assertEqual(made.read_text(encoding="utf-8"), ICON.read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
