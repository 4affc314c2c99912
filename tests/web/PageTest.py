"""The page of the instrument in a browser, as a user meets it: with a mouse, with the keyboard alone,
on a telephone, in light and dark.

ZELVATONE_SITE names a folder with the page and an engine, the true one or the stand-in of fake/;
ZELVATONE_PROGRAM the program `zelvatone`, whose sound that of the true one is compared with."""

import json
import math
import os
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from Browser import CHROMIUM, Tab, startBrowser

SITE = Path(os.environ["ZELVATONE_SITE"])
# Where to keep pictures of the page, for the eye.
PICTURES = os.environ.get("ZELVATONE_PICTURES")
SKIPPED = 77
# A knob may lie between two pixels: of a drag 20 pixels from its centre, as a part of its range.
HALF_A_PIXEL = math.hypot(0.5, 0.5) / 20 / (1.5 * math.pi)


def setUpModule():
    global browser, server
    browser, server = startBrowser(SITE)


class PageTest(unittest.TestCase):
    shared = None

    # As after opening, without loading everything again.
    FRESH = """(() => {
        page.panic();
        if (page.face.help.dialog.open) page.face.help.dialog.close();
        page.programs.showAll();
        page.synth.setTempo(120);
        page.takeAddress(HASH || "#program=0");
        page.history = new page.history.constructor(page.synth.state());
        page.writeAddress();
        page.show();
        document.activeElement.blur();
        scrollTo({ top: 0, behavior: "instant" });
    })()"""

    def tab(self, hash=""):
        """A page that other tests have had before."""
        if PageTest.shared is None:
            PageTest.shared = browser.open(f"{server.address}/index.html")
        tab = PageTest.shared
        tab.evaluate(self.FRESH.replace("HASH", json.dumps(hash)))
        self.addCleanup(self.lookAtConsole, tab)
        return tab

    def open(self, hash="", **window):
        """A page that has just been opened."""
        tab = browser.open(f"{server.address}/index.html{hash}", **window)
        self.addCleanup(tab.close)
        self.addCleanup(self.lookAtConsole, tab)
        return tab

    def lookAtConsole(self, tab):
        self.assertEqual(tab.errors(), [])

    def value(self, tab, name):
        return tab.evaluate(f"page.face.knobs.get({self.index(tab, name)}).value")

    def index(self, tab, name):
        return tab.evaluate(f"page.synth.parameters.find(p => p.name === {json.dumps(name)}).index")

    def knob(self, name):
        return f'[role=slider][aria-label="{name}"]'

    def set(self, tab, name, value):
        index = self.index(tab, name)
        tab.evaluate(f"(() => {{ page.synth.setParameter({index}, {value}); page.show(); page.keep(); }})()")

    def copiedCommand(self, tab):
        tab.evaluate("""navigator.clipboard.writeText = async text => { globalThis.copied = text; };
                        globalThis.copied = null""")
        tab.click("#command")
        return tab.until("globalThis.copied")

    def near(self, found, expected):
        self.assertAlmostEqual(found, expected, places=4)


