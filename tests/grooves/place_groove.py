"""Places one starter style through the reference host, in its own meter:
the main groove alone over a region one measure longer than two of its
repetitions, once per groove length, the last repetition cut at the
region's end; then the whole phrase, with a fill every 4 measures, the
crash after each fill and the ending, chosen with the dialog's controls,
over two phrases and the ending;
then the variation and the count-in, each alone in the same way as the only
style of a folder of its own. Every stroke that falls inside a placement's
measures must be written, without a single message.

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


CRASHES = {49, 57}
HANDS_TO_CRASH = {42, 51}  # closed hi-hat, ride: the stroke that moves to the crash


def notes_within(groove, measures, crash=False):
    """The notes the host's import writes from the groove's first `measures`
    measures: one per key and onset, at most ENTRY_MAX_NOTES an onset. With
    `crash`, the downbeat sounds a crash: a closed hi-hat or ride stroke
    there becomes it, or one is added, unless one sounds there already."""
    chords = {}
    for note in groove.notes:
        if note.tick < measures * groove.ticks_per_measure:
            chords.setdefault(note.tick, set()).add(note.key)
    downbeat = chords.setdefault(0, set())
    if crash and not downbeat & CRASHES:
        hand = sorted(downbeat & HANDS_TO_CRASH)
        if hand:
            downbeat.discard(hand[0])
        downbeat.add(49)
    return sum(min(len(keys), ENTRY_MAX_NOTES) for keys in chords.values())


def main_placements(first, last, length, part):
    return [(part, start, min(start + length - 1, last), False)
            for start in range(first, last + 1, length)]


def phrase_placements(style, measures, phrase):
    """Where each part goes: the ending at the end, a fill closing each whole
    phrase, the groove repeated before it."""
    fill, ending = style.part("fill"), style.part("ending")
    body_last = measures - (ending.measures if ending else 0)
    placed = []
    for start in range(1, body_last + 1, phrase):
        last = start + phrase - 1
        if last > body_last or not fill or fill.measures >= phrase:
            placed += main_placements(start, min(last, body_last), style.main.measures, style.main)
            continue
        fill_first = last - fill.measures + 1
        placed += main_placements(start, fill_first - 1, style.main.measures, style.main)
        placed.append((fill, fill_first, last, False))
    if ending:
        placed.append((ending, body_last + 1, measures, False))
    # The measure after each fill starts with a crash, as the dialog starts.
    return [(groove, start, end, i > 0 and placed[i - 1][0] is fill and groove is not fill)
            for i, (groove, start, end, _) in enumerate(placed)]


def scenario_for(style, placed, measures, dialog, description, groove_folder):
    expect = {
        "/result": 1,
        "/alerts": [],
        "/temporary_file_left": False,
        "/edits/started": 1,
        "/edits/ended": 1,
    }
    for i, (groove, start, end, crash) in enumerate(placed):
        expect["/imports/%d/region/start_measure" % i] = start
        expect["/imports/%d/region/end_measure" % i] = end
        expect["/imports/%d/notes_placed" % i] = notes_within(groove, end - start + 1, crash)
    expect["/imports/%d" % len(placed)] = None  # nothing more
    main = style.main
    return {
        "description": description,
        "measures": [measure_run(main.numerator, main.denominator, measures)],
        "staves": [{"name": "Piano"}],
        "percussion_map": True,
        "records": [{"tag": "fcbg", "number": 12, "words": [65526, 139, 0, 65530, 0, 0, 4, 24, 0, 2]}],
        "groove_folder": groove_folder,
        "selection": {"start_slot": 1, "start_measure": 1, "end_slot": 1,
                      "end_measure": measures, "end_position": "end"},
        "dialog": [{"style": main.name}, {"click": 21}, {"select": 1019, "row": 0}] + dialog + [{"click": 1}],
        "expect": expect,
    }


def style_folder(style, grooves, folder):
    """A groove folder holding this style with its fill and ending."""
    shutil.rmtree(folder, ignore_errors=True)
    for groove in style.parts:
        target = folder / groove.file_name
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(grooves / groove.file_name, target)


def own_folder(groove, grooves, folder):
    """A groove folder whose only style is this companion, under the style's
    name, so that the dialog offers it like a main groove."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    shutil.copyfile(grooves / groove.file_name, folder / (groove.name + ".mid"))


def main():
    parser = argparse.ArgumentParser()
    for option in ("--description", "--grooves", "--cantel-host", "--plugin", "--work"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()

    style = read_style_file(args.description)
    grooves, work = pathlib.Path(args.grooves), pathlib.Path(args.work)
    work.mkdir(parents=True, exist_ok=True)
    stem = style.main.name.replace(" ", "_")
    folder = work / stem
    style_folder(style, grooves, folder)

    length = style.main.measures
    alone = 2 * length + 1
    ending = style.part("ending")
    phrase_measures = 8 + (ending.measures if ending else 0)
    phrase_dialog = [{"select": 1021, "text": "4 measures"}] + ([{"click": 23}] if ending else [])
    runs = [
        (stem + ".alone", scenario_for(style, main_placements(1, alone, length, style.main), alone, [],
                                       "Starter groove %s placed in its own meter" % style.main.name,
                                       os.path.relpath(folder, work))),
        (stem + ".phrase", scenario_for(style, phrase_placements(style, phrase_measures, 4), phrase_measures,
                                        phrase_dialog,
                                        "Starter groove %s with a fill every 4 measures and its ending"
                                        % style.main.name, os.path.relpath(folder, work))),
    ]
    for groove in (style.part("variation"), style.part("count-in")):
        if groove is None:
            continue
        name = stem + "." + groove.part
        own_folder(groove, grooves, work / name)
        alone = 2 * groove.measures + 1
        runs.append((name, scenario_for(style, main_placements(1, alone, groove.measures, groove),
                                        alone, [], "Starter groove %s placed alone in its own meter"
                                        % groove.title, name)))
    failed = 0
    for name, scenario in runs:
        scenario_file = work / (name + ".json")
        scenario_file.write_text(json.dumps(scenario, indent=1), encoding="utf-8")
        run = subprocess.run([args.cantel_host, "run", str(scenario_file), "--plugin", args.plugin,
                              "--check", "--out", str(work / (name + ".result.json"))])
        failed += run.returncode != 0
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
