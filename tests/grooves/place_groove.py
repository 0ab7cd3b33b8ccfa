"""Places one starter style through the reference host, each of its files in
its own meter: the main groove, and its fill and ending offered as styles of
their own. Each part goes over a region one measure longer than two of its
repetitions, and the plug-in must place it once per groove length, the last
repetition cut at the region's end, every stroke that falls inside a
repetition's measures written, without a single message.

    place_groove.py --description D.groove --grooves DIR --cantel-host EXE --plugin LIB --work DIR
"""
import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys

# Run by hand from the source tree: leave no __pycache__ behind.
sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "grooves"))

from groove_format import read_style_file  # noqa: E402

# The host writes at most this many notes into one chord entry.
ENTRY_MAX_NOTES = 12


def measure_run(numerator, denominator, count):
    """The meter as a notation program writes it: compound meters in dotted beats."""
    if denominator == 8 and numerator % 3 == 0 and numerator >= 6:
        return {"count": count, "beats": numerator // 3, "beat_duration": 3 * 512}
    return {"count": count, "beats": numerator, "beat_duration": 4096 // denominator}


def notes_within(groove, measures):
    """The notes the host's import writes from the groove's first `measures`
    measures: one per key and onset, at most ENTRY_MAX_NOTES an onset."""
    chords = {}
    for note in groove.notes:
        if note.tick < measures * groove.ticks_per_measure:
            chords.setdefault(note.tick, set()).add(note.key)
    return sum(min(len(keys), ENTRY_MAX_NOTES) for keys in chords.values())


def scenario_for(groove, shown_name, groove_folder):
    length = groove.measures
    measures = 2 * length + 1
    starts = list(range(1, measures + 1, length))
    expect = {
        "/result": 1,
        "/alerts": [],
        "/temporary_file_left": False,
        "/edits/started": 1,
        "/edits/ended": 1,
    }
    for i, start in enumerate(starts):
        end = min(start + length - 1, measures)
        expect["/imports/%d/region/start_measure" % i] = start
        expect["/imports/%d/region/end_measure" % i] = end
        expect["/imports/%d/notes_placed" % i] = notes_within(groove, end - start + 1)
    expect["/imports/%d" % len(starts)] = None  # no further repetition
    return {
        "description": "Starter groove %s placed in its own meter" % groove.title,
        "measures": [measure_run(groove.numerator, groove.denominator, measures)],
        "staves": [{"name": "Piano"}],
        "percussion_map": True,
        "records": [{"tag": "fcbg", "number": 12, "words": [65526, 139, 0, 65530, 0, 0, 4, 24, 0, 2]}],
        "groove_folder": groove_folder,
        "selection": {"start_slot": 1, "start_measure": 1, "end_slot": 1,
                      "end_measure": measures, "end_position": "end"},
        "dialog": [{"style": shown_name}, {"click": 21}, {"select": 1019, "row": 0}, {"click": 1}],
        "expect": expect,
    }


def offer_alone(groove, grooves, folder):
    """A folder whose only style is this companion, under its own title: the
    style list shows the top folder only."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    shutil.copyfile(grooves / groove.file_name, folder / (groove.title + ".mid"))
    return groove.title


def main():
    parser = argparse.ArgumentParser()
    for option in ("--description", "--grooves", "--cantel-host", "--plugin", "--work"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()

    style = read_style_file(args.description)
    grooves, work = pathlib.Path(args.grooves), pathlib.Path(args.work)
    work.mkdir(parents=True, exist_ok=True)
    failed = 0
    for groove in style.parts:
        stem = style.main.name.replace(" ", "_")
        if groove.part == "main":
            shown, folder = groove.name, grooves
        else:
            stem += "." + groove.part
            folder = work / stem
            shown = offer_alone(groove, grooves, folder)
        scenario_file = work / (stem + ".json")
        scenario = scenario_for(groove, shown, os.path.relpath(folder, work))
        scenario_file.write_text(json.dumps(scenario, indent=1), encoding="utf-8")
        run = subprocess.run([args.cantel_host, "run", str(scenario_file), "--plugin", args.plugin,
                              "--check", "--out", str(work / (stem + ".result.json"))])
        failed += run.returncode != 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