class Face(PageTest):
    """Centre (320, 130) of the editor, where "Mode Shift" is; values by arithmetic on the angle."""

    def drag(self, tab, name, places, modifiers=0):
        """Drags through `places`, in pixels from the knob's centre; returns the value after each."""
        x, y = tab.middleOf(self.knob(name))
        scale = tab.evaluate(f"document.querySelector('{self.knob(name)}').offsetWidth / 48")
        values = []
        for number, (across, down) in enumerate(places):
            kind = "mouseMoved" if number else "mousePressed"
            tab.mouse(kind, x + across * scale, y + down * scale, modifiers)
            values.append(self.value(tab, name))
        tab.mouse("mouseReleased", x + across * scale, y + down * scale, modifiers)
        return values

    def testEveryKnobLiesWhereTheEditorHasIt(self):
        tab = self.tab()
        controls = json.loads((SITE / "face.json").read_text())["controls"]
        self.assertEqual(len(controls), 66)
        found = tab.evaluate("""(() => {
            const face = document.getElementById("face").getBoundingClientRect();
            return Object.fromEntries([...page.face.knobs].map(([index, knob]) => {
                const r = knob.element.getBoundingClientRect();
                return [index, [r.left - face.left, r.top - face.top, r.width, r.height]];
            }));
        })()""")
        for kind, index, *area in controls:
            if kind == "CKnob":
                for place, expected in zip(found[str(index)], area):
                    self.assertAlmostEqual(place, expected, delta=0.6)

    def testCircularDragFollowsTheAngleAndStaysAtItsEnd(self):
        tab = self.tab()
        self.set(tab, "Mode Shift", 0.5)
        values = self.drag(tab, "Mode Shift", [(0, -20), (-16, 16), (-20, 0), (-16, -16), (16, -16), (20, 0),
                                               (16, 16), (-16, 16)])
        # Three quarters of a circle, from lower left to lower right; through the gap it stays.
        for found, expected in zip(values[1:], [0, 1 / 6, 1 / 3, 2 / 3, 5 / 6, 1, 1]):
            self.assertAlmostEqual(found, expected, delta=HALF_A_PIXEL)

    def testPressAloneLeavesTheValue(self):
        tab = self.tab()
        self.set(tab, "Falloff", 0.25)
        tab.click(self.knob("Falloff"))
        self.near(self.value(tab, "Falloff"), 0.25)

    def testAltDragsStraightAndShiftFinely(self):
        tab = self.tab()
        self.set(tab, "Falloff", 0.5)
        values = self.drag(tab, "Falloff", [(0, 0), (0, -20), (10, -20)], Tab.ALT)
        self.near(values[1], 0.6)
        self.near(values[2], 0.65)
        self.set(tab, "Falloff", 0.5)
        self.near(self.drag(tab, "Falloff", [(0, 0), (0, -30)], Tab.ALT | Tab.SHIFT)[1], 0.6)

    def testWheelTurnsByTenthsAndControlClickSetsTheMiddle(self):
        tab = self.tab()
        self.set(tab, "Parity", 0.5)
        x, y = tab.middleOf(self.knob("Parity"))
        for delta, modifiers, expected in [(-100, 0, 0.6), (100, 0, 0.5), (-100, Tab.SHIFT, 0.51)]:
            before = self.value(tab, "Parity")
            tab.mouse("mouseWheel", x, y, modifiers, deltaX=0, deltaY=delta)
            tab.until(f"page.face.knobs.get({self.index(tab, 'Parity')}).value !== {before}")
            self.near(self.value(tab, "Parity"), expected)
        tab.click(self.knob("Parity"), Tab.CTRL)
        self.near(self.value(tab, "Parity"), 0.5)

    def testKeyboardTurnsAKnobAndTellsItsText(self):
        tab = self.tab()
        self.set(tab, "Sustain", 0.5)
        tab.evaluate(f"document.querySelector('{self.knob('Sustain')}').focus()")
        for key, expected in [("ArrowUp", 0.51), ("ArrowLeft", 0.5), ("PageUp", 0.6), ("PageDown", 0.5), ("End", 1),
                              ("Home", 0), ("Delete", 0.5)]:
            tab.key(key)
            self.near(self.value(tab, "Sustain"), expected)
        attributes = tab.evaluate(f"""(e => ["role", "aria-label", "aria-valuenow", "aria-valuetext"].map(
            name => e.getAttribute(name)))(document.querySelector('{self.knob("Sustain")}'))""")
        self.assertEqual(attributes, ["slider", "Sustain", "50", tab.evaluate(
            f"page.synth.display({self.index(tab, 'Sustain')}, 0.5).trim()")])
        # A whole number goes on by one, however wide the steps are.
        self.set(tab, "Mode Shift", 0.5)
        tab.evaluate(f"document.querySelector('{self.knob('Mode Shift')}').focus()")
        before = self.value(tab, "Mode Shift")
        tab.key("ArrowUp")
        text = tab.evaluate(f"page.synth.display({self.index(tab, 'Mode Shift')}, {self.value(tab, 'Mode Shift')})")
        self.assertGreater(self.value(tab, "Mode Shift"), before)
        self.assertNotEqual(text, tab.evaluate(f"page.synth.display({self.index(tab, 'Mode Shift')}, {before})"))

    def testUndoGoesBackAGestureAndRedoForwards(self):
        tab = self.tab("#program=12")
        index = self.index(tab, "Chop")
        before = self.value(tab, "Chop")
        self.drag(tab, "Chop", [(0, -20), (-20, -10), (-20, 0)])
        turned = self.value(tab, "Chop")
        self.assertAlmostEqual(turned, 1 / 6, delta=HALF_A_PIXEL)
        tab.key("z", "KeyZ", Tab.CTRL)
        self.assertEqual(self.value(tab, "Chop"), before)
        tab.click("#redo")
        self.near(tab.evaluate(f"page.synth.parameter({index})"), turned)
        tab.click("#undo")
        tab.click("#random")
        tab.click("#undo")
        self.assertEqual(self.value(tab, "Chop"), before)
        tab.until("location.hash === '#program=12'")

    def testHelpLeadsFromTheIndexToAPageAndBack(self):
        tab = self.tab()
        tab.click(".help")
        shown = "page.face.help.dialog.open && page.face.help.picture.src.split('/').pop()"
        self.assertEqual(tab.evaluate(shown), "helpoverlay.png")
        tab.click(".helping .area:nth-of-type(3)")
        self.assertEqual(tab.evaluate(shown), "help3.png")
        self.assertIn("octave", tab.evaluate("document.querySelector('.words .shown').textContent"))
        tab.key("Escape")
        self.assertEqual(tab.evaluate(shown), "helpoverlay.png")
        tab.key("Escape")
        tab.until("!page.face.help.dialog.open")
        self.assertTrue(tab.evaluate("document.activeElement.matches('.help')"))


