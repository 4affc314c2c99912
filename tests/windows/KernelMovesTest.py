"""Windows aligns the stack to 16 bytes only, and some versions of g++ move wider vectors there as
if it were aligned for them. No kernel may: it would crash on every other call."""

import os
import re
import subprocess
import unittest

OBJDUMP = os.environ["ZELVATONE_OBJDUMP"]
OBJECTS = [path for path in os.environ["ZELVATONE_OBJECTS"].split(",") if "/Kernel" in path]

# Between memory and registers wider than 16 bytes; they fault where the address is not aligned.
ALIGNED_MOVE = re.compile(r"\tv?mov(?:aps|apd|dqa|dqa32|dqa64|ntps|ntdq) .*%[yz]mm")


def instructionsOf(path):
    command = [OBJDUMP, "-d", path]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.splitlines()


class KernelMoves(unittest.TestCase):
    def testNoWideMoveReliesOnTheStacksAlignment(self):
        for path in OBJECTS:
            with self.subTest(os.path.basename(path)):
                moves = [i for i in instructionsOf(path) if ALIGNED_MOVE.search(i) and "(" in i]
                self.assertEqual(moves, [])

    def testTheKernelsAreLookedAt(self):
        wide = [p for p in OBJECTS if any("%ymm" in i or "%zmm" in i for i in instructionsOf(p))]
        self.assertGreaterEqual(len(wide), 2, OBJECTS)


if __name__ == "__main__":
    unittest.main()
