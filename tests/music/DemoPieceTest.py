"""The demo piece and the script that makes its MIDI file."""

import subprocess
import sys
import tempfile
import unittest
from fractions import Fraction
from pathlib import Path

import mido

MUSIC = Path(__file__).resolve().parents[2] / "music"
sys.path.insert(0, str(MUSIC))

from notation import ScoreError, read_score  # noqa: E402

HEADER = "meter 4/4\nhand RH 1 0\ntempo 1:1 60\nvelocity 1:1 80\n"
SUBJECT_STEPS = [2, 2, 1, -3, 2, -4]


def make_midi(*arguments):
    return subprocess.run([sys.executable, "-B", MUSIC / "make_midi.py", *arguments],
                          capture_output=True, text=True, check=False)


def pitches_from(hand, bar, sixteenth, count):
    """The pitches of a hand from a sixteenth of a bar on, both counted from 1."""
    start = bar - 1 + Fraction(sixteenth - 1, 16)
    return [note.pitch for note in hand.notes if note.start >= start][:count]


class Notation(unittest.TestCase):
    def test_a_short_bar_is_refused_by_bar_and_hand(self):
        with self.assertRaisesRegex(ScoreError, r"^line 8: bar 2, RH: holds 3/4 of a whole"):
            read_score(HEADER + "bar 1\nRH r/1\nbar 2\nRH C4/4 D4 E4\n")

    def test_a_long_bar_is_refused_by_bar_and_hand(self):
        with self.assertRaisesRegex(ScoreError, r"^line 6: bar 1, RH: holds 9/8 of a whole"):
            read_score(HEADER + "bar 1\nRH C4/1 D4/8\n")

    def test_a_forgotten_hand_is_refused(self):
        with self.assertRaisesRegex(ScoreError, "bar 1, LH: missing"):
            read_score("hand LH 2 0\n" + HEADER + "bar 1\nRH C4/1\n")

    def test_a_tie_must_lead_to_the_same_note(self):
        with self.assertRaisesRegex(ScoreError, "bar 1, RH: a tie must lead to the same notes"):
            read_score(HEADER + "bar 1\nRH C4/2~ D4\n")

    def test_a_tie_over_the_bar_line_makes_one_note(self):
        score = read_score(HEADER + "bar 1\nRH r/2. C4/4~\nbar 2\nRH C4/8. r/16 r/2.\n")
        notes = score.hands["RH"].notes
        self.assertEqual([(note.start, note.length) for note in notes],
                         [(Fraction(3, 4), Fraction(7, 16))])

    def test_octaves_begin_at_c_and_middle_c_is_60(self):
        notes = read_score(HEADER + "bar 1\nRH C4/4 B3 F#3 Bb4\n").hands["RH"].notes
        self.assertEqual([note.pitch for note in notes], [60, 59, 54, 70])


class Script(unittest.TestCase):
    def test_the_midi_files_in_the_tree_are_what_the_scores_make(self):
        result = make_midi("--check")
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_check_finds_a_single_changed_byte(self):
        with tempfile.TemporaryDirectory() as folder:
            score = Path(folder, "tone.score")
            score.write_bytes((MUSIC / "a4.score").read_bytes())
            content = bytearray((MUSIC / "a4.mid").read_bytes())
            content[-6] ^= 1
            Path(folder, "tone.mid").write_bytes(content)
            result = make_midi("--check", score)
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, r"^make_midi.py: .*tone\.mid: differs .*\n$")

    def test_a_bad_score_leaves_no_file_behind(self):
        with tempfile.TemporaryDirectory() as folder:
            score = Path(folder, "bad.score")
            score.write_text(HEADER + "bar 1\nRH C4/2\n", encoding="utf-8")
            result = make_midi(score)
            self.assertEqual(list(Path(folder).iterdir()), [score])
        self.assertEqual((result.returncode, result.stderr.count("\n")), (1, 1))


class TestTone(unittest.TestCase):
    def test_it_is_one_a4_of_two_seconds_at_full_velocity(self):
        midi = mido.MidiFile(MUSIC / "a4.mid")
        self.assertEqual(midi.length, 2.0)
        self.assertEqual([(note.note, note.velocity) for note in midi if note.type == "note_on"],
                         [(69, 127)])


class Invention(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        hands = read_score((MUSIC / "invention-1.score").read_text(encoding="utf-8")).hands
        cls.right, cls.left = hands["RH"], hands["LH"]
        cls.midi = mido.MidiFile(MUSIC / "invention-1.mid")

    def assert_statement(self, hand, bar, sixteenth, first, steps):
        pitches = pitches_from(hand, bar, sixteenth, len(steps) + 1)
        self.assertEqual(pitches[0], first)
        self.assertEqual([b - a for a, b in zip(pitches, pitches[1:])], steps)

    def test_the_left_hand_answers_the_subject_an_octave_lower(self):
        for bar, first in ((1, 60), (2, 67)):
            self.assert_statement(self.right, bar, 2, first, SUBJECT_STEPS)
            self.assert_statement(self.left, bar, 10, first - 12, SUBJECT_STEPS)

    def test_the_second_section_opens_with_the_left_hand_in_g(self):
        self.assert_statement(self.left, 7, 2, 43, SUBJECT_STEPS)
        self.assert_statement(self.right, 7, 10, 67, SUBJECT_STEPS)

    def test_the_bars_after_the_opening_return_with_the_hands_exchanged(self):
        before = pitches_from(self.right, 3, 2, 31)
        after = pitches_from(self.left, 11, 2, 31)
        # From C major to D minor, an octave down: a tone up, bar the steps the scale changes.
        for old, new in zip(before, after):
            self.assertAlmostEqual(new, old + 2 - 12, delta=1)

    def test_it_lasts_22_bars_in_format_1_with_a_hand_a_channel(self):
        self.assertEqual((self.midi.type, len(self.midi.tracks)), (1, 3))
        for track, channel in zip(self.midi.tracks[1:], (0, 1)):
            self.assertEqual(sum(message.time for message in track), 22 * 4 * 480)
            self.assertEqual({note.channel for note in track if not note.is_meta}, {channel})

    def test_every_note_ends_before_it_is_struck_again(self):
        for track in self.midi.tracks[1:]:
            sounding = set()
            for message in track:
                if message.type == "note_on":
                    self.assertNotIn(message.note, sounding)
                    sounding.add(message.note)
                elif message.type == "note_off":
                    sounding.remove(message.note)
            self.assertEqual(sounding, set())

    def test_the_tempo_only_broadens(self):
        tempos = [event.tempo for event in self.midi.tracks[0] if event.type == "set_tempo"]
        self.assertGreater(len(tempos), 3)
        self.assertEqual(tempos, sorted(tempos))


if __name__ == "__main__":
    unittest.main()
