"""The guide for musicians: its tables name every knob, at positions that the plug-in knows and that do
not clip, and its page is made of them; and it has a line for each program."""

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(os.environ["ZELVATONE_ROOT"])
PROGRAM = str(Path(os.environ["ZELVATONE_PROGRAMS"], "zelvatone"))
sys.path.insert(0, str(ROOT / "tools"))
import guide  # noqa: E402

WITHOUT_KNOB = "Reserved"


def textOf():
    return (ROOT / "docs/guide.md").read_text(encoding="utf-8")


def namesFrom(command):
    result = subprocess.run([PROGRAM, command, "--json"], capture_output=True, text=True, check=True)
    return [entry["name"] for entry in json.loads(result.stdout)]


class GuidePage(unittest.TestCase):
    def testNamesEveryKnobOnce(self):
        knobs = [knob.name for knob in guide.knobsOf(textOf())[0]]
        parameters = [name for name in namesFrom("params") if name != WITHOUT_KNOB]
        self.assertEqual(sorted(knobs), sorted(parameters))

    def testPositionsAreTakenAndDoNotClip(self):
        with tempfile.TemporaryDirectory() as folder:
            for knob in guide.knobsOf(textOf())[0]:
                for position in knob.positions:
                    sets = [word for value in knob.settings(position) for word in ("--set", value)]
                    result = subprocess.run([PROGRAM, "render", ROOT / "music/knob.mid", "-o", folder + "/k.wav",
                                             *sets], capture_output=True, text=True, check=False)
                    with self.subTest(knob=knob.name, position=position):
                        self.assertEqual((result.returncode, result.stderr), (0, ""))
                        self.assertIn("no clipped samples", result.stdout)

    def testHasALineForEachProgram(self):
        lines = re.findall(r"^\| (\d+) \| ([^|]+) \| [^|]+ \|$", textOf(), re.MULTILINE)
        self.assertEqual([(int(number), name) for number, name in lines],
                         list(enumerate(namesFrom("programs"))))

    @unittest.skipUnless(shutil.which("Xvfb"), "no Xvfb")
    def testPageHasAPictureAndASoundOfEachPosition(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, "-B", ROOT / "tools/guide.py", "-o", folder, "--zelvatone", PROGRAM,
                            "Attack"], check=True, capture_output=True)
            page = Path(folder, "index.html").read_text(encoding="utf-8")
            for number, shown in enumerate(("0.01 s", "0.20 s", "1.00 s")):
                self.assertIn(f"<figcaption>Attack: {shown}</figcaption>", page)
                for ending, mark in ((".png", b"\x89PNG"), (".ogg", b"OggS")):
                    name = f"attack-{number}{ending}"
                    self.assertIn(f'src="{name}"', page)
                    self.assertEqual(Path(folder, name).read_bytes()[:4], mark)


if __name__ == "__main__":
    unittest.main()
