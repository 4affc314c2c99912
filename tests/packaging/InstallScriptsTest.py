"""The archive's scripts copy its files to where hosts look, and take all of them away again."""

import os
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SCRIPTS = Path(os.environ["ZELVATONE_ROOT"], "packaging/tarball")
FILES = ["bin/zelvatone", "clap/zelvatone.clap", "lv2/zelvatone.lv2/manifest.ttl",
         "share/man/man1/zelvatone.1", "vst/zelvatone.so"]
IN_HOME = [".clap/zelvatone.clap", ".local/bin/zelvatone", ".local/share/man/man1/zelvatone.1",
           ".local/share/zelvatone/folders.sh", ".local/share/zelvatone/installed.txt",
           ".local/share/zelvatone/uninstall.sh", ".lv2/zelvatone.lv2/manifest.ttl",
           ".vst/zelvatone.so"]


def filesBelow(folder):
    return sorted(path.relative_to(folder).as_posix()
                  for path in folder.rglob("*") if path.is_file())


class InstallScripts(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.archive, self.home = Path(folder.name, "an archive"), Path(folder.name, "a home")
        self.home.mkdir()
        for name in FILES:
            file = self.archive / name
            file.parent.mkdir(parents=True, exist_ok=True)
            file.write_text(name, encoding="utf-8")
        for script in SCRIPTS.glob("*.sh"):
            shutil.copy(script, self.archive)

    def runScript(self, script, *arguments):
        environment = {"HOME": str(self.home), "PATH": os.environ["PATH"]}
        result = subprocess.run(["sh", script, *arguments], env=environment, check=False,
                                capture_output=True, text=True)
        return result.returncode, result.stdout + result.stderr

    def install(self, *arguments):
        status, output = self.runScript(self.archive / "install.sh", *arguments)
        self.assertEqual(status, 0, output)
        return output

    def testPutTheFilesWhereAUsersHostsLook(self):
        self.install()
        self.assertEqual(filesBelow(self.home), IN_HOME)
        self.assertEqual((self.home / ".vst/zelvatone.so").read_text(encoding="utf-8"),
                         "vst/zelvatone.so")

    def testLeaveNothingBehind(self):
        self.install()
        status, output = self.runScript(self.home / ".local/share/zelvatone/uninstall.sh")
        self.assertEqual(status, 0, output)
        self.assertEqual(list(self.home.iterdir()), [])

    def testKeepTheFilesAndEmptyFoldersOfOthers(self):
        other, empty = self.home / ".vst/other.so", self.home / ".lv2"
        other.parent.mkdir()
        other.touch()
        empty.mkdir()
        self.install()
        self.runScript(self.archive / "uninstall.sh")
        self.assertEqual(sorted(self.home.rglob("*")), [empty, other.parent, other])

    def testASecondInstallationRemovesWhatTheFirstAloneHad(self):
        self.install()
        (self.archive / "share/man/man1/zelvatone.1").rename(
            self.archive / "share/man/man1/zelvatone.1.gz")
        self.install()
        self.assertEqual(filesBelow(self.home),
                         [name + ".gz" if name.endswith(".1") else name for name in IN_HOME])
        self.runScript(self.archive / "uninstall.sh")
        self.assertEqual(list(self.home.iterdir()), [])

    def testServeAllUsersOfASystem(self):
        prefix = self.home / "opt"
        output = self.install("--system", str(prefix))
        self.assertIn("lib/clap/zelvatone.clap", filesBelow(prefix))
        self.assertIn(f"CLAP_PATH={prefix}/lib/clap", output)
        self.runScript(self.archive / "uninstall.sh", "--system", str(prefix))
        self.assertEqual(list(self.home.iterdir()), [])

    def testRefuseOtherArguments(self):
        for arguments in (["--sytem"], ["--system", "opt"]):
            status, output = self.runScript(self.archive / "install.sh", *arguments)
            self.assertEqual(status, 2, output)
        self.assertEqual(list(self.home.iterdir()), [])

    def testSayThatNothingIsInstalled(self):
        status, output = self.runScript(self.archive / "uninstall.sh")
        self.assertEqual(status, 1)
        self.assertIn("Zelvatone is not installed there", output)


if __name__ == "__main__":
    unittest.main()
