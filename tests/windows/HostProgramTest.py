"""zelvatone.exe does what the Linux host does."""

import json
import os
import struct
import subprocess
import tempfile
import time
import unittest
from pathlib import Path

LINUX = [os.environ["ZELVATONE_LINUX_HOST"]]
WINDOWS = ["wine", os.environ["ZELVATONE_EXE"]]
SONG = os.environ["ZELVATONE_SONG"]


def run(command, *arguments):
    return subprocess.run([*command, *arguments], capture_output=True, encoding="utf-8")


def chunksOf(path):
    """The chunks of a WAV file by name."""
    data = Path(path).read_bytes()
    assert data[:4] == b"RIFF" and data[8:12] == b"WAVE", data[:12]
    assert struct.unpack("<I", data[4:8])[0] == len(data) - 8
    chunks, at = {}, 12
    while at < len(data):
        name, size = struct.unpack("<4sI", data[at : at + 8])
        chunks[name] = data[at + 8 : at + 8 + size]
        at += 8 + size + size % 2
    return chunks


class HostProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def assertRefusedInOneLine(self, result, status, line):
        self.assertEqual((result.returncode, result.stdout), (status, ""))
        self.assertEqual(result.stderr.replace("\r", ""), f"zelvatone: {line}\n")
        self.assertEqual(list(self.folder.iterdir()), [])

    def testTellsTheSameOfTheInstrument(self):
        told = [json.loads(run(c, "info", "--json").stdout) for c in (LINUX, WINDOWS)]
        self.assertTrue(told[1].pop("path").endswith("zelvatone.dll"))
        told[0].pop("path")
        self.assertEqual(told[0], told[1])

    def testListsTheSameProgramsAndParameters(self):
        for command in (["programs"], ["params", "--json", "--program", "Organ"]):
            with self.subTest(command):
                linux, windows = run(LINUX, *command), run(WINDOWS, *command)
                self.assertEqual(windows.returncode, 0)
                self.assertEqual(linux.stdout, windows.stdout)

    def testRendersTheSameSoundInEachFormat(self):
        for kind in ("16", "24", "float"):
            with self.subTest(kind):
                files = [str(self.folder / f"{side}-{kind}.wav") for side in ("linux", "windows")]
                for command, file in zip((LINUX, WINDOWS), files):
                    result = run(command, "render", SONG, "-o", file, "--format", kind, "--quiet")
                    self.assertEqual(result.returncode, 0, result.stderr)
                linux, windows = map(chunksOf, files)
                for chunk in (b"fmt ", b"data"):
                    self.assertTrue(linux[chunk] == windows[chunk], chunk)

    def testTakesNamesOfFilesInAnyScript(self):
        song, sound = self.folder / "sóng 歌.mid", self.folder / "zvuk ž.wav"
        song.write_bytes(Path(SONG).read_bytes())
        result = run(WINDOWS, "render", str(song), "-o", str(sound))
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("zvuk ž.wav: ", result.stdout)
        self.assertTrue(sound.exists())

    def testWritesTheSamePreset(self):
        files = [self.folder / f"{side}.fxp" for side in ("linux", "windows")]
        options = ["--program", "Organ", "--set", "Attack=0.8", "--name", "Slow Organ"]
        for command, file in zip((LINUX, WINDOWS), files):
            result = run(command, "preset", "save", str(file), *options)
            self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(files[0].read_bytes(), files[1].read_bytes())

    def testReplacesAnEarlierFile(self):
        sound = self.folder / "song.wav"
        sound.write_text("earlier")
        result = run(WINDOWS, "render", SONG, "-o", str(sound), "--quiet")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(b"data", chunksOf(sound))
        self.assertEqual(list(self.folder.iterdir()), [sound])

    def testRefusesFlacAndOggInOneLine(self):
        for name in ("song.flac", "song.ogg"):
            path = str(self.folder / name)
            self.assertRefusedInOneLine(
                run(WINDOWS, "render", SONG, "-o", path),
                2,
                f"cannot write {path}: on Windows sound files are .wav files",
            )

    def testRefusesAMissingSongInOneLine(self):
        result = run(WINDOWS, "render", "nowhere.mid", "-o", str(self.folder / "song.wav"))
        self.assertRefusedInOneLine(result, 1, "nowhere.mid: no such file")

    def testRefusesWhatIsNotAPluginInOneLine(self):
        result = run(WINDOWS, "info", "--plugin", SONG)
        self.assertRefusedInOneLine(
            result, 1, f"{SONG} is not a plug-in: it is not a library for 64-bit Windows"
        )

    def testRefusesTheTourInOneLine(self):
        result = run(WINDOWS, "tour", "-o", str(self.folder / "tour"))
        self.assertRefusedInOneLine(
            result, 2, "this build has no 'tour': make the page with the Linux host"
        )

    def testSavesWhatWasEditedWhenTheUserClosesTheWindow(self):
        saved = self.folder / "mine.fxp"
        command = [*WINDOWS, "edit", "--program", "Organ", "--save", str(saved)]
        with subprocess.Popen(command, stdout=subprocess.PIPE, encoding="utf-8") as editor:
            # Without force, the program's windows are asked to close, as by their button.
            for _ in range(200):
                time.sleep(0.1)
                run(["wine"], "taskkill", "/IM", "zelvatone.exe")
                if editor.poll() is not None:
                    break
            self.assertEqual(editor.poll(), 0)
        self.assertEqual(saved.read_bytes()[:4], b"CcnK")


if __name__ == "__main__":
    unittest.main()