class Programs(PageTest):
    def testLinksOfAllProgramsLeadBackToThem(self):
        tab = self.tab()
        count = tab.evaluate("page.synth.programs.length")
        self.assertEqual(count, 42)
        wrong = tab.evaluate("""(() => {
            const wrong = [];
            const values = () => page.synth.parameters.map((_, i) => page.synth.parameter(i)).join();
            const remember = () => [page.address(), values(), page.synth.programName];
            for (const { index } of page.synth.programs) {
                page.synth.setProgram(index);
                const plain = remember();
                page.synth.setParameter(index % 22, 0.3);
                const edited = remember();
                if (plain[0] !== `#program=${index}` || !/^#state=[\\w.~%-]+$/.test(edited[0])) wrong.push(edited[0]);
                for (const expected of [plain, edited]) {
                    page.synth.setProgram((index + 7) % 42);
                    page.takeAddress(expected[0]);
                    if (remember().join() !== expected.join()) wrong.push(expected[0]);
                }
            }
            return wrong;
        })()""")
        self.assertEqual(wrong, [])

    def testAddressOpensTheSoundThatItNames(self):
        tab = self.open("#program=30")
        self.assertEqual(tab.evaluate("page.synth.program"), 30)
        self.set(tab, "Chop", 0.5)
        tab.until("location.hash.startsWith('#state=')")
        other = self.open(tab.evaluate("location.hash"))
        self.assertEqual(other.evaluate("page.synth.program"), 30)
        self.near(self.value(other, "Chop"), 0.5)
        other.evaluate("location.hash = '#program=8&tempo=90'")
        other.until("page.synth.program === 8 && page.synth.tempo === 90")

    def testLinkThatHoldsNoSoundIsToldAndHarmless(self):
        tab = self.open("#state=nonsense")
        self.assertEqual(tab.evaluate("page.synth.program"), 0)
        self.assertIn("no sound", tab.evaluate("document.getElementById('said').textContent"))

    def testSearchAndCharactersLeaveFewer(self):
        tab = self.tab()
        shown = "page.programs.shown().length"
        tab.evaluate("document.getElementById('find').focus()")
        for letter in "organ":
            tab.key(letter, f"Key{letter.upper()}")
        self.assertEqual(tab.evaluate("page.programs.shown().map(i => page.synth.programs[i.dataset.index].name)"),
                         ["Organ", "Turbo Space Organ"])
        tab.key("ArrowDown")
        self.assertEqual(tab.evaluate("page.synth.programName"), "Organ")
        tab.key("ArrowDown")
        self.assertEqual(tab.evaluate("page.synth.programName"), "Turbo Space Organ")
        tab.evaluate("page.programs.showAll()")
        if tab.evaluate("page.programs.chips.length"):
            expected = int(tab.evaluate("page.programs.chips[0].querySelector('span').textContent"))
            tab.click("#chips button")
            self.assertEqual(tab.evaluate(shown), expected)

    def testCommandNamesWhatDiffersFromTheProgram(self):
        tab = self.tab("#program=12")
        self.set(tab, "Attack", 0.25)
        self.assertEqual(self.copiedCommand(tab), "zelvatone render song.mid -o 12-Evacuate-the-Synthesizer.wav "
                                                  "--program 'Evacuate the Synthesizer' --set Attack=0.25")

    def testFileKeepsTheSound(self):
        tab = self.tab("#program=7")
        self.set(tab, "Decay", 0.75)
        same = tab.evaluate("""(() => {
            const values = () => page.synth.parameters.map((_, i) => page.synth.parameter(i)).join();
            const before = values();
            const bytes = page.synth.save();
            page.choose(3);
            page.load("mine.fxp", bytes);
            const isSame = values() === before;
            page.load("bad.fxp", new Uint8Array([1, 2, 3]));
            return isSame && values() === before && document.getElementById("said").textContent;
        })()""")
        self.assertIn("bad.fxp was not opened", same)


