"""The examples of README and the documents run as they stand, in order, and none clips.

Each document has an empty folder of its own with the project's music in it. A line that begins with
four spaces and "$ " is a command, in README one that begins with "zelvatone" or "cp music"."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"])
PROGRAMS = os.environ["ZELVATONE_PROGRAMS"]  # the folder with zelvatone and zelvatone.so

# What waits for a person. The tour, which takes longest, has tests of its own.
LEFT_OUT = ("zelvatone edit", "xdg-open", "zelvatone tour")


def commandsOf(document):
    """(command, the line below it) of every example."""
    lines = (ROOT / document).read_text(encoding="utf-8").splitlines() + [""]
    mark = r"    ((?:zelvatone|cp music/\S*) .*)" if document == "README.md" else r"    \$ (.*)"
    for line, below in zip(lines, lines[1:]):
        match = re.fullmatch(mark, line)
        if match and not match[1].startswith(LEFT_OUT):
            yield match[1], below.strip()


class Examples(unittest.TestCase):
    def runAll(self, document, least):
        commands = list(commandsOf(document))
        self.assertGreaterEqual(len(commands), least)
        environment = os.environ | {"PATH": PROGRAMS + ":" + os.environ["PATH"]}
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "music").symlink_to(ROOT / "music")
            for command, below in commands:
                with self.subTest(command):
                    result = subprocess.run(["bash", "-c", command], cwd=folder, env=environment,
                                            capture_output=True, text=True, check=False)
                    self.assertNotRegex(result.stdout, r"[0-9] clipped|nothing clips")
                    if below.startswith("zelvatone: "):
                        self.assertEqual(result.stderr, below + "\n")
                    else:
                        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def testOfTheReadmeRun(self):
        self.runAll("README.md", 12)

    def testOfTheHostsPageRun(self):
        self.runAll("docs/host.md", 12)

    def testOfTheDatasetsPageRun(self):
        self.runAll("docs/dataset.md", 5)

    def testOfThePresetsPageRun(self):
        self.runAll("docs/presets.md", 5)


if __name__ == "__main__":
    unittest.main()
