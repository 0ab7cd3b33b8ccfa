"""Turns a score and the demo's options into a scenario for cantel-host, and
prints what the user saw once the run is done.

    compose.py scenario SCORE GROOVES_DIR OUT.json --groove NAME --style STYLE
               --measures FIRST-LAST [--staff N]
    compose.py report RESULT.json
"""
import argparse
import json
import os
import sys

STYLES = {"percussion": 0, "normal": 1, "slash": 2}


def scenario(args):
    with open(args.score, encoding="utf-8") as f:
        score = json.load(f)
    first, _, last = args.measures.partition("-")
    first, last = int(first), int(last or first)
    staves = len(score.get("staves", [])) or 1
    score["groove_folder"] = os.path.relpath(args.grooves, os.path.dirname(os.path.abspath(args.out)))
    score["selection"] = {"start_slot": 1, "start_measure": first, "start_position": 0,
                          "end_slot": staves, "end_measure": last, "end_position": "end"}
    actions = [{"style": args.groove}]
    if args.staff:
        actions += [{"click": 22}, {"select": 1020, "row": args.staff - 1}]
    else:
        actions += [{"click": 21}]
    actions += [{"select": 1019, "row": STYLES[args.style]}, {"click": 1}]
    score["dialog"] = actions
    score["answers"] = ["yes"] * 4  # replace existing notes, repair the clef
    with open(args.out, "w", encoding="utf-8") as f:
        json.dump(score, f, indent=1)


def report(args):
    with open(args.result, encoding="utf-8") as f:
        result = json.load(f)
    steps = result.get("dialog", {}).get("steps", [])
    if steps:
        init = steps[0]["lists"]
        print("The dialog opened with")
        print("  styles:   " + ", ".join(init.get("2002", {}).get("items", [])))
        print("  staves:   " + ", ".join(init.get("1020", {}).get("items", [])))
        print("  generate: " + ", ".join(init.get("1019", {}).get("items", [])))
        print("The user did:")
        for step in steps[1:]:
            print("  " + step["event"] + (" (" + step["note"] + ")" if step.get("note") else ""))
    for alert in result.get("alerts", []):
        print("Message: " + alert["text"].replace("\n", " "))
    print("Result of the command: %s; edits opened %d, closed %d; temporary file left: %s" % (
        result.get("result"), result["edits"]["started"], result["edits"]["ended"],
        result.get("temporary_file_left")))


def main():
    parser = argparse.ArgumentParser()
    sub = parser.add_subparsers(dest="command", required=True)
    s = sub.add_parser("scenario")
    s.add_argument("score")
    s.add_argument("grooves")
    s.add_argument("out")
    s.add_argument("--groove", required=True)
    s.add_argument("--style", choices=sorted(STYLES), default="percussion")
    s.add_argument("--measures", default="1-16")
    s.add_argument("--staff", type=int, default=0)
    r = sub.add_parser("report")
    r.add_argument("result")
    args = parser.parse_args()
    scenario(args) if args.command == "scenario" else report(args)


if __name__ == "__main__":
    sys.exit(main())