class Sound(PageTest):
    # Keeps what leaves the worklet, as long as the test wants.
    CAPTURE = """(async () => {
        if (globalThis.heard) {
            heard.length = 0;
            return;
        }
        const text = `registerProcessor("ear", class extends AudioWorkletProcessor {
            process([input]) { if (input[0]) this.port.postMessage(input[0].slice()); return true; }
        })`;
        const address = URL.createObjectURL(new Blob([text], { type: "text/javascript" }));
        await page.context.audioWorklet.addModule(address);
        const ear = new AudioWorkletNode(page.context, "ear", { numberOfOutputs: 0 });
        globalThis.heard = [];
        ear.port.onmessage = ({ data }) => heard.push(...data);
        page.synth.node.connect(ear);
    })()"""

    def testClickStartsTheSound(self):
        tab = self.open()
        self.assertEqual(tab.evaluate("page.context.state"), "suspended")
        self.assertEqual(tab.evaluate("page.face.knobs.size"), 22)
        x, y = tab.middleOf(".keys button")
        tab.mouse("mousePressed", x, y + 30)
        tab.until("page.context.state === 'running' && page.status?.notes === 1 && page.status.peak > 0.001")
        self.assertTrue(tab.evaluate("page.scopes.isRunning"))
        self.assertGreater(float(tab.evaluate("document.getElementById('meter').style.getPropertyValue('--level')")), 0)
        tab.mouse("mouseReleased", x, y + 30)
        tab.click("#panic")
        tab.until("page.status.notes === 0 && page.status.peak < 1e-4")

    def testKeysOfTheComputerPlayByTheirPlace(self):
        tab = self.tab()
        notes = "[...page.keys.users.values()].sort()"
        tab.key("y", "KeyZ", isUp=False)  # what a German keyboard writes
        tab.key("ArrowLeft", "ArrowLeft")
        tab.key("q", "KeyQ", isUp=False)
        self.assertEqual(tab.evaluate(notes), [48, 60])
        self.assertEqual(tab.evaluate("document.querySelectorAll('.keys .down').length"), 2)
        tab.key("y", "KeyZ", isDown=False)
        self.assertEqual(tab.evaluate(notes), [60])
        tab.key("q", "KeyQ", isDown=False)
        tab.key("=", "Equal")
        self.assertEqual(tab.evaluate("document.getElementById('octave').value"), "C4")
        self.addCleanup(tab.click, "#lower")
        self.addCleanup(tab.click, "#hold")
        tab.click("#hold")
        tab.key("z", "KeyZ")
        self.assertEqual(tab.evaluate("[...page.keys.held]"), [60])
        tab.key("z", "KeyZ")
        self.assertEqual(tab.evaluate("[...page.keys.held]"), [])

    def testKeyGivesTheSamplesThatARenderingHas(self):
        tab = self.tab("#program=1")
        self.heardAsRendered(tab, "zelvatone render song.mid -o 01.wav --program 'Banana Bass'")

    def testCopiedCommandRendersTheEditedSound(self):
        tab = self.tab("#program=30")
        for name, value in (("Wave", 0.8), ("Mode Shift", 1 / 3), ("Attack", 0.01), ("Shift Interval", 0.4)):
            self.set(tab, name, value)
        command = self.copiedCommand(tab)
        self.assertEqual(command.count("--set"), 4, command)
        self.heardAsRendered(tab, command)

    def heardAsRendered(self, tab, command):
        """The first quarter of a second of a key is to the bit what `command` renders of that note."""
        if not (SITE / "engine.js").exists():
            self.skipTest("the engine for the browser is not built")
        tab.click("h1")
        tab.until("page.context.state === 'running'")
        tab.until("(page.status?.notes ?? 0) === 0")
        tab.evaluate(self.CAPTURE)
        tab.key("b", "KeyB", isUp=False)
        count = 12000
        tab.until(f"heard.findIndex(sample => sample !== 0) >= 0 && "
                  f"heard.length - heard.findIndex(sample => sample !== 0) > {count}")
        heard = tab.evaluate(f"(i => heard.slice(i, i + {count}))(heard.findIndex(sample => sample !== 0))")
        tab.key("b", "KeyB", isDown=False)
        rate = tab.evaluate("page.context.sampleRate")
        self.assertEqual(heard, rendered(command, note=55, velocity=100, rate=rate)[:count])

    def testSoundIsHeardAndEndsWithTheKey(self):
        tab = self.tab("#program=1")
        tab.click("h1")
        tab.until("page.context.state === 'running'")
        tab.until("(page.status?.notes ?? 0) === 0")
        tab.evaluate(self.CAPTURE)
        tab.key("z", "KeyZ", isUp=False)
        tab.until("heard.some(sample => Math.abs(sample) > 0.01)")
        tab.key("z", "KeyZ", isDown=False)
        tab.until("page.status.notes === 0")
        self.assertTrue(tab.evaluate("heard.every(Number.isFinite)"))


