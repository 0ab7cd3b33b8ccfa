"""Played performances of the tests' authored grooves (make_played_groove),
each placed through the reference host with the dialog's defaults: the
groove written straight. Of the notes the host writes, at least 98 % must
lie on the grid of their beat (sixteenths or eighth triplets, from the beat),
none on a key outside 35 to 81, and at least 95 % of the strokes the
drummer played (a flam's two strokes counting as one) must still be there.

    played_grooves_placed.py --make EXE --cantel-host EXE --plugin LIB --work DIR
"""
import argparse
import json
import pathlib
import subprocess
import sys

SEEDS = (1, 7, 23)
QUARTER = 1024  # the host's duration units
ON_GRID = 0.98
KEPT = 0.95
FLAM = 40  # ms: a grace stroke this close before one of its key is the same stroke


def played_strokes(path):
    """Sounding channel-10 note-ons of a format-1 file: (tick, key), the
    division and the meter."""
    data = pathlib.Path(path).read_bytes()
    division = int.from_bytes(data[12:14], "big")
    tracks = int.from_bytes(data[10:12], "big")
    position, strokes, meter, tempo = 14, [], (4, 4), 500000
    for _ in range(tracks):
        length = int.from_bytes(data[position + 4:position + 8], "big")
        at, end, tick, running = position + 8, position + 8 + length, 0, 0
        while at < end:
            delta = 0
            while True:
                byte = data[at]
                at += 1
                delta = (delta << 7) | (byte & 0x7F)
                if byte < 0x80:
                    break
            tick += delta
            if data[at] == 0xFF:
                kind, size = data[at + 1], data[at + 2]
                payload = data[at + 3:at + 3 + size]
                if kind == 0x58:
                    meter = (payload[0], 1 << payload[1])
                if kind == 0x51:
                    tempo = int.from_bytes(payload, "big")
                at += 3 + size
                continue
            if data[at] >= 0x80:
                running = data[at]
                at += 1
            first, second = data[at], data[at + 1] if (running >> 4) not in (0xC, 0xD) else 0
            at += 2 if (running >> 4) not in (0xC, 0xD) else 1
            if running == 0x99 and second > 0:
                strokes.append((tick, first))
        position = end
    return strokes, division, meter, tempo


def distinct_strokes(strokes, division, tempo):
    """A flam's grace stroke merged into the stroke it leads."""
    ticks_per_ms = division * 1000 / tempo
    kept, last = [], {}
    for tick, key in sorted(strokes):
        key = {22: 42, 26: 46}.get(key, key)
        if key in last and tick - last[key] <= FLAM * ticks_per_ms:
            continue
        last[key] = tick
        kept.append((tick, key))
    return kept


def measure_run(meter, count):
    numerator, denominator = meter
    if denominator == 8 and numerator % 3 == 0:
        return {"count": count, "beats": numerator // 3, "beat_duration": 3 * 512}
    return {"count": count, "beats": numerator, "beat_duration": 4096 // denominator}


def on_grid(position, meter):
    """Sixteenths from the beat, or in a simple meter eighth triplets."""
    numerator, denominator = meter
    compound = denominator == 8 and numerator % 3 == 0
    beat = 3 * QUARTER // 2 if compound else QUARTER
    within = position % beat
    if within % (QUARTER // 4) == 0:
        return True
    third = QUARTER / 3
    return not compound and any(abs(within - k * third) < 1 for k in (1, 2))


def check(args, name, seed, work):
    groove = work / f"{name} {seed}"
    groove.mkdir(parents=True, exist_ok=True)
    subprocess.run([args.make, name, str(seed), str(groove / "Played.mid")], check=True)
    strokes, division, meter, tempo = played_strokes(groove / "Played.mid")
    per_measure = division * 4 * meter[0] // meter[1]
    measures = max(tick for tick, _ in strokes) // per_measure + 1
    scenario = {
        "measures": [measure_run(meter, measures)],
        "staves": [{"name": "Piano"}],
        "percussion_map": True,
        "records": [{"tag": "fcbg", "number": 12, "words": [65526, 139, 0, 65530, 0, 0, 4, 24, 0, 2]}],
        "groove_folder": groove.name,
        "selection": {"start_slot": 1, "start_measure": 1, "end_slot": 1,
                      "end_measure": measures, "end_position": "end"},
        "dialog": [{"style": "Played"}, {"click": 21}, {"click": 1}],
    }
    (work / f"{groove.name}.json").write_text(json.dumps(scenario))
    result_file = work / f"{groove.name}.result.json"
    subprocess.run([args.cantel_host, "run", str(work / f"{groove.name}.json"), "--plugin",
                    args.plugin, "--out", str(result_file)], check=True)
    result = json.loads(result_file.read_text())
    problems = []
    if result.get("result") != 1 or result.get("alerts"):
        return [f"not placed: {result.get('alerts')}"]
    slot = result["imports"][0]["region"]["start_slot"]
    staff = next(s for s in result["score"]["staves"] if s["slot"] == slot)
    notes = [(e["measure"], e["position"], key) for e in staff["entries"]
             if e["flags"] & 0x40000000 for key in e["keys"]]
    placed = len(notes)
    gridded = sum(on_grid(position, meter) for _, position, _ in notes)
    if gridded < ON_GRID * placed:
        problems.append(f"{gridded} of {placed} notes on the grid of their beat")
    outside = sorted({key for _, _, key in notes if not 35 <= key <= 81})
    if outside:
        problems.append(f"keys outside 35 to 81 placed: {outside}")
    # The strokes each placement could take: those of the groove's measures
    # it covers, the first of them from the groove's start.
    played = distinct_strokes(strokes, division, tempo)
    expected = 0
    for placement in result["imports"]:
        covered = placement["region"]["end_measure"] - placement["region"]["start_measure"] + 1
        expected += sum(tick < covered * per_measure for tick, _ in played)
    kept = placed / max(1, expected)
    if kept < KEPT:
        problems.append(f"{placed} notes placed for {expected} strokes played")
    print(f"{name} {seed}: {gridded}/{placed} on the grid, {kept:.0%} of the strokes kept")
    return problems


def main():
    parser = argparse.ArgumentParser()
    for option in ("--make", "--cantel-host", "--plugin", "--work"):
        parser.add_argument(option, required=True)
    args = parser.parse_args()
    work = pathlib.Path(args.work)
    work.mkdir(parents=True, exist_ok=True)
    names = subprocess.run([args.make, "--list"], check=True, capture_output=True,
                           text=True).stdout.split()
    failed = 0
    for name in names:
        for seed in SEEDS:
            for problem in check(args, name, seed, work):
                print(f"FAILED: {name} {seed}: {problem}")
                failed += 1
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
