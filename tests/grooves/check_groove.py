#!/usr/bin/env python3
"""Checks the files of one starter style against its description.

    check_groove.py --description D.groove --grooves DIR [--rwgroove PATH]

DIR is the groove folder: the main groove is DIR/NAME.mid and each companion
lies in its kind's subfolder (DIR/Variations/NAME.mid, DIR/Count-ins/NAME.mid,
DIR/Fills/NAME.mid, DIR/Endings/NAME.mid). Each file is read here with a
parser of its own (not the generator's code) and, when rwgroove is given, by
the plug-in's reader; the notes read back must be what one drummer plays
(drumming.py), and a companion that the description does not have must not be
there either. Prints one line per failed check and exits 1 when any failed.
"""

import argparse
import json
import pathlib
import subprocess
import sys

# Run by hand from the source tree: leave no __pycache__ behind.
sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "grooves"))

from drumming import part_faults, with_notes  # noqa: E402
from groove_format import PART_KINDS, Note, read_style_file  # noqa: E402

GM_DRUM_KEYS = range(35, 82)
EXPECTED_DIVISION = 480


def read_vlq(data, pos):
    value = 0
    while True:
        byte = data[pos]
        pos += 1
        value = (value << 7) | (byte & 0x7F)
        if byte < 0x80:
            return value, pos


def read_track(body):
    """(tick, status, data) for every event; no running status expected."""
    events, pos, tick = [], 0, 0
    while pos < len(body):
        delta, pos = read_vlq(body, pos)
        tick += delta
        status = body[pos]
        if status < 0x80:
            raise ValueError(f"running status at tick {tick}")
        if status == 0xFF:
            kind = body[pos + 1]
            length, pos = read_vlq(body, pos + 2)
            events.append((tick, 0xFF, bytes([kind]) + body[pos:pos + length]))
            pos += length
        elif status in (0xF0, 0xF7):
            raise ValueError(f"system exclusive at tick {tick}")
        else:
            size = 1 if status >> 4 in (0xC, 0xD) else 2
            events.append((tick, status, body[pos + 1:pos + 1 + size]))
            pos += 1 + size
    return events


def read_smf(data):
    if data[:4] != b"MThd" or int.from_bytes(data[4:8], "big") != 6:
        raise ValueError("no 6-byte MThd header")
    fmt, count, division = (int.from_bytes(data[i:i + 2], "big") for i in (8, 10, 12))
    tracks, pos = [], 14
    while pos < len(data):
        if data[pos:pos + 4] != b"MTrk":
            raise ValueError(f"chunk at byte {pos} is not MTrk")
        length = int.from_bytes(data[pos + 4:pos + 8], "big")
        tracks.append(read_track(data[pos + 8:pos + 8 + length]))
        pos += 8 + length
    if len(tracks) != count:
        raise ValueError(f"header counts {count} tracks, file holds {len(tracks)}")
    return fmt, division, tracks


def metas(track, kind):
    return [(tick, data[1:]) for tick, status, data in track if status == 0xFF and data[0] == kind]