class Comparison(PageTest):
    def testAllProgramsAreTheSame(self):
        tab = self.tab()
        tab.click("#compare")
        tab.until("!document.getElementById('compare').disabled", limit=120)
        self.assertIn("42 of 42", tab.evaluate("document.getElementById('verdict').value"))
        self.assertEqual(tab.evaluate("document.querySelectorAll('#proofs .equal').length"), 42)


class Looks(PageTest):
    WINDOWS = [dict(width=width, height=height, isDark=isDark, density=density)
               for width, height, density in ((1280, 900, 1), (390, 844, 2)) for isDark in (False, True)]

    # Every text with its colour and the colours below it, the lowest first.
    TEXTS = """[...document.querySelectorAll("body *")].flatMap(element => {
        const own = [...element.childNodes].filter(n => n.nodeType === 3 && n.textContent.trim()).length;
        const style = getComputedStyle(element);
        const area = element.getBoundingClientRect();
        if (!own || style.visibility === "hidden" || area.width < 2 || element.closest(":disabled, .help, dialog"))
            return [];
        const grounds = [];
        for (let e = element; e; e = e.parentElement) {
            const ground = getComputedStyle(e);
            if (ground.backgroundImage.includes("url")) grounds.unshift("rgb(31, 38, 47)"); // the lightest of a panel
            else if (ground.backgroundImage.includes("gradient")) grounds.unshift("rgb(42, 47, 55)");
            else grounds.unshift(ground.backgroundColor);
        }
        return [[element.textContent.trim().slice(0, 30), style.color, grounds]];
    })"""

    # Every control's frame with what is around it.
    FRAMES = """[...document.querySelectorAll("button, input[type=search], input[type=number], .list, .meter, .file span")]
        .flatMap(element => {
            const style = getComputedStyle(element);
            if (element.closest(".keys, .face, :disabled") || parseFloat(style.borderTopWidth) === 0) return [];
            return element.checkVisibility() ? [[element.id || element.textContent, style.borderTopColor,
                [getComputedStyle(document.body).backgroundColor]]] : [];
        })"""

    def testPageFitsAndIsReadableInEveryWindow(self):
        for window in self.WINDOWS:
            with self.subTest(**window):
                tab = self.open("#program=7", **window)
                if PICTURES:
                    name = f"{window['width']}-{'dark' if window['isDark'] else 'light'}.png"
                    tab.picture(Path(PICTURES) / name)
                for isOpen in ("false", "true"):
                    tab.evaluate(f"document.getElementById('browser').open = {isOpen}")
                    self.assertLessEqual(tab.evaluate("document.documentElement.scrollWidth"), window["width"])
                texts = tab.evaluate(self.TEXTS)
                self.assertGreater(len(texts), 90)
                for text, ink, grounds in texts:
                    self.assertGreaterEqual(contrast(ink, grounds), 4.5, f"{text}: {ink} on {grounds}")
                for name, line, grounds in tab.evaluate(self.FRAMES):
                    self.assertGreaterEqual(contrast(line, grounds), 3, f"frame of {name}")

    def testTelephoneShowsAllKnobsAndPlaysByTouch(self):
        tab = self.open("#program=7", **self.WINDOWS[2])
        knobs = tab.evaluate("""[...page.face.knobs.values()].map(knob => {
            const r = knob.element.getBoundingClientRect();
            return [r.left, r.right, r.width];
        })""")
        self.assertEqual(len(knobs), 22)
        for left, right, width in knobs:
            self.assertGreaterEqual(left, 0)
            self.assertLessEqual(right, 390)
            self.assertGreaterEqual(width, 40)  # a finger's width
        x, y = tab.middleOf(".keys button")
        tab.send("Input.dispatchTouchEvent", type="touchStart", touchPoints=[{"x": x, "y": y + 20}])
        self.assertEqual(tab.evaluate("[...page.keys.users.values()]"), [48])
        tab.send("Input.dispatchTouchEvent", type="touchEnd", touchPoints=[])
        self.assertEqual(tab.evaluate("page.keys.users.size"), 0)
        tab.until("page.context.state === 'running'")

    def testHintNeverMovesTheKeysBelowIt(self):
        tab = self.tab()
        tops = tab.evaluate("""[...page.face.knobs.values()].map(knob => {
            page.face.explain(knob);
            return document.getElementById("keys").getBoundingClientRect().top;
        })""")
        self.assertEqual(len(set(tops)), 1)


