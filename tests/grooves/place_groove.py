"""Places one starter groove through the reference host, in its own meter,
over a region one measure longer than two repetitions, and checks that the
plug-in placed it once per groove length, the last repetition cut at the
region's end, without a single message.

    place_groove.py --description D.groove --grooves DIR --cantel-host EXE --plugin LIB --work DIR
"""
import argparse
import json
import os
import subprocess
import sys


def read_description(path):
    settings = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            key, sep, value = line.partition(":")
            if sep and key.strip() in ("name", "meter", "measures"):
                settings[key.strip()] = value.strip()
    numerator, denominator = (int(x) for x in settings["meter"].split("/"))
    return settings["name"], numerator, denominator, int(settings["measures"])


def measure_run(numerator, denominator, count):
    """The meter as a notation program writes it: compound meters in dotted beats."""
    if denominator == 8 and numerator % 3 == 0 and numerator >= 6:
        return {"count": count, "beats": numerator // 3, "beat_duration": 3 * 512}
    return {"count": count, "beats": numerator, "beat_duration": 4096 // denominator}


def main():
    parser = argparse.ArgumentParser()
    for option in ("--description", "--grooves", "--cantel-host", "--plugin", "--work"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()

    name, numerator, denominator, length = read_description(args.description)
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
        expect["/imports/%d/region/start_measure" % i] = start
        expect["/imports/%d/region/end_measure" % i] = min(start + length - 1, measures)
    expect["/imports/%d" % len(starts)] = None  # no further repetition

    scenario = {
        "description": "Starter groove %s placed in its own meter" % name,
        "measures": [measure_run(numerator, denominator, measures)],
        "staves": [{"name": "Piano"}],
        "percussion_map": True,
        "records": [{"tag": "fcbg", "number": 12, "words": [65526, 139, 0, 65530, 0, 0, 4, 24, 0, 2]}],
        "groove_folder": os.path.relpath(args.grooves, args.work),
        "selection": {"start_slot": 1, "start_measure": 1, "end_slot": 1,
                      "end_measure": measures, "end_position": "end"},
        "dialog": [{"style": name}, {"click": 21}, {"select": 1019, "row": 0}, {"click": 1}],
        "expect": expect,
    }
    os.makedirs(args.work, exist_ok=True)
    stem = name.replace(" ", "_")
    scenario_file = os.path.join(args.work, stem + ".json")
    with open(scenario_file, "w", encoding="utf-8") as f:
        json.dump(scenario, f, indent=1)
    run = subprocess.run([args.cantel_host, "run", scenario_file, "--plugin", args.plugin, "--check",
                          "--out", os.path.join(args.work, stem + ".result.json")])
    return run.returncode


if __name__ == "__main__":
    sys.exit(main())
