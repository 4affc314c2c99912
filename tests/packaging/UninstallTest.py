"""The target `uninstall` removes what was installed and nothing else."""

import os
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = os.environ["ZELVATONE_BUILD"]
MANIFEST = Path(BUILD, "install_manifest.txt")
CMAKE = os.environ["ZELVATONE_CMAKE"]


def namesBelow(folder):
    return sorted(path.relative_to(folder).as_posix() for path in Path(folder).rglob("*"))


class Uninstall(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.prefix = Path(self.folder.name, "usr/local")
        # The list of a real installation from this build is put back.
        if MANIFEST.exists():
            self.addCleanup(MANIFEST.write_text, MANIFEST.read_text(encoding="utf-8"))

    def runCMake(self, *command):
        result = subprocess.run([CMAKE, *command], check=False, capture_output=True, text=True)
        return result.returncode, result.stdout + result.stderr

    def install(self):
        status, output = self.runCMake("--install", BUILD, "--prefix", str(self.prefix))
        self.assertEqual(status, 0, output)

    def uninstall(self):
        return self.runCMake("-P", f"{BUILD}/packaging/Uninstall.cmake")

    def testLeavesNoFileAndNoFolderOfOurs(self):
        self.install()
        self.assertTrue(Path(self.prefix, "bin/zelvatone").is_file())
        self.assertTrue(Path(self.prefix, "lib/lv2/zelvatone.lv2/manifest.ttl").is_file())
        status, output = self.uninstall()
        self.assertEqual(status, 0, output)
        left = namesBelow(self.prefix)
        self.assertEqual([name for name in left if Path(self.prefix, name).is_file()], [])
        self.assertLessEqual(set(left), {"bin", "lib", "share", "share/applications", "share/icons",
                                         "share/man", "share/man/man1"})

    def testKeepsTheFilesOfOthers(self):
        others = [self.prefix / "lib/vst/other.so", self.prefix / "share/metainfo/other.xml"]
        for file in others:
            file.parent.mkdir(parents=True)
            file.touch()
        self.install()
        self.uninstall()
        self.assertEqual([file for file in others if not file.exists()], [])

    def testSaysThatNothingIsInstalled(self):
        self.install()
        self.uninstall()
        status, output = self.uninstall()
        self.assertNotEqual(status, 0)
        self.assertIn("Nothing was installed from here", output)


if __name__ == "__main__":
    unittest.main()
