"""The examples of README, the documents, the man page and the help texts run as they stand, in order, and
none clips.

Each document has an empty folder of its own with the project's music in it. A line that begins with
four spaces and "$ " is a command, in README one that begins with "zelvatone" or "cp music". The help
texts share a folder, and the man page has one, each with a song."""

import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"])
PROGRAMS = os.environ["ZELVATONE_PROGRAMS"]  # the folder with zelvatone and zelvatone.so

# What waits for a person, or needs another plug-in. The tour, which takes longest, has tests of its own.
LEFT_OUT = ("zelvatone edit", "zelvatone play", "xdg-open", "zelvatone tour")
OTHER_PLUGIN = "--plugin /usr"
LARGE = "zelvatone dataset"  # thousands of sounds in the manual; its own page has small ones
# Those whose examples need neither a keyboard nor hours.
COMMANDS = ("", "render", "song", "screenshot", "programs", "params", "preset", "preset save", "preset load",
            "info")


def commandsOf(document):
    """(command, the line below it) of every example."""
    lines = (ROOT / document).read_text(encoding="utf-8").splitlines() + [""]
    mark = r"    ((?:zelvatone|cp music/\S*) .*)" if document == "README.md" else r"    \$ (.*)"
    for line, below in zip(lines, lines[1:]):
        match = re.fullmatch(mark, line)
        if match and not match[1].startswith(LEFT_OUT):
            yield match[1], below.strip()


def withoutLeftOut(commands):
    """What stays to be run, without a line below it."""
    return [(command, "") for command in commands
            if not command.startswith((*LEFT_OUT, LARGE)) and OTHER_PLUGIN not in command]


def commandsOfHelp(command):
    result = subprocess.run([PROGRAMS + "/zelvatone", *command.split(), "--help"],
                            capture_output=True, text=True, check=True)
    examples = result.stdout.partition("\nExamples:\n")[2]
    return withoutLeftOut(re.findall(r"^  (zelvatone .*)$", examples, re.MULTILINE))


def commandsOfManual():
    manual = (ROOT / "cli/man/zelvatone.1").read_text(encoding="utf-8")
    return withoutLeftOut(re.findall(r"^\.Dl (zelvatone .*)$", manual, re.MULTILINE))


class Examples(unittest.TestCase):
    def runAll(self, commands, least):
        self.assertGreaterEqual(len(commands), least)
        environment = os.environ | {"PATH": PROGRAMS + ":" + os.environ["PATH"]}
        with tempfile.TemporaryDirectory() as folder:
            Path(folder, "music").symlink_to(ROOT / "music")
            if not any(command.startswith("cp music/") for command, _ in commands):
                Path(folder, "song.mid").write_bytes((ROOT / "music/invention-1.mid").read_bytes())
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
        self.runAll(list(commandsOf("README.md")), 12)

    def testOfTheHostsPageRun(self):
        self.runAll(list(commandsOf("docs/host.md")), 12)

    def testOfTheDatasetsPageRun(self):
        self.runAll(list(commandsOf("docs/dataset.md")), 5)

    def testOfThePageOfManyMachinesRun(self):
        self.runAll(list(commandsOf("docs/many-machines.md")), 2)

    def testOfThePresetsPageRun(self):
        self.runAll(list(commandsOf("docs/presets.md")), 5)

    def testOfTheHelpTextsRun(self):
        self.runAll([example for command in COMMANDS for example in commandsOfHelp(command)], 20)

    def testOfTheManualRun(self):
        self.runAll(commandsOfManual(), 5)


if __name__ == "__main__":
    unittest.main()
