"""rwgroove says what the command says: for every scenario that refuses a
groove given as commented bytes, whatever the measures, rwgroove inspect
refuses the same file with the same messages, in the same order.

    verdicts_agree.py --rwgroove EXE SCENARIO.json...

A refusal that depends on the selected measures (their meter, string 21, or
where the drums begin, string 29) is the command's alone: rwgroove judges a
file for the measures that suit it best.
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile

REGION_DEPENDENT = {"Error: the time signature from the Midi file doesn't match.",
                    "The drums of this Midi file begin after the selected measures"}


def file_bytes(groove):
    return bytes(int(word, 16) for line in groove["bytes"] for word in line.split("//")[0].split())


def expected_messages(scenario):
    alerts = scenario.get("expect", {}).get("/alerts")
    if not isinstance(alerts, list) or scenario["expect"].get("/result") != 0:
        return None
    texts = [alert["text"] for alert in alerts]
    if any(text.startswith(prefix) for text in texts for prefix in REGION_DEPENDENT):
        return None
    return texts


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rwgroove", required=True)
    parser.add_argument("scenarios", nargs="+")
    args = parser.parse_args()
    checked = failed = 0
    with tempfile.TemporaryDirectory() as work:
        for path in args.scenarios:
            with open(path, encoding="utf-8") as f:
                scenario = json.load(f)
            grooves = [g for g in scenario.get("groove_files", []) if "bytes" in g]
            messages = expected_messages(scenario)
            if len(grooves) != 1 or messages is None:
                continue
            file = os.path.join(work, "groove.mid")
            with open(file, "wb") as f:
                f.write(file_bytes(grooves[0]))
            run = subprocess.run([args.rwgroove, "inspect", file, "--json"], capture_output=True, text=True)
            said = json.loads(run.stdout).get("messages") if run.stdout else None
            checked += 1
            if run.returncode != 1 or said != messages:
                failed += 1
                print(f"{os.path.basename(path)}: the command shows {messages}, rwgroove "
                      f"(exit {run.returncode}) {said}")
    print(f"verdicts agree: {checked - failed} of {checked} refused files")
    return 1 if failed or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
