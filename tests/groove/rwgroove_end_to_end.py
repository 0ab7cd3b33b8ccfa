#!/usr/bin/env python3
"""rwgroove as a groove author uses it, end to end:

- every starter groove is placed, and its picture is well-formed SVG with a
  dot for every sounding drum note;
- a groove with its drums on channel 1 is refused, `rwgroove fix` mends it,
  the plug-in places the mended file through the reference host, and the
  picture of the staff that received it is well-formed SVG with a dot for
  every note in that staff.

    rwgroove_end_to_end.py --rwgroove EXE --staff-picture EXE --cantel-host EXE
                           --plugin LIB --grooves DIR --work DIR
"""
import argparse
import json
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import xml.etree.ElementTree as ET

SVG = "{http://www.w3.org/2000/svg}"
LEGEND_DOTS = 5  # the velocity scale under a groove's grid


def run(*command):
    return subprocess.run([str(c) for c in command], capture_output=True, text=True)


def dots(svg_path):
    """The hit dots of a picture; parsing fails on anything but well-formed XML."""
    root = ET.parse(svg_path).getroot()
    assert root.tag == SVG + "svg", root.tag
    return len(root.findall(SVG + "circle")), "".join(root.itertext())


class Checks:
    def __init__(self):
        self.failed = []
        self.passed = 0

    def expect(self, condition, what):
        if condition:
            self.passed += 1
        else:
            self.failed.append(what)


def starter_grooves(args, checks, work):
    for groove in sorted(pathlib.Path(args.grooves).rglob("*.mid")):
        report = run(args.rwgroove, "inspect", groove, "--json")
        data = json.loads(report.stdout)
        checks.expect(report.returncode == 0 and data["verdict"] == "placed",
                      f"{groove.name}: verdict {data['verdict']}")
        # Programmed, so the plug-in places every part as it stands.
        checks.expect(not data["timing"]["played"], f"{groove}: taken for played")
        picture = work / (groove.parent.name + " " + groove.stem + ".svg")
        checks.expect(run(args.rwgroove, "render", groove, "-o", picture).returncode == 0,
                      f"{groove.name}: render failed")
        count, text = dots(picture)
        meter = data["time_signature"]
        checks.expect(count == data["strict_walk"]["drum_note_ons"] + LEGEND_DOTS,
                      f"{groove.name}: {count} dots for {data['strict_walk']['drum_note_ons']} notes")
        checks.expect(f"{meter['numerator']}/{meter['denominator']}" in text,
                      f"{groove.name}: the picture does not name its meter")


def channel_one_groove():
    """Two 4/4 measures of eighths, the drums on channel 1 (status 0x90)."""
    events = b""
    for step in range(16):
        key = 38 if step % 4 == 2 else 36 if step % 4 == 0 else 42
        events += bytes([0x00 if step == 0 else 0x78, 0x90, key, 100])  # delta 240 = 0x81 0x70
    events = events.replace(b"\x78\x90", b"\x81\x70\x90")
    events += bytes([0x81, 0x70, 0x80, 42, 0]) + b"\x00\xff\x2f\x00"
    header = b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480)
    return header + b"MTrk" + struct.pack(">I", len(events)) + events


def fixed_groove_is_placed(args, checks, work):
    grooves = work / "fixed grooves"
    shutil.rmtree(grooves, ignore_errors=True)
    grooves.mkdir()
    original = work / "Channel One.mid"
    original.write_bytes(channel_one_groove())
    refused = run(args.rwgroove, "inspect", original)
    checks.expect(refused.returncode == 1 and "channel 1 (16 notes" in refused.stdout,
                  "the channel-1 groove is not refused with its channel named:\n" + refused.stdout)
    fixed = grooves / "Channel One Fixed.mid"
    checks.expect(run(args.rwgroove, "fix", original, fixed).returncode == 0, "fix failed")
    checks.expect(run(args.rwgroove, "inspect", fixed).returncode == 0, "the fixed groove is refused")

    scenario = {
        "description": "A groove mended by rwgroove fix, placed on a new staff",
        "measures": [{"count": 4, "beats": 4, "beat_duration": 1024}],
        "staves": [{"name": "Piano"}],
        "percussion_map": True,
        # The drum-set clef as its check wants it, so that no question comes up.
        "records": [{"tag": "fcbg", "number": 12, "words": [65526, 139, 0, 65530, 0, 0, 4, 24, 0, 2]}],
        "groove_folder": os.path.relpath(grooves, work),
        "selection": {"start_slot": 1, "start_measure": 1, "end_slot": 1, "end_measure": 4,
                      "end_position": "end"},
        "dialog": [{"style": "Channel One Fixed"}, {"click": 21}, {"select": 1019, "row": 0},
                   {"click": 1}],
    }
    scenario_file = work / "fixed.json"
    scenario_file.write_text(json.dumps(scenario))
    result_file = work / "fixed.result.json"
    host = run(args.cantel_host, "run", scenario_file, "--plugin", args.plugin, "--out", result_file)
    result = json.loads(result_file.read_text()) if host.returncode == 0 else {}
    placed = sum(i.get("notes_placed", 0) for i in result.get("imports", []))
    checks.expect(result.get("result") == 1 and result.get("alerts") == [] and placed > 0,
                  f"the fixed groove was not placed: {host.stderr} {result.get('alerts')}")

    picture = work / "fixed staff.svg"
    checks.expect(run(args.staff_picture, result_file, "-o", picture).returncode == 0,
                  "staff_picture failed")
    staff = next(s for s in result["score"]["staves"]
                 if s["slot"] == result["imports"][0]["region"]["start_slot"])
    notes = sum(len(e["keys"]) for e in staff["entries"] if e["flags"] & 0x40000000)
    count, _ = dots(picture)
    checks.expect(count == notes and notes > 0, f"the staff picture has {count} dots for {notes} notes")


def main():
    parser = argparse.ArgumentParser()
    for option in ("--rwgroove", "--staff-picture", "--cantel-host", "--plugin", "--grooves", "--work"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()
    work = pathlib.Path(args.work)
    work.mkdir(parents=True, exist_ok=True)
    checks = Checks()
    starter_grooves(args, checks, work)
    fixed_groove_is_placed(args, checks, work)
    for failure in checks.failed:
        print("FAILED: " + failure)
    print(f"rwgroove end to end: {checks.passed} passed, {len(checks.failed)} failed")
    return 1 if checks.failed else 0


if __name__ == "__main__":
    sys.exit(main())