class Access(PageTest):
    def testEveryControlHasARoleAndAName(self):
        tab = self.tab()
        nodes = tab.send("Accessibility.getFullAXTree")["nodes"]
        nameless = []
        for node in nodes:
            role = node.get("role", {}).get("value")
            if role in ("button", "slider", "link", "searchbox", "spinbutton", "option", "listbox", "meter", "image",
                        "checkbox", "textbox") and not node.get("ignored"):
                if not node.get("name", {}).get("value"):
                    nameless.append((role, node))
        self.assertEqual(nameless, [])
        roles = [node.get("role", {}).get("value") for node in nodes if not node.get("ignored")]
        self.assertEqual(roles.count("slider"), 23)  # 22 knobs and the volume
        self.assertEqual(roles.count("option"), 42)
        self.assertEqual(roles.count("main"), 1)
        self.assertEqual(tab.evaluate("document.documentElement.lang"), "en")
        self.assertEqual(tab.evaluate("document.querySelectorAll('h1').length"), 1)
        self.assertEqual(tab.evaluate("(ids => ids.length - new Set(ids).size)"
                                      "([...document.querySelectorAll('[id]')].map(e => e.id))"), 0)

    def testTabReachesEveryControlInTheOrderOfThePage(self):
        tab = self.open("#program=7")
        tab.evaluate("document.body.focus()")
        reached = []
        for _ in range(90):
            tab.key("Tab")
            here = tab.evaluate("""(e => e === document.body ? null : [e.getAttribute("aria-label") || e.textContent.trim() ||
                e.id, getComputedStyle(e).outlineStyle !== "none" || e.matches(".unseen, .skip")])(document.activeElement)""")
            if here is None:
                break
            reached.append(here)
        names = [name for name, _ in reached]
        self.assertEqual([name for name, isSeen in reached if not isSeen], [])
        places = [next(i for i, n in enumerate(names) if n.startswith(start)) for start in
                  ("Skip to", "find", "7 ", "Previous", "Random", "Chop", "Release", "Help", "Octave down",
                   "C 3", "tempo", "volume", "Copy link", "Compare all")]
        self.assertEqual(places, sorted(places))
        self.assertEqual(len([n for n in names if n in tab.evaluate("page.synth.parameters.map(p => p.name)")]), 22)

    def testOneKeyOfThePianoIsAStopAndTheArrowsGoOn(self):
        tab = self.tab()
        tab.evaluate("page.keys.current.focus()")
        for _ in range(4):
            tab.key("ArrowRight")
        self.assertEqual(tab.evaluate("document.activeElement.getAttribute('aria-label')"), "E 3")
        tab.key("Enter", isUp=False)
        self.assertEqual(tab.evaluate("[...page.keys.users.values()]"), [52])
        tab.key("Enter", isDown=False)
        self.assertEqual(tab.evaluate("page.keys.users.size"), 0)


