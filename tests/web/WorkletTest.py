"""The engine in a browser's audio thread, against this machine's. Environment: ZELVATONE_WEB, the
folder of the module; ZELVATONE_NATIVE, that of the programs built for this machine."""

import gzip
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

import Browser

ROOT = Path(__file__).resolve().parents[2]
SCRIPTS = ("engine.js", "synth.js", "synth-worklet.js", "phrase-worker.js")
PAGE = """<!doctype html><title>engine</title><link rel="icon" href="data:,"><script type="module">
import * as synth from "./synth.js";
// What the audio thread makes of messages with times: no device and no clock has a part in it.
async function captured(seconds, play) {
    const context = new OfflineAudioContext(1, 48000 * seconds, 48000);
    const instrument = await synth.createSynth(context);
    instrument.node.connect(context.destination);
    play(instrument);
    await new Promise(done => setTimeout(done, 100)); // messages arrive
    const start = performance.now();
    const rendered = await context.startRendering();
    page.milliseconds = performance.now() - start; // for bench/web.py
    return rendered.getChannelData(0);
}
globalThis.page = { ...synth, captured };
</script>"""

PHRASE = """async program => {
    const samples = await page.captured(6, synth => {
        synth.setProgram(program);
        for (const { seconds, bytes } of synth.phrase) synth.midi(...bytes, seconds);
    });
    return page.hashOf(samples);
}"""

# 32 notes of 100 modes each, held.
CROWD = """async seconds => {
    let notes = 0;
    await page.captured(seconds, synth => {
        const set = (name, value) => synth.setParameter(synth.parameters.find(p => p.name === name).index, value);
        for (const name of ["Mode Init", "Min Modes", "Max Modes", "Sustain"]) set(name, 1);
        synth.onstatus = status => { notes = Math.max(notes, status.notes); };
        for (let i = 0; i < 32; ++i) synth.noteOn(30 + i, 100);
    });
    await new Promise(done => setTimeout(done, 100));
    return notes;
}"""


def nativeHashes():
    program = Path(os.environ["ZELVATONE_NATIVE"]) / "zelvatone_phrase_hashes"
    return json.loads(subprocess.run([program], check=True, capture_output=True).stdout)["hashes"]


def makeSite(folder):
    for script in SCRIPTS:
        shutil.copyfile(ROOT / "web/engine" / script, folder / script)
    module = (Path(os.environ["ZELVATONE_WEB"]) / "zelvatone.wasm").read_bytes()
    (folder / "zelvatone.wasm.gzip").write_bytes(gzip.compress(module))
    (folder / "index.html").write_text(PAGE)


class Worklet(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        makeSite(Path(cls.folder.name))
        cls.server = Browser.Server(cls.folder.name)
        cls.browser = Browser.Browser()
        cls.tab = cls.browser.open(cls.server.address)
        cls.hashes = nativeHashes()

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.server.close()
        cls.folder.cleanup()

    def testTheAudioThreadPlaysTheNativeSamples(self):
        for program in (0, 7, 26):
            with self.subTest(program):
                self.assertEqual(self.tab.evaluate(f"({PHRASE})({program})"), self.hashes[program])

    def testAWorkerRendersTheNativeSamples(self):
        for program in (0, 41):
            with self.subTest(program):
                self.assertEqual(self.tab.evaluate(f"page.hashPhrase({program})"), self.hashes[program])

    def testAllNotesOfAllModesSound(self):
        self.assertEqual(self.tab.evaluate(f"({CROWD})(1)"), 32)

    def testTheConsoleStaysEmpty(self):
        self.assertEqual(self.tab.errors(), [])


if __name__ == "__main__":
    if Browser.CHROMIUM is None:
        print("skipped: no chromium")
        sys.exit(77)
    unittest.main()
