"""Every program plays the same on Windows as on Linux.

Both sides' pow and fmod agree to the bit in what the programs ask of them. The sine is another:
mingw-w64 takes the processor's own, which near a multiple of pi is off by some 1e-21, and the wave
of a mode passes such a place where it crosses zero. So a few samples that are next to nothing
differ by next to nothing; all others are the same to the bit.
"""

import array
import os
import subprocess
import tempfile
import unittest
from pathlib import Path

LINUX_PLAYER = os.environ["ZELVATONE_LINUX_PLAYER"]
WINDOWS_PLAYER = os.environ["ZELVATONE_WINDOWS_PLAYER"]

PROGRAMS = 42
SINE_ERROR = 1e-18  # of a sine near zero; the wave, the modes and the gain multiply it a little


def samplesOf(command, folder, name):
    path = Path(folder) / name
    subprocess.run([*command, str(path)], check=True, stdout=subprocess.DEVNULL)
    samples = array.array("f")
    samples.frombytes(path.read_bytes())
    return samples


class ProgramSound(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            cls.linux = samplesOf([LINUX_PLAYER], folder, "linux")
            cls.windows = samplesOf(["wine", WINDOWS_PLAYER], folder, "windows")

    def testBothPlayAllProgramsForAsLong(self):
        self.assertEqual(len(self.linux), len(self.windows))
        self.assertEqual(len(self.linux), PROGRAMS * 2 * 3 * 44100)

    def testEachProgramIsTheSameButForTheSinesLastBits(self):
        length = len(self.linux) // PROGRAMS
        for program in range(PROGRAMS):
            linux = self.linux[program * length : (program + 1) * length]
            windows = self.windows[program * length : (program + 1) * length]
            with self.subTest(program=program):
                self.assertGreater(max(map(abs, linux)), 0.01)
                differences = [abs(a - b) for a, b in zip(linux, windows) if a != b]
                self.assertLess(max(differences, default=0.0), SINE_ERROR)
                self.assertLess(len(differences), length / 1000)


if __name__ == "__main__":
    unittest.main()
