"""The editor opens eight pictures by name and trusts their sizes and their pixel format."""

import os
import struct
import unittest
from pathlib import Path

import png

FOLDER = Path(os.environ["ZELVATONE_RESOURCES"])
SCALE = int(os.environ.get("ZELVATONE_SCALE", "1"))

FACE = (717, 477)
SIZES = {
    "ANIMKNOB.PNG": (48, 1440),
    "BACKGROUND.PNG": FACE,
    "HELPOVERLAY.PNG": FACE,
    "HELP1.PNG": FACE,
    "HELP2.PNG": FACE,
    "HELP3.PNG": FACE,
    "HELP4.PNG": FACE,
    "HELP5.PNG": FACE,
}


def startOf(name):
    """(signature, width, height, depth, colour type, interlace) from the file's first bytes."""
    data = (FOLDER / name).read_bytes()
    width, height, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", data[16:29])
    return data[:8], width, height, depth, colour, interlace


class PictureFormat(unittest.TestCase):
    def testEveryPictureHasTheSizeThatTheLayoutCountsOn(self):
        for name, (width, height) in SIZES.items():
            with self.subTest(name):
                self.assertEqual(startOf(name)[1:3], (width * SCALE, height * SCALE))

    def testEveryPictureIsRgbaWithEightBitsAndNotInterlaced(self):
        for name in SIZES:
            with self.subTest(name):
                signature, _, _, depth, colour, interlace = startOf(name)
                self.assertEqual(signature, b"\x89PNG\r\n\x1a\n")
                self.assertEqual((depth, colour, interlace), (8, 6, 0))

    @unittest.skipIf(SCALE > 1, "seen at the editor's own size")
    def testTheFaceAndEveryPageOverItAreOpaqueEverywhere(self):
        for name in SIZES.keys() - {"ANIMKNOB.PNG"}:
            with self.subTest(name):
                _, _, pixels = png.read(FOLDER / name)
                self.assertEqual(min(pixels[3::4]), 255)


if __name__ == "__main__":
    unittest.main()
