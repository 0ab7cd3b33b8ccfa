"""Turns a score and the demo's options into a scenario for cantel-host, and
prints what the user saw once the run is done.

    compose.py check SCORE --measures FIRST-LAST [--staff N]
    compose.py scenario SCORE GROOVES_DIR OUT.json --groove NAME --style STYLE
               --measures FIRST-LAST [--staff N]
    compose.py report RESULT.json
"""
import argparse
import json
import os
import re
import sys

STYLES = {"percussion": 0, "normal": 1, "slash": 2}
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
# The lists of dialog 102 and the label that names each in the report.
LISTS = {"1019": 2003, "1020": 22, "2002": 2004}


def dialog_labels():
    """Control id -> the English label the user sees, from the plug-in's own
    resource files: dialog 102's controls and the texts they show."""
    with open(os.path.join(ROOT, "resources", "lang", "en.h"), encoding="utf-8") as f:
        texts = dict(re.findall(r'#define (RW_DLG_\w+) "([^"]*)"', f.read()))
    with open(os.path.join(ROOT, "resources", "dialog_ids.h"), encoding="utf-8") as f:
        ids = {name: int(value) for name, value in re.findall(r"#define (RW_ID_\w+) (\d+)", f.read())}
    with open(os.path.join(ROOT, "resources", "dialog102.rci"), encoding="utf-8") as f:
        controls = re.findall(r"CONTROL (RW_DLG_\w+), (RW_ID_\w+|-?\d+),", f.read())
    labels = {}
    for name, control in controls:
        cid = ids.get(control) if control.startswith("RW_ID_") else int(control)
        if name in texts and cid is not None:
            labels[cid] = texts[name].replace("&", "").strip()
    return labels


def load_score(path):
    with open(path, encoding="utf-8") as f:
        return json.load(f)


def measure_range(text):
    first, sep, last = text.partition("-")
    if not first.isdigit() or (sep and not last.isdigit()):
        raise ValueError("--measures takes FIRST-LAST, such as 1-16")
    return int(first), int(last if sep else first)


def check(args):
    """Every option that depends on the score, before anything is built."""
    try:
        score = load_score(args.score)
    except (OSError, ValueError) as e:
        return "cannot read the score %s: %s" % (args.score, e)
    measures = sum(run.get("count", 0) for run in score.get("measures", []))
    staves = len(score.get("staves", []))
    try:
        first, last = measure_range(args.measures)
    except ValueError as e:
        return str(e)
    if not 1 <= first <= last <= measures:
        return "--measures %s is not a range inside measures 1-%d of the score" % (args.measures, measures)
    if args.staff and not 1 <= args.staff <= staves:
        return "--staff %d: the score has staves 1-%d" % (args.staff, staves)
    return None


def scenario(args):
    score = load_score(args.score)
    first, last = measure_range(args.measures)
    staves = len(score.get("staves", [])) or 1
    score["groove_folder"] = os.path.relpath(args.grooves, os.path.dirname(os.path.abspath(args.out)))
    score["selection"] = {"start_slot": 1, "start_measure": first, "start_position": 0,
                          "end_slot": staves, "end_measure": last, "end_position": "end"}
    actions = [{"style": args.groove}]
    if args.staff:
        actions += [{"click": 22}, {"select": 1020, "row": args.staff - 1}]
    else:
        actions += [{"click": 21}]
    actions += [{"select": 1019, "row": STYLES[args.style]}]
    if not args.plain:
        # What the product does with a style by default, as a drummer would
        # play it: counted in, a fill closing every 4 measures and landing on
        # a crash (checked once fills are chosen), the second groove in turn
        # with the first, and the ending.
        actions += [{"click": 24}, {"select": 1021, "text": "4 measures"}, {"click": 25},
                    {"click": 23}]
    actions += [{"click": 1}]
    score["dialog"] = actions
    score["answers"] = ["yes"] * 4  # replace existing notes, repair the clef
    with open(args.out, "w", encoding="utf-8") as f:
        json.dump(score, f, indent=1)


def describe(step, labels):
    """A step of the dialog in the words on the screen."""
    event = step["event"]
    click = re.fullmatch(r"click (\d+)", event)
    if click:
        cid = int(click.group(1))
        return 'clicked "%s"' % labels.get(cid, "control %d" % cid)
    row = re.fullmatch(r'choose row (?:(\d+)|"(.*)") of (\d+)', event)
    if row:
        number, text, lid = row.groups()
        items = step.get("lists", {}).get(lid, {}).get("items", [])
        if number is not None and int(number) < len(items):
            text = items[int(number)]
        where = labels.get(LISTS.get(lid), "list %s" % lid).rstrip(":")
        return 'chose "%s" in the %s list' % (text if text is not None else "row " + number, where)
    style = re.fullmatch(r'choose style "(.*)"', event)
    if style:
        return 'chose the style "%s"' % style.group(1)
    return event


def report(args):
    with open(args.result, encoding="utf-8") as f:
        result = json.load(f)
    labels = dialog_labels()
    steps = result.get("dialog", {}).get("steps", [])
    if steps:
        init = steps[0]["lists"]
        print("The dialog opened with")
        print("  styles:   " + ", ".join(init.get("2002", {}).get("items", [])))
        print("  staves:   " + ", ".join(init.get("1020", {}).get("items", [])))
        print("  generate: " + ", ".join(init.get("1019", {}).get("items", [])))
        print("The user")
        for step in steps[1:]:
            print("  " + describe(step, labels) + (" (" + step["note"] + ")" if step.get("note") else ""))
    for alert in result.get("alerts", []):
        print("Message: " + alert["text"].replace("\n", " "))
    imports = result.get("imports", [])
    if imports:
        spans = []
        for placement in imports:
            first, last = placement["region"]["start_measure"], placement["region"]["end_measure"]
            spans.append(str(first) if first == last else "%d-%d" % (first, last))
        print("Placed %d times, in measures %s" % (len(imports), ", ".join(spans)))
    print("Result of the command: %s; edits opened %d, closed %d; temporary file left: %s" % (
        result.get("result"), result["edits"]["started"], result["edits"]["ended"],
        result.get("temporary_file_left")))


def main():
    parser = argparse.ArgumentParser()
    sub = parser.add_subparsers(dest="command", required=True)
    c = sub.add_parser("check")
    c.add_argument("score")
    c.add_argument("--measures", default="1-16")
    c.add_argument("--staff", type=int, default=0)
    s = sub.add_parser("scenario")
    s.add_argument("score")
    s.add_argument("grooves")
    s.add_argument("out")
    s.add_argument("--groove", required=True)
    s.add_argument("--style", choices=sorted(STYLES), default="percussion")
    s.add_argument("--measures", default="1-16")
    s.add_argument("--staff", type=int, default=0)
    s.add_argument("--plain", action="store_true", help="the groove alone, no other part")
    r = sub.add_parser("report")
    r.add_argument("result")
    args = parser.parse_args()
    if args.command == "check":
        problem = check(args)
        if problem:
            print("demo: " + problem, file=sys.stderr)
            return 2
        return 0
    scenario(args) if args.command == "scenario" else report(args)
    return 0


if __name__ == "__main__":
    sys.exit(main())
