"""What the linked files say about themselves: what they export, and what they need."""

import os
import re
import subprocess
import unittest

OBJDUMP = os.environ["ZELVATONE_OBJDUMP"]
PLUGIN = os.environ["ZELVATONE_DLL"]
HOST = os.environ["ZELVATONE_EXE"]

# Part of every Windows since 7.
OF_WINDOWS = {
    "advapi32.dll",  # random numbers, for the canaries of the stack
    "gdi32.dll",
    "gdiplus.dll",
    "kernel32.dll",
    "msvcrt.dll",
    "ole32.dll",
    "shell32.dll",
    "user32.dll",
}


def headers(path):
    command = [OBJDUMP, "-p", path]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def neededBy(path):
    return {name.lower() for name in re.findall(r"DLL Name: (\S+)", headers(path))}


class ModuleFile(unittest.TestCase):
    def testPluginExportsTheEntryPointUnderItsTwoNamesAndNothingElse(self):
        names = re.findall(r"^\s*\[ *\d+\] (\w+)$", headers(PLUGIN), re.MULTILINE)
        self.assertEqual(sorted(names), ["VSTPluginMain", "main"])

    def testBothNamesAreOneFunction(self):
        addresses = re.findall(r"([0-9a-f]+) Export RVA", headers(PLUGIN))
        self.assertEqual(len(addresses), 2)
        self.assertEqual(len(set(addresses)), 1)

    def testPluginNeedsNothingThatWindowsLacks(self):
        self.assertLessEqual(neededBy(PLUGIN), OF_WINDOWS)
        self.assertIn("gdiplus.dll", neededBy(PLUGIN))

    def testHostNeedsNothingThatWindowsLacks(self):
        self.assertLessEqual(neededBy(HOST), OF_WINDOWS)
        self.assertIn("kernel32.dll", neededBy(HOST))

    def testHostExportsNothing(self):
        self.assertNotIn("Export RVA", headers(HOST))


if __name__ == "__main__":
    unittest.main()
