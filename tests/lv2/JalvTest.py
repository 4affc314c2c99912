"""The LV2 bundle in jalv, a host for JACK, without a sound card: it plays, and presets come back."""

import os
import shutil
import subprocess
import tempfile
import time
import unittest
import wave
from pathlib import Path

PLUGIN = "https://quillfeather.example/zelvatone/lv2"
BUNDLES = os.environ["ZELVATONE_LV2_PATH"]
SERVER = f"zelvatone-test-{os.getpid()}"
TOOLS = ["jackd", "jack_lsp", "jack_connect", "jack_midiseq", "jack_rec", "jalv", "stdbuf"]
RATE = 48000  # Hz
PATIENCE = 20  # seconds, for a busy machine

# By symbol: the lowest and the highest of every parameter that knows whole numbers only.
WHOLE_NUMBERS = {"mode_shift": (-3, 3), "shift_interval": (-5, 5), "min_modes": (0, 100),
                 "max_modes": (0, 100), "wave": (0, 4), "crush": (0, 8), "mode_init": (0, 100)}
STEPS = 101


def valuesOf(step):
    """The whole numbers of preset `step`, as a host saves them."""
    return {symbol: float(min(low + step, high)) for symbol, (low, high) in WHOLE_NUMBERS.items()}


def stepUri(step):
    return f"urn:zelvatone:step:{step}"


def writeSteps(folder):
    """A bundle with a preset for every whole number."""
    folder.mkdir()
    manifest = ["@prefix lv2: <http://lv2plug.in/ns/lv2core#> .",
                "@prefix pset: <http://lv2plug.in/ns/ext/presets#> ."]
    for step in range(STEPS):
        ports = " , ".join(f'[ lv2:symbol "{symbol}" ; pset:value {value} ]'
                           for symbol, value in valuesOf(step).items())
        manifest.append(f"<{stepUri(step)}> a pset:Preset ; lv2:appliesTo <{PLUGIN}> ; "
                        f"lv2:port {ports} .")
    (folder / "manifest.ttl").write_text("\n".join(manifest))


def waitUntil(isReached):
    end = time.monotonic() + PATIENCE
    while not isReached():
        if time.monotonic() > end:
            raise TimeoutError
        time.sleep(0.05)


@unittest.skipUnless(all(map(shutil.which, TOOLS)), "no jalv or no jackd2")
class Jalv(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        writeSteps(self.folder / "steps.lv2")
        self.environment = os.environ | {
            "JACK_DEFAULT_SERVER": SERVER, "JACK_NO_START_SERVER": "1",
            "LV2_PATH": f"{BUNDLES}:{self.folder}:/usr/lib/lv2"}
        self.start("jackd", "-r", "--no-mlock", "-n", SERVER, "-d", "dummy",
                   "-r", str(RATE), "-p", "512")
        try:
            waitUntil(lambda: self.ports() is not None)
        except TimeoutError:
            self.skipTest("jackd does not start here")
        self.output = open(self.folder / "jalv.txt", "w+")
        self.addCleanup(self.output.close)
        self.jalv = self.start("stdbuf", "-oL", "jalv", "-n", "zelvatone", PLUGIN, stdin=subprocess.PIPE,
                               stdout=self.output)
        waitUntil(lambda: "zelvatone:left" in (self.ports() or []))

    def start(self, *command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL):
        process = subprocess.Popen(command, env=self.environment, stdin=stdin, stdout=stdout,
                                   stderr=subprocess.DEVNULL, text=True)

        def end():
            process.terminate()
            try:
                process.communicate(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                process.communicate()

        self.addCleanup(end)
        return process

    def ports(self):
        """Of all clients; None while there is no server."""
        result = subprocess.run(["jack_lsp"], env=self.environment, capture_output=True, text=True)
        return result.stdout.split() if result.returncode == 0 else None

    def connect(self, source, target):
        waitUntil(lambda: {source, target} <= set(self.ports()))
        subprocess.run(["jack_connect", source, target], env=self.environment, check=True)

    def tell(self, line):
        self.jalv.stdin.write(line + "\n")
        self.jalv.stdin.flush()

    def printed(self):
        return (self.folder / "jalv.txt").read_text()

    def testPlaysANote(self):
        self.tell(f"preset {PLUGIN}#preset-21")  # "Organ", which sounds at once
        self.start("jack_midiseq", "keys", str(RATE // 2), "0", "60", str(RATE // 4))
        self.connect("keys:out", "zelvatone:events")
        sound = self.folder / "sound.wav"
        subprocess.run(["jack_rec", "-f", str(sound), "-d", "1", "-b", "16", "zelvatone:left"],
                       env=self.environment, check=True, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        with wave.open(str(sound)) as file:
            samples = memoryview(file.readframes(file.getnframes())).cast("h")
        self.assertGreater(max(map(abs, samples)), 100)

    def testPresetsBringBackEveryWholeNumber(self):
        for step in range(STEPS):
            self.tell(f"preset {stepUri(step)}")
            self.tell("controls")
        last = self.lines(STEPS - 1)
        waitUntil(lambda: last <= set(self.printed().splitlines()[-40:]))
        # One after the other; jalv may print the same values several times.
        blocks = iter(self.printed().split("release = "))
        for step in range(STEPS):
            self.assertTrue(any(self.lines(step) <= set(block.splitlines()) for block in blocks),
                            f"step {step}")

    @staticmethod
    def lines(step):
        return {f"{symbol} = {value:.6f}" for symbol, value in valuesOf(step).items()}


if __name__ == "__main__":
    unittest.main()
