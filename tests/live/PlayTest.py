"""`zelvatone play` on a sound server without a sound card, as a user starts it."""

import ctypes
import os
import pty
import random
import re
import select
import shlex
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parent))
from JackTape import JackTape

PROGRAM = Path(os.environ["ZELVATONE_PROGRAMS"]) / "zelvatone"
SERVER = f"zelvatone-play-{os.getpid()}"
TOOLS = ["jackd", "jack_lsp", "jack_midiseq"]
RATE = 48000  # Hz
PATIENCE = 20  # seconds, for a busy machine


def waitUntil(isReached):
    end = time.monotonic() + PATIENCE
    while not isReached():
        if time.monotonic() > end:
            raise TimeoutError
        time.sleep(0.05)


class Session(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.environment = os.environ | {
            "JACK_DEFAULT_SERVER": SERVER, "JACK_NO_START_SERVER": "1", "LC_ALL": "C.UTF-8",
            "TERM": "xterm", "XDG_RUNTIME_DIR": str(self.folder),
            "ALSA_CONFIG_PATH": os.devnull}  # a machine without a card

    def start(self, *command, **streams):
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL,
                   "stderr": subprocess.DEVNULL} | streams
        process = subprocess.Popen(command, env=self.environment, text=True, cwd=self.folder,
                                   **streams)

        def end():
            # A JACK server that is killed keeps its place among the eight that a machine may have.
            process.terminate()
            try:
                process.communicate(timeout=PATIENCE)
            except subprocess.TimeoutExpired:
                process.kill()
                process.communicate()

        self.addCleanup(end)
        return process

    def play(self, *options):
        return self.start(PROGRAM, "play", *options, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE)

    def end(self, process, by=signal.SIGINT):
        """Its output and its notices."""
        process.send_signal(by)
        output, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 0, errors)
        return output, errors

    def renderAgain(self, output):
        """Runs the command that a recording's end has printed."""
        command = shlex.split(output.splitlines()[1])
        subprocess.run([PROGRAM, *command[1:], "-q"], env=self.environment, cwd=self.folder,
                       check=True)
        take = (self.folder / "take.wav").read_bytes()
        self.assertTrue(any(take[100:]))
        self.assertEqual(take, (self.folder / "take.again.wav").read_bytes())


class WithoutServer(Session):
    def testSaysWhatToDo(self):
        process = self.play()
        _, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 1)
        self.assertEqual(errors, "zelvatone: there is no sound system to play on: start PipeWire or "
                                 "jackd, or plug in a sound card\n")

    def testChecksItsOptionsFirst(self):
        for options, line in [
            (["--record", "take.flac"], "a recording is a WAV file: end 'take.flac' in .wav"),
            (["--keys", "dvorak"], "--keys takes qwerty, qwertz or azerty, not 'dvorak'"),
            (["--buffer", "5"], "--buffer takes a whole number from 16 to 8192, not '5'"),
        ]:
            process = self.play(*options)
            _, errors = process.communicate(timeout=PATIENCE)
            self.assertEqual((process.returncode, errors), (2, f"zelvatone: {line}\n"))


    def testNeverRecordsOverTheSong(self):
        song = self.folder / "tune.mid"
        song.write_bytes(b"MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\4\0\xff\x2f\0")
        process = self.play(str(song), "--record", str(self.folder / "tune.wav"))
        _, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual((process.returncode, errors),
                         (1, f"zelvatone: cannot write {song}: it is the same file as {song}, "
                             "which is read\n"))


