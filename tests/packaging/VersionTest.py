"""The version stands in the top CMakeLists.txt; every other place has the same."""

import ctypes
import json
import os
import re
import subprocess
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

import release_notes

ROOT = Path(os.environ["ZELVATONE_ROOT"])
BUILD = Path(os.environ["ZELVATONE_BUILD"])
VERSION = os.environ["ZELVATONE_VERSION"]
MAJOR, MINOR, PATCH = map(int, VERSION.split("."))
PROGRAM = BUILD / "bin/zelvatone"


class ClapVersion(ctypes.Structure):
    _fields_ = [(name, ctypes.c_uint32) for name in ("major", "minor", "revision")]


class ClapEntry(ctypes.Structure):
    _fields_ = [("version", ClapVersion),
                ("init", ctypes.CFUNCTYPE(ctypes.c_bool, ctypes.c_char_p)),
                ("deinit", ctypes.CFUNCTYPE(None)),
                ("getFactory", ctypes.CFUNCTYPE(ctypes.c_void_p, ctypes.c_char_p))]


class ClapDescriptor(ctypes.Structure):
    _fields_ = [("clapVersion", ClapVersion)] + [
        (name, ctypes.c_char_p)
        for name in ("id", "name", "vendor", "url", "manualUrl", "supportUrl", "version")]


class ClapFactory(ctypes.Structure):
    _fields_ = [("count", ctypes.CFUNCTYPE(ctypes.c_uint32, ctypes.c_void_p)),
                ("descriptor", ctypes.CFUNCTYPE(ctypes.POINTER(ClapDescriptor), ctypes.c_void_p,
                                                ctypes.c_uint32))]


def clapVersionOf(path):
    """The version in the descriptor of a CLAP file's first plug-in, as a host asks for it."""
    entry = ClapEntry.in_dll(ctypes.CDLL(str(path)), "clap_entry")
    assert entry.init(str(path).encode())
    address = entry.getFactory(b"clap.plugin-factory")
    factory = ctypes.cast(address, ctypes.POINTER(ClapFactory)).contents
    version = factory.descriptor(address, 0).contents.version.decode()
    entry.deinit()
    return version


class Version(unittest.TestCase):
    def testIsWhatTheProgramSays(self):
        result = subprocess.run([PROGRAM, "--version"], check=True, capture_output=True, text=True)
        self.assertEqual(result.stdout, f"zelvatone {VERSION}\n")

    def testIsInTheClapDescriptor(self):
        self.assertEqual(clapVersionOf(BUILD / "bin/zelvatone.clap"), VERSION)

    def testMakesTheLv2Numbers(self):
        text = (BUILD / "bin/zelvatone.lv2/zelvatone.ttl").read_text(encoding="utf-8")
        self.assertEqual(re.findall(r"lv2:m\w+Version \d+", text),
                         [f"lv2:minorVersion {2 * (100 * MAJOR + MINOR)}",
                          f"lv2:microVersion {2 * PATCH}"])

    def testIsNotTheNumberThatTheVst2PlugInHasForEver(self):
        command = [PROGRAM, "info", "--json"]
        result = subprocess.run(command, check=True, capture_output=True, text=True)
        self.assertEqual(json.loads(result.stdout)["vendorVersion"], 1)

    def testIsAtTheFootOfTheManual(self):
        manual = (BUILD / "cli/man/zelvatone.1").read_text(encoding="utf-8")
        self.assertIn(f"\n.Os Zelvatone {VERSION}\n", manual)

    def testHasTheNewestSectionOfTheChangelogWithADate(self):
        changelog = (ROOT / "CHANGELOG.md").read_text(encoding="utf-8")
        dated = [match for match in release_notes.HEADING.finditer(changelog) if match["date"]]
        self.assertEqual(dated[0]["version"], VERSION)

    def testIsTheNewestReleaseInEveryMetadata(self):
        files = list((BUILD / "packaging").glob("*.metainfo.xml"))
        self.assertEqual(len(files), 4)
        for file in files:
            self.assertEqual(xml.parse(file).find("releases/release").get("version"), VERSION, file)

    def testIsTypedInTwoPlacesOnly(self):
        pattern = re.compile(rf"(?<![\d.]){re.escape(VERSION)}(?![\d.])")
        typed = []
        for folder in (".", "cli", "cmake", "docs", "host", "packaging", "src", "tools"):
            for file in ROOT.glob("*" if folder == "." else f"{folder}/**/*"):
                if file.suffix in (".png", ".PNG", ".svg") or not file.is_file():
                    continue
                if pattern.search(file.read_text(encoding="utf-8", errors="replace")):
                    typed.append(file.relative_to(ROOT).as_posix())
        self.assertEqual(sorted(typed), ["CHANGELOG.md", "CMakeLists.txt"])


if __name__ == "__main__":
    unittest.main()
