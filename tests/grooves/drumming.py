"""What one drummer on a kit can play, checked on the notes of a style.

A starter groove is written on a drum-set staff, so every part must be
playable by two hands and two feet, and its companions must do their job
where the plug-in places them: a count-in fills exactly the measure before
the groove, an ending stops on a downbeat. style_faults() lists every
breach, one line each; an empty list means the style passes.
"""

import dataclasses

GM_DRUM_KEYS = range(35, 82)
KICKS = frozenset({35, 36})
CLOSED_HI_HAT, PEDAL_HI_HAT, OPEN_HI_HAT = 42, 44, 46
# The feet play the kick and the hi-hat pedal; every other key takes a hand.
FEET = KICKS | {PEDAL_HI_HAT}
HANDS = 2
# One pair of cymbals: struck closed, struck open, or closed by the foot,
# never two of these at once.
HI_HAT = {CLOSED_HI_HAT: "closed hi-hat", PEDAL_HI_HAT: "hi-hat foot", OPEN_HI_HAT: "open hi-hat"}
# One snare drum: a cross-stick lays the stick across the head, which then
# cannot be struck as well.
SIDE_STICK, SNARE = 37, 38
CRASHES = frozenset({49, 57})
# A count-in that stops early leaves a gap before the groove's first beat:
# like the plug-in's length rule, its last event must end in the final
# 30 percent of its measure.
LATE_IN_MEASURE_PERCENT = 70


def position(groove, tick):
    """'measure M beat B' with B a fraction where the tick falls between beats."""
    measure, within = divmod(tick, groove.ticks_per_measure)
    beat = within / groove.ticks_per_beat + 1
    return f"measure {measure + 1} beat {beat:g}"


def strokes_by_step(notes):
    steps = {}
    for note in notes:
        steps.setdefault(note.tick, []).append(note.key)
    return steps


def limb_faults(groove):
    faults = []
    for tick, keys in sorted(strokes_by_step(groove.notes).items()):
        hands = sorted(key for key in keys if key not in FEET)
        if len(hands) > HANDS:
            faults.append(f"{position(groove, tick)} asks for {len(hands)} hands "
                          f"(keys {', '.join(map(str, hands))})")
        hi_hat = [HI_HAT[key] for key in sorted(set(keys)) if key in HI_HAT]
        if len(hi_hat) > 1:
            faults.append(f"{position(groove, tick)} plays one hi-hat as "
                          + " and ".join(hi_hat))
        if SIDE_STICK in keys and SNARE in keys:
            faults.append(f"{position(groove, tick)} asks one snare for a cross-stick "
                          "and a stroke on its head")
    return faults


def key_faults(groove):
    outside = sorted({note.key for note in groove.notes if note.key not in GM_DRUM_KEYS})
    return [f"key {key} is not a General MIDI drum key (35 to 81)" for key in outside]


def ending_faults(groove):
    downbeat = (groove.measures - 1) * groove.ticks_per_measure
    keys = set(strokes_by_step(groove.notes).get(downbeat, []))
    last = position(groove, downbeat)
    faults = []
    if not keys & KICKS:
        faults.append(f"the last measure does not start with the kick on {last}")
    if groove.finish == "dry":
        if any(note.key in CRASHES and note.tick >= downbeat for note in groove.notes):
            faults.append("a dry ending lets a crash ring in its last measure")
    elif not keys & CRASHES:
        faults.append(f"the last measure does not start with a crash on {last} "
                      "(or say 'finish: dry')")
    return faults


def count_in_faults(groove):
    if groove.measures != 1:
        return [f"a count-in of {groove.measures} measures, not 1"]
    last_event = max((note.tick + note.length for note in groove.notes), default=0)
    if last_event * 100 < LATE_IN_MEASURE_PERCENT * groove.ticks_per_measure:
        return [f"the count-in falls silent at {position(groove, last_event)}, "
                "before the last 30 percent of its measure"]
    return []


def variation_faults(groove, main):
    if groove.measures != main.measures:
        return [f"{groove.measures} measure(s), the main groove {main.measures}"]
    if {(n.tick, n.key) for n in groove.notes} == {(n.tick, n.key) for n in main.notes}:
        return ["plays the main groove's strokes, no variation"]
    return []


def part_faults(groove, main):
    faults = key_faults(groove) + limb_faults(groove)
    if (groove.numerator, groove.denominator) != (main.numerator, main.denominator):
        faults.append(f"meter {groove.numerator}/{groove.denominator}, the main groove "
                      f"{main.numerator}/{main.denominator}")
    if groove.part == "ending":
        faults += ending_faults(groove)
    elif groove.part == "count-in":
        faults += count_in_faults(groove)
    elif groove.part == "variation":
        faults += variation_faults(groove, main)
    return faults


def style_faults(style):
    return [f"{groove.title}: {fault}"
            for groove in style.parts for fault in part_faults(groove, style.main)]


def with_notes(groove, notes):
    """The groove as its description states it, holding other notes (those
    read back from its file)."""
    return dataclasses.replace(groove, notes=list(notes))
