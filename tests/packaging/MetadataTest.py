"""What software centres and menus read is valid, as their own checkers see it."""

import os
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"])
BUILD = Path(os.environ["ZELVATONE_BUILD"])
CHECKERS = ("appstreamcli", "desktop-file-validate")


class Metadata(unittest.TestCase):
    def expectSilence(self, *command):
        result = subprocess.run(command, check=False, capture_output=True, text=True)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def testIsValid(self):
        for file in sorted((BUILD / "packaging").glob("*.metainfo.xml")):
            with self.subTest(file.name):
                self.expectSilence("appstreamcli", "validate", "--no-net", "--pedantic", file)

    def testTheMenuEntryIsValid(self):
        for file in (ROOT / "packaging/desktop").glob("*.desktop"):
            self.assertEqual(self.expectSilence("desktop-file-validate", file), "")


if __name__ == "__main__":
    if not all(shutil.which(checker) for checker in CHECKERS):
        print("skipped")
        sys.exit(77)
    unittest.main()
