"""Every starter style is a part one drummer plays on a kit, and the checks
that say so find the faults they are meant to find."""

import dataclasses
import pathlib
import textwrap
import unittest

from drumming import style_faults, with_notes
from groove_format import PART_KINDS, Note, parse_style, read_style_file

PATTERNS = pathlib.Path(__file__).resolve().parents[2] / "grooves" / "patterns"


def style_of(main, *sections):
    """A 4/4 style from its main groove's blocks and its sections' text."""
    text = "name: Test\nmeter: 4/4\ntempo: 100\nmeasures: 1\n" + textwrap.dedent(main)
    return parse_style(text + "".join(textwrap.dedent(section) for section in sections))


GROOVE = """\
    measure 1
    HH  x.x.x.x.
    SN  ..X...X.
    BD  X...X...
    """
ENDING = """\
    ending
    measures: 2
    measure 1 like main 1
    measure 2
    CR  X
    BD  X
    """


class EveryStarterStyleIsPlayedByOneDrummer(unittest.TestCase):
    def setUp(self):
        self.styles = [read_style_file(path) for path in sorted(PATTERNS.glob("*.groove"))]
        self.assertGreaterEqual(len(self.styles), 36)

    def test_every_style_has_every_kind_of_part(self):
        for style in self.styles:
            with self.subTest(style=style.main.name):
                self.assertEqual([groove.part for groove in style.parts],
                                 [kind.name for kind in PART_KINDS])

    def test_no_part_asks_for_what_a_drummer_cannot_play(self):
        for style in self.styles:
            with self.subTest(style=style.main.name):
                self.assertEqual(style_faults(style), [])

    def test_only_the_tango_ends_dry(self):
        dry = [style.main.name for style in self.styles if style.part("ending").finish == "dry"]
        self.assertEqual(dry, ["Tango"])


class TheChecksFindABrokenPattern(unittest.TestCase):
    def assertFaults(self, style, *expected):
        faults = style_faults(style)
        self.assertEqual(len(faults), len(expected), faults)
        for fault, text in zip(faults, expected):
            self.assertIn(text, fault)

    def test_a_sound_style_passes(self):
        self.assertFaults(style_of(GROOVE, ENDING))

    def test_a_third_hand_fails_while_the_feet_are_free(self):
        self.assertFaults(style_of("""\
            measure 1
            HH  x.x.x.x.
            SN  ..X...X.
            CP  ......X.
            BD  X...X.X.
            """), "Test: measure 1 beat 4 asks for 3 hands (keys 38, 39, 42)")
        # Two hands with both feet: kick and hi-hat pedal are no hands.
        self.assertFaults(style_of("""\
            measure 1
            RD  x.x.x.x.
            SN  ..X...X.
            BD  X.X.X.X.
            PH  ..x...x.
            """))

    def test_one_hi_hat_is_struck_open_closed_or_by_the_foot_once_a_step(self):
        self.assertFaults(style_of("""\
            measure 1
            HH  x.x.x.x.
            PH  ..x...x.
            BD  X...X...
            """), "beat 2 plays one hi-hat as closed hi-hat and hi-hat foot",
            "beat 4 plays one hi-hat as closed hi-hat and hi-hat foot")
        self.assertFaults(style_of("""\
            measure 1
            OH  ...x
            PH  ...x
            BD  X...
            """), "beat 4 plays one hi-hat as hi-hat foot and open hi-hat")

    def test_a_cross_stick_and_a_snare_stroke_at_once(self):
        self.assertFaults(style_of("""\
            measure 1
            SS  X.X.
            SN  ..XX
            """), "beat 3 asks one snare for a cross-stick and a stroke on its head")

    def test_an_ending_stops_on_its_last_downbeat_with_kick_and_crash(self):
        late = ENDING.replace("CR  X\n    BD  X", "CR  .X\n    BD  .X")
        self.assertFaults(style_of(GROOVE, late),
                          "Test (ending): the last measure does not start with the kick on "
                          "measure 2 beat 1",
                          "does not start with a crash on measure 2 beat 1 (or say 'finish: dry')")
        no_crash = ENDING.replace("CR  X\n", "SN  X\n")
        self.assertFaults(style_of(GROOVE, no_crash), "does not start with a crash")
        crash_2 = ENDING.replace("CR  X", "CR2 X")
        self.assertFaults(style_of(GROOVE, crash_2))

    def test_a_dry_ending_has_no_crash_and_needs_none(self):
        dry = ENDING.replace("measures: 2", "measures: 2\nfinish: dry")
        self.assertFaults(style_of(GROOVE, dry.replace("CR  X\n", "SN  X\n")))
        self.assertFaults(style_of(GROOVE, dry), "a dry ending lets a crash ring")

    def test_a_count_in_fills_exactly_one_measure(self):
        self.assertFaults(style_of(GROOVE, "count-in\nmeasures: 1\nmeasure 1\nSS x x x x\n"))
        # One click on beat 1 leaves three silent beats before the groove.
        self.assertFaults(style_of(GROOVE, "count-in\nmeasures: 1\nmeasure 1\nSS x...\n"),
                          "Test (count-in): the count-in falls silent at measure 1 beat 1.875")
        self.assertFaults(style_of(GROOVE, "count-in\nmeasures: 2\nmeasure 1\nSS xxxx\n"
                                           "measure 2\nSS xxxx\n"),
                          "a count-in of 2 measures, not 1")

    def test_a_variation_is_as_long_as_the_groove_and_not_the_same(self):
        ride = "variation\nmeasures: {}\nmeasure 1 like main 1\nHH ........\nRD x.x.x.x.\n"
        self.assertFaults(style_of(GROOVE, ride.format(1)))
        self.assertFaults(style_of(GROOVE, ride.format(2) + "measure 2 like 1\n"),
                          "Test (variation): 2 measure(s), the main groove 1")
        self.assertFaults(style_of(GROOVE, "variation\nmeasures: 1\nmeasure 1 like main 1\n"),
                          "Test (variation): plays the main groove's strokes, no variation")

    def test_a_part_in_another_meter_or_outside_the_drum_map(self):
        style = style_of(GROOVE, "variation\nmeasures: 1\nmeasure 1\nRD x.x.x.x.\nBD X.X.X.X.\n")
        variation = style.part("variation")
        style.grooves["variation"] = dataclasses.replace(variation, numerator=3)
        self.assertFaults(style, "Test (variation): meter 3/4, the main groove 4/4")
        style = style_of(GROOVE)
        style.grooves["main"] = with_notes(style.main, style.main.notes + [Note(0, 60, 34, 90)])
        self.assertFaults(style, "Test: key 34 is not a General MIDI drum key")

if __name__ == "__main__":
    unittest.main()