class Checker:
    def __init__(self, groove):
        self.groove = groove
        self.failures = []
        self.notes = []

    def expect(self, condition, message):
        if not condition:
            self.failures.append(message)

    def file_structure(self, data):
        g = self.groove
        fmt, division, tracks = read_smf(data)
        self.expect(fmt == 1, f"format {fmt}, expected 1")
        self.expect(division == EXPECTED_DIVISION, f"division {division}")
        self.expect(len(tracks) == 2, f"{len(tracks)} tracks, expected 2")
        if len(tracks) != 2:
            return
        conductor, drums = tracks
        exponent = g.denominator.bit_length() - 1
        for number, track in ((1, conductor), (2, drums)):
            meters = metas(track, 0x58)
            self.expect([(tick, data[:2]) for tick, data in meters]
                        == [(0, bytes([g.numerator, exponent]))],
                        f"track {number}: time signatures {meters}, expected one "
                        f"{g.numerator}/{g.denominator} at time 0")
            ends = metas(track, 0x2F)
            self.expect(ends == [(g.total_ticks, b"")] and track[-1][2] == b"\x2f",
                        f"track {number}: end of track {ends}, expected one at "
                        f"tick {g.total_ticks} as its last event")
        tempos = metas(conductor, 0x51)
        self.expect(len(tempos) == 1 and tempos[0][0] == 0, "track 1: no single tempo at 0")
        self.expect(all(status == 0xFF for _, status, _ in conductor),
                    "track 1 holds channel events")
        self.expect(metas(drums, 0x03), "track 2 has no track name")
        self.drum_events(drums)

    def drum_events(self, drums):
        sounding, velocities, last_event = {}, [], 0
        for tick, status, data in drums:
            if status == 0xFF:
                continue
            last_event = tick
            if status not in (0x99, 0x89):
                self.failures.append(f"status {status:#x} at tick {tick}: only 0x99/0x89")
                continue
            key = data[0]
            self.expect(key in GM_DRUM_KEYS, f"key {key} is no General MIDI drum key")
            if status == 0x99 and data[1] > 0:
                self.expect(key not in sounding, f"key {key} struck again at {tick} "
                                                 "before its note off")
                sounding[key] = (tick, data[1])
                velocities.append(data[1])
            else:
                self.expect(key in sounding, f"note off of key {key} at {tick} without note on")
                if key in sounding:
                    start, velocity = sounding.pop(key)
                    self.notes.append(Note(start, tick - start, key, velocity))
        self.expect(not sounding, f"keys {sorted(sounding)} never released")
        self.expect(len(set(velocities)) >= 3, f"velocities {sorted(set(velocities))} "
                                               "do not vary")
        tpm = self.groove.ticks_per_measure
        measure, within = last_event // tpm + 1, last_event % tpm
        if within * 100 // tpm < 70 and measure >= 2:
            measure -= 1
        self.expect(measure == self.groove.measures,
                    f"the last drum event at tick {last_event} makes {measure} measures")

    def reader_view(self, rwgroove, midi):
        run = subprocess.run([rwgroove, "inspect", str(midi), "--json"],
                             capture_output=True, text=True, check=False)
        self.expect(run.returncode == 0, f"rwgroove exit {run.returncode}: {run.stderr.strip()}")
        try:
            report = json.loads(run.stdout)
        except json.JSONDecodeError:
            self.failures.append(f"rwgroove printed no JSON: {run.stdout[:200]!r}")
            return
        g = self.groove
        meter = report.get("time_signature", {})
        self.expect(report.get("loaded") is True, "rwgroove: not loaded")
        self.expect(report.get("alerts") == [], f"rwgroove alerts: {report.get('alerts')}")
        self.expect((meter.get("numerator"), meter.get("denominator"))
                    == (g.numerator, g.denominator),
                    f"rwgroove meter {meter}, expected {g.numerator}/{g.denominator}")
        self.expect(meter.get("ticks_per_measure") == g.ticks_per_measure,
                    f"rwgroove ticks per measure {meter.get('ticks_per_measure')}")
        self.expect(report.get("groove_measures") == g.measures,
                    f"rwgroove groove_measures {report.get('groove_measures')}, "
                    f"expected {g.measures}")
        self.expect(report.get("drum_notes_found") is True, "rwgroove: no drum notes found")
        keys = report.get("keys_used") or []
        self.expect(keys == sorted({note.key for note in g.notes}),
                    f"rwgroove keys {keys} are not the description's keys")
        self.expect(keys and all(key in GM_DRUM_KEYS for key in keys),
                    f"rwgroove keys {keys} are not all General MIDI drum keys")


def check_file(groove, main, midi, rwgroove):
    checker = Checker(groove)
    try:
        checker.file_structure(midi.read_bytes())
    except (OSError, ValueError, IndexError) as error:
        checker.failures.append(f"cannot read {midi}: {error}")
    if checker.notes:
        checker.failures += part_faults(with_notes(groove, checker.notes), main)
    if rwgroove:
        checker.reader_view(rwgroove, midi)
    return checker.failures


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--description", required=True, type=pathlib.Path)
    parser.add_argument("--grooves", required=True, type=pathlib.Path)
    parser.add_argument("--rwgroove")
    args = parser.parse_args()

    style = read_style_file(args.description)
    failed = False
    for groove in style.parts:
        failures = check_file(groove, style.main, args.grooves / groove.file_name,
                              args.rwgroove)
        for failure in failures:
            print(f"{groove.file_name}: {failure}")
        if not failures:
            print(f"{groove.file_name}: ok, {groove.measures} measure(s)"
                  + ("" if args.rwgroove else " (without rwgroove)"))
        failed = failed or bool(failures)
    for kind in PART_KINDS:
        stray = args.grooves / kind.folder / (style.main.name + ".mid")
        if style.part(kind.name) is None and stray.exists():
            print(f"{kind.folder}/{stray.name}: the description has no {kind.name}, "
                  "yet the file is there")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