@unittest.skipUnless(all(map(shutil.which, TOOLS)), "no jackd2")
class JackSession(Session):
    def setUp(self):
        super().setUp()
        self.startServer()

    def startServer(self):
        self.server = self.start("jackd", "-r", "--no-mlock", "-t", "10000", "-n", SERVER, "-d", "dummy",
                                 "-r", str(RATE), "-p", "256")
        try:
            waitUntil(lambda: self.connections() is not None)
        except TimeoutError:
            self.skipTest("jackd does not start here")

    def connections(self):
        """Returns the names of the connected ports by port, or None if the server does not reply."""
        result = subprocess.run(["jack_lsp", "-c"], env=self.environment, capture_output=True,
                                text=True)
        if result.returncode != 0:
            return None
        ports = {}
        for line in result.stdout.splitlines():
            if line.startswith(" "):
                ports[name].add(line.strip())
            else:
                name = line
                ports[name] = set()
        return ports

    def waitForLink(self, source, target):
        waitUntil(lambda: target in (self.connections() or {}).get(source, ()))

    def tape(self):
        """Connected to the program's keys."""
        try:
            tape = JackTape(SERVER)
        except OSError as error:
            self.skipTest(str(error))
        self.addCleanup(tape.close)
        self.waitForLink("tape:keys", "zelvatone:keys")
        return tape

    @staticmethod
    def playUntil(tape, message, isReached):
        """Again and again: on a busy machine the server may leave a client, and what is sent to
        it, out of a cycle."""
        def playOnce():
            tape.play(message)
            time.sleep(0.1)
            return isReached()

        waitUntil(playOnce)

    def playFast(self, tape, seconds):
        """Random notes, pedals and bends, as fast as the machine can."""
        chance = random.Random(17)
        start = tape.frame + RATE
        for _ in range(8 * seconds):
            note = chance.randrange(36, 90)
            at = start + chance.randrange(RATE * seconds)
            tape.messages += [(at, bytes([0x90, note, chance.randrange(1, 128)])),
                              (at + chance.randrange(RATE), bytes([0x80, note, 0])),
                              (at + 7, bytes([0xE0, chance.randrange(128), 64])),
                              (at + 9, bytes([0xB0, 64, chance.randrange(128)]))]
        tape.messages.sort(key=lambda message: message[0])
        tape.setFreewheel(True)
        end = time.monotonic() + PATIENCE + 2 * seconds
        while tape.played < len(tape.messages) and time.monotonic() < end:
            time.sleep(0.05)
        tape.setFreewheel(False)
        self.assertEqual(tape.played, len(tape.messages))

    def strikeKeys(self, name="keyboard"):
        """A keyboard that plays two notes twice a second."""
        self.start("jack_midiseq", name, str(RATE // 2), "0", "60", "12000", "8000", "64", "9000")


class OnJack(JackSession):
    def testConnectsSpeakersAndKeyboardsThatComeLater(self):
        process = self.play()
        self.waitForLink("zelvatone:left", "system:playback_1")
        self.waitForLink("zelvatone:right", "system:playback_2")
        self.strikeKeys()
        self.waitForLink("keyboard:out", "zelvatone:keys")
        output, _ = self.end(process)
        self.assertEqual(output, "")

    def testConnectsWhatWasChosen(self):
        self.strikeKeys("first")
        self.strikeKeys("second")
        process = self.play("--output", "none", "--input", "SEC")
        self.waitForLink("second:out", "zelvatone:keys")
        # A busy server does not reply every time.
        waitUntil(lambda: (links := self.connections()) and links["zelvatone:left"] == set() and
                  links["zelvatone:keys"] == {"second:out"})
        self.end(process, by=signal.SIGTERM)

    def testRecordingRendersToTheSameBytes(self):
        self.strikeKeys()
        process = self.play("--program", "Organ", "--record", "take.wav")
        self.waitForLink("keyboard:out", "zelvatone:keys")
        time.sleep(1.5)
        output, _ = self.end(process)
        self.renderAgain(output)

    # Freewheeling, no block is late: what is heard is what is recorded and what is rendered.
    def testSoundThatIsHeardIsThatOfARendering(self):
        process = self.play("--record", "take.wav")
        self.waitForLink("zelvatone:left", "system:playback_1")
        tape = self.tape()
        for side in ["left", "right"]:
            tape.connect(f"zelvatone:{side}", f"tape:{side}")
            self.waitForLink(f"zelvatone:{side}", f"tape:{side}")
        tape.isRolling = True
        self.playFast(tape, 5)
        tape.isRolling = False
        output, _ = self.end(process)
        self.renderAgain(output)
        heard = tape.sound()
        self.assertGreater(len(heard), 5 * RATE * 8)
        self.assertTrue(any(heard))
        self.assertIn(heard, (self.folder / "take.again.wav").read_bytes())

    @unittest.skipUnless(os.environ.get("ZELVATONE_LONG_TESTS"), "long")
    def testTenMinutesDoNotGrow(self):
        process = self.play()
        self.waitForLink("zelvatone:left", "system:playback_1")
        tape = self.tape()

        def memory():
            status = Path(f"/proc/{process.pid}/status").read_text()
            return int(re.search(r"VmRSS:\s+(\d+) kB", status)[1])

        self.playFast(tape, 60)
        before = memory()
        self.playFast(tape, 600)
        # In kB, a few pages: 4 bytes a message would be more.
        self.assertLess(memory() - before, 64)
        self.end(process)

    def testWaitsForAServerThatHasGone(self):
        process = self.play()
        self.waitForLink("zelvatone:left", "system:playback_1")
        self.server.terminate()
        self.server.wait(PATIENCE)
        time.sleep(0.5)
        self.startServer()
        self.waitForLink("zelvatone:left", "system:playback_1")
        _, errors = self.end(process)
        self.assertIn("the sound server has gone: waiting for it\n", errors)
        self.assertIn("the sound server is back\n", errors)

    def testTwoPlayAtOnce(self):
        first, second = self.play(), self.play()
        self.waitForLink("zelvatone:left", "system:playback_1")
        self.waitForLink("zelvatone-01:left", "system:playback_1")
        self.end(first)
        self.end(second)

    def testListsDevices(self):
        self.strikeKeys()
        waitUntil(lambda: "keyboard:out" in (self.connections() or {}))
        output, _ = self.play("--list").communicate(timeout=PATIENCE)
        self.assertIn("JACK output  system:playback_1\n", output)
        self.assertIn("JACK input   keyboard:out\n", output)


def hasAlsa():
    try:
        ctypes.CDLL("libasound.so.2")
    except OSError:
        return False
    return True


@unittest.skipUnless(hasAlsa(), "no ALSA")
class OnAlsa(Session):
    """No server runs, and the cards are files: of float samples, both channels interleaved."""

    SONG = Path(__file__).parents[2] / "music" / "a4.mid"

    def setUp(self):
        super().setUp()
        devices = self.folder / "asound.conf"
        devices.write_text("".join(
            f'pcm.{name} {{ type file slave.pcm null file "{self.folder}/{name}.raw" format raw '
            f'hint {{ show on description "{description}" }} }}\n'
            for name, description in [("default", "Speakers"), ("take", "Headphones")]) +
            "pcm.null { type null hint { show on description Nothing } }\n")
        self.environment["ALSA_CONFIG_PATH"] = str(devices)

    def heard(self, device="default"):
        sound = self.folder / f"{device}.raw"
        return sound.read_bytes() if sound.exists() else b""

    def testPlaysWhatItRecords(self):
        start = time.monotonic()
        process = self.play("--record", "take.wav", self.SONG)
        waitUntil(lambda: len(self.heard()) > RATE * 8)  # a second
        output, errors = self.end(process)
        seconds = time.monotonic() - start
        self.assertIn("no keyboards: ALSA has no sequencer here", errors)
        self.renderAgain(output)
        heard = self.heard()
        self.assertTrue(any(heard))
        self.assertIn(heard[:len(heard) // 8 * 8], (self.folder / "take.wav").read_bytes())
        # In time, though a file takes all at once.
        self.assertLess(len(heard) / 8 / RATE, 1.1 * seconds + 0.1)

    def testPlaysOnWhatWasChosen(self):
        process = self.play("--output", "HEADPH", "--rate", "44100", "--buffer", "64",
                            "--record", "take.wav")
        waitUntil(lambda: self.heard("take"))
        output, _ = self.end(process)
        self.assertIn("--rate 44100 --block 64", output)
        self.assertEqual(self.heard(), b"")

    def testConnectsNothing(self):
        process = self.play("--output", "none", "--record", "take.wav")
        self.assertIn("no keyboards", process.stderr.readline())  # it plays
        self.assertIn("take.wav: ", self.end(process)[0])
        self.assertEqual(self.heard() + self.heard("take"), b"")

    def testListsDevices(self):
        output, _ = self.play("--list").communicate(timeout=PATIENCE)
        self.assertEqual(output, "ALSA output  default\nALSA output  take\n")

    def testSaysWhatItDoesNotOpen(self):
        process = self.play("--output", "violin")
        _, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 1)
        self.assertRegex(errors, "^zelvatone: ALSA does not open the output 'violin': .*; --list "
                                 "shows outputs\n$")


class InATerminal(JackSession):
    def setUp(self):
        super().setUp()
        self.terminal, self.line = pty.openpty()
        self.addCleanup(os.close, self.terminal)
        self.addCleanup(os.close, self.line)
        self.before = termios.tcgetattr(self.line)
        self.seen = ""

    def play(self, *options):
        process = self.start(PROGRAM, "play", *options, stdin=self.line, stdout=subprocess.PIPE,
                             stderr=self.line, start_new_session=True)
        self.waitForLink("zelvatone:left", "system:playback_1")
        return process

    def read(self):
        while select.select([self.terminal], [], [], 0.05)[0]:
            self.seen += os.read(self.terminal, 65536).decode(errors="replace")
        return self.seen

    def type(self, text):
        os.write(self.terminal, text.encode())
        time.sleep(0.2)

    def isPutBack(self):
        self.read()
        return termios.tcgetattr(self.line) == self.before

    def testKeysPlayAndAreRecorded(self):
        process = self.play("--record", "take.wav", "--keys", "qwertz")
        waitUntil(lambda: "Default | 0 notes" in self.read())
        self.type("y")       # the place of Z: C, 48
        self.type("\x1b[C")  # an octave up
        self.type("\x1b[5~")  # harder
        self.type("q")       # C, 72
        self.type("\x1b[B")  # the next program
        self.type(" ")       # pedal
        self.type("z")        # A, 81, with the new program
        self.type("?")
        waitUntil(lambda: "sustain pedal" in self.read())
        output, _ = self.end(process)
        take = (self.folder / "take.mid").read_bytes()
        for message in [b"\x90\x30\x64", b"\x90\x48\x6e", b"\xc0\x01", b"\xb0\x40\x7f"]:
            self.assertIn(message, take)
        self.renderAgain(output)

    def testTabLearnsAController(self):
        process = self.play("--record", "take.wav")
        waitUntil(lambda: "Default" in self.read())
        tape = self.tape()
        self.type("\t")
        self.type("\x1b[B")
        waitUntil(lambda: len(re.findall("learning (.+?): ", self.read())) == 2)
        name = re.findall("learning (.+?): ", self.seen)[1]
        self.playUntil(tape, [0xB0, 20, 64], lambda: f"controller 20 moves {name}" in self.read())
        self.playUntil(tape, [0x90, 60, 100], lambda: "| 1 note" in self.read())
        for _ in range(10):
            tape.play([0xB0, 20, 127])
            time.sleep(0.05)
        output, _ = self.end(process)
        moves = (self.folder / "take.csv").read_text().splitlines()
        self.assertTrue([line for line in moves if line.endswith(f": {name}")], moves)
        self.assertEqual(float(moves[-1].split(",")[2]), 1.0)
        self.renderAgain(output)

    def testTerminalIsPutBackAfterAnyEnd(self):
        for end in [lambda process: self.type("\x1b[99;5u"),
                    lambda process: process.send_signal(signal.SIGINT),
                    lambda process: process.send_signal(signal.SIGTERM),
                    lambda process: process.send_signal(signal.SIGHUP),
                    lambda process: process.send_signal(signal.SIGSEGV),
                    lambda process: process.send_signal(signal.SIGKILL)]:
            process = self.play()
            waitUntil(lambda: "Default" in self.read())
            self.assertFalse(self.isPutBack())
            self.seen = ""
            end(process)
            process.wait(PATIENCE)
            waitUntil(self.isPutBack)
            self.assertIn("\x1b[<u", self.seen)


@unittest.skipUnless(shutil.which("Xvfb"), "no Xvfb")
class BesideTheEditor(JackSession):
    # Of the X server's requests.
    PRESS, RELEASE, MOVE = 4, 5, 6

    def setUp(self):
        super().setUp()
        reader, writer = os.pipe()
        self.addCleanup(os.close, reader)
        self.start("Xvfb", "-displayfd", str(writer), "-screen", "0", "1024x768x24",
                   "-nolisten", "tcp", "-fbdir", str(self.folder), pass_fds=[writer])
        os.close(writer)
        self.environment["DISPLAY"] = ":" + os.read(reader, 16).decode().strip()
        try:
            xcb = ctypes.CDLL("libxcb.so.1")
            self.pointer = ctypes.CDLL("libxcb-xtest.so.0")
        except OSError as error:
            self.skipTest(str(error))
        xcb.xcb_connect.restype = ctypes.c_void_p
        self.flush = xcb.xcb_flush
        self.display = ctypes.c_void_p(
            xcb.xcb_connect(self.environment["DISPLAY"].encode(), None))
        self.addCleanup(xcb.xcb_disconnect, self.display)

    def point(self, request, detail, x=0, y=0):
        self.pointer.xcb_test_fake_input(self.display, request, detail, 0, 0, x, y, 0)
        self.flush(self.display)
        time.sleep(0.15)

    def picture(self, left, top, width, height):
        """What is seen there. The server's file is one of X's window dumps: big-endian numbers,
        colours, then the lines."""
        screen = (self.folder / "Xvfb_screen0").read_bytes()
        header = struct.unpack(">25I", screen[:100])
        start, lineLength, colours = header[0], header[12], header[19]
        start += 12 * colours
        return [screen[start + y * lineLength + 4 * left:][:4 * width]
                for y in range(top, top + height)]

    def testAKnobThatAControllerMovesIsSeen(self):
        process = self.play("--editor", "--set", "Attack=0", "--cc", "74=Attack")
        self.waitForLink("zelvatone:left", "system:playback_1")
        tape = self.tape()
        knob = lambda: self.picture(295, 400, 50, 40)
        waitUntil(lambda: len(set(knob())) > 10)  # until it is drawn
        time.sleep(0.5)
        before = knob()
        self.playUntil(tape, [0xB0, 74, 127], lambda: knob() != before)
        self.playUntil(tape, [0xB0, 74, 0], lambda: knob() == before)
        self.end(process)

    # The knob called Attack, from its lower left, where it stands at 0, to its top, its middle.
    def testAKnobThatIsTurnedIsHeardAndRecorded(self):
        self.strikeKeys()
        process = self.play("--editor", "--set", "Attack=0", "--record", "take.wav")
        self.waitForLink("zelvatone:left", "system:playback_1")
        time.sleep(2)  # until it is drawn
        self.point(self.MOVE, 0, 310, 431)
        self.point(self.PRESS, 1)
        for x, y in [(302, 425), (302, 416), (308, 408), (320, 404)]:
            self.point(self.MOVE, 0, x, y)
        self.point(self.RELEASE, 1)
        time.sleep(1)
        output, _ = self.end(process)
        moves = (self.folder / "take.csv").read_text().splitlines()
        self.assertIn("# parameter 18: Attack", moves)
        self.assertAlmostEqual(float(moves[-1].split(",")[2]), 0.5, delta=0.02)
        self.renderAgain(output)

    def testSaysThatThereIsNoDisplay(self):
        self.environment["DISPLAY"] = ""
        process = self.play("--editor")
        _, errors = process.communicate(timeout=PATIENCE)
        self.assertEqual(process.returncode, 1)
        self.assertIn("there is no display to open the editor on", errors)


PIPEWIRE = ["dbus-run-session", "pipewire", "wireplumber", "pw-cli", "pw-jack", "pw-link"]


@unittest.skipUnless(all(map(shutil.which, PIPEWIRE)), "no PipeWire")
class OnPipeWire(Session):
    """Without a desktop: a bus, the server, and a sink that is none."""

    def setUp(self):
        super().setUp()
        self.folder.chmod(0o700)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent"
        # The part for Bluetooth ends the session manager where no systemd runs, as in a container.
        self.environment["XDG_CONFIG_HOME"] = str(self.folder)
        part = self.folder / "wireplumber" / "bluetooth.lua.d"
        part.mkdir(parents=True)
        (part / "80-none.lua").write_text("bluez_monitor.enabled = false\n")
        self.start("pipewire")
        waitUntil(lambda: (self.folder / "pipewire-0").exists())
        self.start("dbus-run-session", "wireplumber")
        subprocess.run(
            ["pw-cli", "create-node", "adapter",
             "{ factory.name=support.null-audio-sink node.name=speakers media.class=Audio/Sink "
             "object.linger=true audio.position=[FL FR] }"],
            env=self.environment, check=True, stdout=subprocess.DEVNULL)

    def links(self):
        return subprocess.run(["pw-link", "-l"], env=self.environment, capture_output=True,
                              text=True).stdout

    def testPlaysAndRecords(self):
        waitUntil(lambda: "speakers" in self.play("--list").communicate(timeout=PATIENCE)[0])
        process = self.play("--program", "Organ", "--record", "take.wav")
        waitUntil(lambda: "|-> speakers:playback_FL" in self.links())
        output, _ = self.end(process, by=signal.SIGTERM)
        self.assertIn("take.wav: ", output)
        self.assertTrue((self.folder / "take.mid").exists())

    def testTwoPlayAtOnce(self):
        waitUntil(lambda: "speakers" in self.play("--list").communicate(timeout=PATIENCE)[0])
        both = [self.play(), self.play()]
        waitUntil(lambda: self.links().count("|-> speakers:playback_FL") == 2)
        for process in both:
            self.end(process)


if __name__ == "__main__":
    unittest.main()
