"""The generator refuses descriptions that would ship a wrong groove, and
writes the bytes the plug-in's reader depends on."""

import contextlib
import io
import pathlib
import tempfile
import textwrap
import unittest

import make_grooves
from groove_format import GrooveError, measure_count_by_plugin_rule, parse_groove, parse_style
from smf_writer import smf_bytes, time_signature_data, variable_length


def describe(body, meter="4/4", measures=1):
    return textwrap.dedent(f"""\
        name: Test
        meter: {meter}
        tempo: 120
        measures: {measures}
        """) + textwrap.dedent(body)


class TheLengthFollowsThePluginsSeventyPercentRule(unittest.TestCase):
    TPM = 1920

    def test_an_event_in_the_first_70_percent_of_a_later_measure_is_a_trailing_stroke(self):
        self.assertEqual(measure_count_by_plugin_rule(4 * self.TPM + self.TPM // 2, self.TPM), 4)
        self.assertEqual(measure_count_by_plugin_rule(4 * self.TPM + 1344, self.TPM), 5)  # 70 %
        self.assertEqual(measure_count_by_plugin_rule(4 * self.TPM + 1343, self.TPM), 4)

    def test_a_note_off_on_the_closing_barline_counts_for_the_measure_before_it(self):
        self.assertEqual(measure_count_by_plugin_rule(2 * self.TPM, self.TPM), 2)
        self.assertEqual(measure_count_by_plugin_rule(self.TPM, self.TPM), 1)

    def test_a_one_measure_groove_is_never_shortened(self):
        self.assertEqual(measure_count_by_plugin_rule(100, self.TPM), 1)

    def test_a_pattern_that_ends_early_in_its_last_measure_is_refused(self):
        early = describe("""\
            measure 1
            BD  X... X... X... X...
            measure 2
            BD  X... X... X... ....
            """, measures=2)
        with self.assertRaisesRegex(GrooveError, "1 measure"):
            parse_groove(early)

    def test_a_stroke_on_the_last_eighth_keeps_the_last_measure(self):
        groove = parse_groove(describe("""\
            measure 1
            BD  X... .... .... ....
            measure 2 like 1
            HH  .... .... .... ..x.
            """, measures=2))
        last = max(note.tick + note.length for note in groove.notes)
        self.assertLess(last, groove.total_ticks)
        self.assertEqual(measure_count_by_plugin_rule(last, groove.ticks_per_measure), 2)


class DescriptionsWithMistakesAreRefused(unittest.TestCase):
    def assertRefused(self, text, pattern):
        with self.assertRaisesRegex(GrooveError, pattern):
            parse_groove(text, "t.groove")

    def test_a_grid_that_does_not_divide_the_measure(self):
        self.assertRefused(describe("measure 1\nBD X.X.X.X.X.X.X\n"), r"t.groove:6: .*13 steps")

    def test_an_unknown_instrument_or_a_key_outside_the_drum_map(self):
        self.assertRefused(describe("measure 1\nXY X.X.X.X.\n"), "unknown instrument 'XY'")
        self.assertRefused(describe("measure 1\n34 X.X.X.X.\n"), "key 34")
        self.assertRefused(describe("measure 1\n82 X.X.X.X.\n"), "key 82")

    def test_a_mark_that_is_neither_a_stroke_nor_a_rest(self):
        self.assertRefused(describe("measure 1\nBD X.y.X.X.\n"), "'y' is not a stroke mark")

    def test_missing_duplicated_or_surplus_measures(self):
        self.assertRefused(describe("measure 1\nBD XXXX\n", measures=2), "measure 2 is not")
        self.assertRefused(describe("measure 1\nBD XXXX\nmeasure 1\nBD XXXX\n"), "twice")
        self.assertRefused(describe("measure 1\nBD XXXX\nmeasure 2\nBD XXXX\n"), "beyond")
        self.assertRefused(describe("measure 2 like 3\nBD XXXX\n"), "not described above")

    def test_settings_that_the_plugin_cannot_use(self):
        self.assertRefused(describe("measure 1\nBD XXX\n", meter="3/5"), "3/5")
        self.assertRefused(describe("measure 1\nBD XXXX\n").replace("Test", "A/B"), "file name")
        self.assertRefused(describe("measure 1\nBD XXXX\n").replace("tempo: 120\n", ""),
                           "'tempo:' is missing")

    def test_a_pattern_without_a_stroke(self):
        self.assertRefused(describe("measure 1\nBD ....\n"), "no strokes")


class AFillAndAnEndingAreCheckedAsTheirMainGroove(unittest.TestCase):
    STYLE = describe("""\
        measure 1
        BD  X... X... X... X...

        fill
        measures: 1
        measure 1 like main 1
        SN  .... .... XxXx XxXx

        ending
        measures: 2
        measure 1 like fill 1
        measure 2
        CR  X
        BD  X
        """)

    def test_companions_share_the_name_and_meter_and_have_their_own_length(self):
        style = parse_style(self.STYLE)
        self.assertEqual([(g.file_name, g.numerator, g.measures) for g in style.parts],
                         [("Test.mid", 4, 1), ("Fills/Test.mid", 4, 1),
                          ("Endings/Test.mid", 4, 2)])
        fill_keys = sorted({note.key for note in style.part("fill").notes})
        self.assertEqual(fill_keys, [36, 38])  # the kick copied from the main groove
        # The final crash on beat 1, one step long, ends late enough in the
        # last measure to keep it counted, and inside it.
        last = max(note.tick + note.length for note in style.part("ending").notes)
        self.assertEqual(last, 2 * 1920 - 1920 // 8)

    def assertRefused(self, companion, pattern):
        main = describe("measure 1\nBD X... X... X... X...\n")
        with self.assertRaisesRegex(GrooveError, pattern):
            parse_style(main + textwrap.dedent(companion), "t.groove")

    def test_a_companion_in_another_meter_is_refused(self):
        self.assertRefused("fill\nmeter: 3/4\nmeasures: 1\nmeasure 1\nSN XXX\n",
                           r"t.groove \(fill\): the fill's meter 3/4 is not the main groove's 4/4")
        self.assertRefused("ending\nmeter: 2/2\nmeasures: 1\nmeasure 1\nSN XX\n",
                           "meter 2/2 is not")

    def test_a_companion_that_the_plugin_would_measure_otherwise_is_refused(self):
        # A final hit on a quarter-note grid ends early in its measure: the
        # plug-in would drop that measure, and the host would never place it.
        self.assertRefused("""\
            ending
            measures: 2
            measure 1
            SN  XXXX
            measure 2
            CR  X...
            """, r"\(ending\): the plug-in would take this groove as 1 measure\(s\), not 2")
        self.assertRefused("fill\nmeasures: 1\nmeasure 1\nSN ....\n", r"\(fill\): .*no strokes")

    def test_misplaced_or_repeated_companions_are_refused(self):
        self.assertRefused("fill\nmeasures: 1\nmeasure 1\nSN X\nfill\n", "described twice")
        self.assertRefused("fill\nname: Other\n", "'name' belongs to the main groove")
        self.assertRefused("ending\nmeasures: 1\nmeasure 1 like fill 1\n",
                           "like the fill, which is not described")
        with self.assertRaisesRegex(GrooveError, "must follow the main groove"):
            parse_style("name: T\nmeter: 4/4\ntempo: 90\nmeasures: 1\nfill\n")


class EveryKindOfPartComesFromOneTable(unittest.TestCase):
    # The sections in another order than a style lists its parts, each
    # copying a measure of a section above it.
    STYLE = describe("""\
        measure 1
        HH  x.x.x.x.
        BD  X...X...

        count-in
        measures: 1
        measure 1
        SS  x x x x

        ending
        measures: 1
        finish: dry
        measure 1 like count-in 1
        BD  X

        variation
        measures: 1
        measure 1 like main 1
        HH  ........
        RD  x.x.x.x.
        """)

    def test_the_parts_come_in_the_tables_order_with_their_folders_and_titles(self):
        style = parse_style(self.STYLE)
        self.assertEqual([(g.part, g.file_name, g.title) for g in style.parts], [
            ("main", "Test.mid", "Test"),
            ("variation", "Variations/Test.mid", "Test (variation)"),
            ("count-in", "Count-ins/Test.mid", "Test (count-in)"),
            ("ending", "Endings/Test.mid", "Test (ending)"),
        ])
        self.assertIsNone(style.part("fill"))
        with self.assertRaises(KeyError):
            style.part("intro")

    def test_a_measure_copies_a_measure_of_any_section_above_it(self):
        style = parse_style(self.STYLE)
        self.assertEqual(sorted({n.key for n in style.part("variation").notes}), [36, 51])
        self.assertEqual(sorted({n.key for n in style.part("ending").notes}), [36, 37])
        with self.assertRaisesRegex(GrooveError, "like the variation, which is not described"):
            parse_style(describe("measure 1\nBD XXXX\nfill\nmeasures: 1\n"
                                 "measure 1 like variation 1\n"))

    def test_only_an_ending_says_how_it_finishes(self):
        style = parse_style(self.STYLE)
        self.assertEqual(style.part("ending").finish, "dry")
        plain = describe("measure 1\nBD XXXX\nending\nmeasures: 1\nmeasure 1\nBD X\n")
        self.assertEqual(parse_style(plain).part("ending").finish, "crash")
        with self.assertRaisesRegex(GrooveError, "'finish: wet' must be one of crash, dry"):
            parse_style(self.STYLE.replace("finish: dry", "finish: wet"))
        with self.assertRaisesRegex(GrooveError, "'finish' is a setting of the ending, "
                                                 "not of the count-in"):
            parse_style(self.STYLE.replace("count-in\nmeasures: 1",
                                           "count-in\nfinish: dry\nmeasures: 1"))


class TheFileCarriesWhatTheReaderNeeds(unittest.TestCase):
    def test_variable_length_quantities(self):
        self.assertEqual(variable_length(0), b"\x00")
        self.assertEqual(variable_length(127), b"\x7f")
        self.assertEqual(variable_length(128), b"\x81\x00")
        self.assertEqual(variable_length(268_435_455), b"\xff\xff\xff\x7f")

    def test_compound_meters_click_on_the_dotted_quarter(self):
        self.assertEqual(time_signature_data(6, 8), bytes([6, 3, 36, 8]))
        self.assertEqual(time_signature_data(7, 8), bytes([7, 3, 12, 8]))
        self.assertEqual(time_signature_data(2, 2), bytes([2, 1, 48, 8]))

    def test_the_drum_track_repeats_the_meter_at_time_zero(self):
        data = smf_bytes(parse_groove(describe("measure 1\nBD X.X.X.\n", meter="3/4")))
        drum_track = data[data.index(b"MTrk", 14 + 8):]
        # delta 0, FF 58 04, 3/4 (2 = log2 of 4), 24 clocks, 8 32nds
        self.assertIn(bytes([0x00, 0xFF, 0x58, 0x04, 3, 2, 24, 8]), drum_track)

    def test_the_same_description_always_gives_the_same_bytes(self):
        text = describe("measure 1\nHH XxXxXxXx\n")
        self.assertEqual(smf_bytes(parse_groove(text)), smf_bytes(parse_groove(text)))

    def test_velocities_stray_from_the_mark_within_bounds(self):
        groove = parse_groove(describe("measure 1\nHH " + "X" * 32 + "\n"))
        velocities = {note.velocity for note in groove.notes}
        self.assertGreater(len(velocities), 3)
        self.assertTrue(all(106 <= v <= 118 for v in velocities))


class TheScriptWritesOneFilePerName(unittest.TestCase):
    def test_names_that_differ_only_in_case_clash(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            for file, name in (("a.groove", "Funk"), ("b.groove", "FUNK")):
                (root / file).write_text(describe("measure 1\nBD XXXX\n").replace("Test", name))
            errors = io.StringIO()
            with contextlib.redirect_stderr(errors):
                status = make_grooves.main([str(root / "out"), str(root / "a.groove"),
                                            str(root / "b.groove"), "--quiet"])
            self.assertEqual(status, 1)
            self.assertIn("funk.mid", errors.getvalue())
            self.assertFalse((root / "out").exists())

    def test_a_style_writes_its_companions_into_their_folders(self):
        with tempfile.TemporaryDirectory() as folder:
            root = pathlib.Path(folder)
            (root / "t.groove").write_text(EveryKindOfPartComesFromOneTable.STYLE)
            self.assertEqual(make_grooves.main([str(root / "out"), str(root / "t.groove"),
                                                "--quiet"]), 0)
            written = sorted(str(path.relative_to(root / "out"))
                             for path in (root / "out").rglob("*.mid"))
            self.assertEqual(written, ["Count-ins/Test.mid", "Endings/Test.mid", "Test.mid",
                                       "Variations/Test.mid"])

    def test_every_shipped_style_has_all_its_files(self):
        with tempfile.TemporaryDirectory() as folder:
            self.assertEqual(make_grooves.main([folder, "--quiet"]), 0)
            root = pathlib.Path(folder)
            styles = sorted(path.name for path in root.glob("*.mid"))
            self.assertGreaterEqual(len(styles), 36)
            for companions in ("Variations", "Count-ins", "Fills", "Endings"):
                self.assertEqual(sorted(path.name for path in root.glob(companions + "/*.mid")),
                                 styles, companions)

if __name__ == "__main__":
    unittest.main()