class Files(PageTest):
    def testNothingIsFetchedFromElsewhere(self):
        tab = self.open()
        tab.click(".help")
        tab.until("page.face.help.picture.complete")
        foreign = [url for url in tab.requests() if not url.startswith((server.address, "data:", "blob:", "about:"))]
        self.assertEqual(foreign, [])

    def testFirstSoundTakesFewBytes(self):
        # Three seconds of a line of 1.6 Mbit/s, with the pictures that a fast line brings meanwhile.
        tab = self.open()
        tab.send("Network.setCacheDisabled", cacheDisabled=True)
        before = len(browser.events)
        tab.evaluate("globalThis.page = null")
        tab.send("Page.reload")
        tab.until("globalThis.page")
        tab.mouse("mousePressed", *tab.middleOf(".keys button"))
        tab.until("page.status?.peak > 0.001")
        self.assertGreater(tab.bytesReceived(before), 100_000)
        self.assertLess(tab.bytesReceived(before), 600_000)

    def testPageWithItsPicturesIsSmallerThanAMegabyte(self):
        sizes = [file.stat().st_size for file in SITE.rglob("*")
                 if file.is_file() and "tour" not in file.relative_to(SITE).parts and file.name != "fake.json"]
        self.assertLess(sum(sizes), 1_000_000)


def rendered(command, note, velocity, rate):
    """The left channel of one note as `command`, which renders song.mid, has it, from its first sample that is
    not 0."""
    # A second at 120 quarter notes a minute: the note, two quarters later its end.
    track = bytes([0, 0x90, note, velocity, 0x87, 0x40, 0x80, note, 0, 0, 0xFF, 0x2F, 0])
    song = b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480) + b"MTrk" + struct.pack(">I", len(track)) + track
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "song.mid").write_bytes(song)
        (Path(folder) / "zelvatone").symlink_to(Path(os.environ["ZELVATONE_PROGRAM"]).resolve())
        subprocess.run(["sh", "-c", f"PATH=.:$PATH; {command} --rate {rate} --format float --quiet"], cwd=folder,
                       check=True)
        [sound] = Path(folder).glob("*.wav")
        sound = sound.read_bytes()
    data = sound[sound.index(b"data") + 8:]
    samples = [left for left, _ in struct.iter_unpack("<ff", data[:len(data) // 8 * 8])]
    return samples[next(i for i, sample in enumerate(samples) if sample != 0):]


def channels(colour):
    numbers = [float(n) for n in colour[colour.index("(") + 1:-1].replace("/", ",").split(",")]
    return numbers[:3], (numbers[3] if len(numbers) > 3 else 1)


def over(grounds):
    result = [255, 255, 255]
    for ground in grounds:
        colour, alpha = channels(ground)
        result = [alpha * c + (1 - alpha) * r for c, r in zip(colour, result)]
    return result


def luminance(colour):
    linear = [c / 12.92 if c <= 0.04045 else math.pow((c + 0.055) / 1.055, 2.4) for c in (v / 255 for v in colour)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(ink, grounds):
    """As WCAG 2 defines it: 1 to 21."""
    lighter, darker = sorted((luminance(over([*grounds, ink])), luminance(over(grounds))), reverse=True)
    return (lighter + 0.05) / (darker + 0.05)


if __name__ == "__main__":
    if CHROMIUM is None:
        print("chromium is not installed")
        sys.exit(SKIPPED)
    unittest.main()
