"""Reads a groove description (.groove) into a timed list of drum notes.

A description is plain text, one pattern per file; grooves/README.md is the
author's guide. The reader is strict on purpose: a mistake in a pattern must
stop the build rather than ship a groove that the plug-in would place with
the wrong meter or length.
"""

import random
import re
from dataclasses import dataclass, field

DEFAULT_DIVISION = 480

# General MIDI drum keys (35 to 81) by the short names the descriptions use.
DRUM_KEYS = {
    "ABD": 35, "BD": 36, "SS": 37, "SN": 38, "CP": 39, "ES": 40,
    "LFT": 41, "HH": 42, "HFT": 43, "PH": 44, "LT": 45, "OH": 46,
    "LMT": 47, "HMT": 48, "CR": 49, "HT": 50, "RD": 51, "CN": 52,
    "RB": 53, "TB": 54, "SP": 55, "CB": 56, "CR2": 57, "VS": 58,
    "RD2": 59, "HB": 60, "LB": 61, "MHC": 62, "OHC": 63, "LC": 64,
    "HTI": 65, "LTI": 66, "HA": 67, "LA": 68, "CA": 69, "MA": 70,
    "SWH": 71, "LWH": 72, "SG": 73, "LG": 74, "CL": 75, "HWB": 76,
    "LWB": 77, "MCU": 78, "OCU": 79, "MTR": 80, "OTR": 81,
}
LOWEST_DRUM_KEY = 35
HIGHEST_DRUM_KEY = 81

# Accent marks and their velocities; digits 1 to 9 give finer steps.
ACCENTS = {"X": 112, "x": 88, "o": 42}
REST_MARKS = ".-"
GRID_SEPARATORS = re.compile(r"[\s|]+")
# How far a played velocity strays from its mark, so that repeated strokes
# do not sound machine-made. Seeded by the groove's name: the same
# description always gives the same bytes.
VELOCITY_SPREAD = 6

# The plug-in drops a last measure whose final drum event lies in its first
# 70 percent; the generator applies the same rule to check each pattern.
TRAILING_STROKE_PERCENT = 70


class GrooveError(Exception):
    """A description that cannot become a correct groove file."""


@dataclass
class Note:
    tick: int
    length: int
    key: int
    velocity: int


@dataclass
class Groove:
    name: str
    numerator: int
    denominator: int
    tempo_bpm: float
    division: int
    measures: int
    notes: list = field(default_factory=list)

    @property
    def ticks_per_beat(self):
        return self.division * 4 // self.denominator

    @property
    def ticks_per_measure(self):
        return self.numerator * self.ticks_per_beat

    @property
    def total_ticks(self):
        return self.measures * self.ticks_per_measure

    @property
    def file_name(self):
        return self.name + ".mid"


def measure_count_by_plugin_rule(last_event_tick, ticks_per_measure):
    """Groove length in measures as the plug-in derives it from the tick of
    the last drum event (note on or note off)."""
    measure = last_event_tick // ticks_per_measure + 1
    within = last_event_tick % ticks_per_measure
    if within * 100 // ticks_per_measure < TRAILING_STROKE_PERCENT and measure >= 2:
        measure -= 1
    return measure


def velocity_of(mark):
    if mark in ACCENTS:
        return ACCENTS[mark]
    if mark.isdigit() and mark != "0":
        return round(int(mark) * 127 / 9)
    return None


def key_of(instrument):
    if instrument.isdigit():
        key = int(instrument)
    elif instrument.upper() in DRUM_KEYS:
        key = DRUM_KEYS[instrument.upper()]
    else:
        raise GrooveError(f"unknown instrument '{instrument}'")
    if not LOWEST_DRUM_KEY <= key <= HIGHEST_DRUM_KEY:
        raise GrooveError(f"key {key} is not a General MIDI drum key (35 to 81)")
    return key


class _Reader:
    """Line-by-line state of one description."""

    HEADER_KEYS = ("name", "meter", "tempo", "division", "measures")

    def __init__(self, source):
        self.source = source
        self.header = {}
        self.blocks = {}  # measure number -> {key: (instrument, grid)}
        self.current = None

    def fail(self, line_number, message):
        raise GrooveError(f"{self.source}:{line_number}: {message}")

    def read(self, text):
        for number, raw in enumerate(text.splitlines(), start=1):
            line = raw.split("#", 1)[0].strip()
            if not line:
                continue
            try:
                self._read_line(number, line)
            except GrooveError as error:
                if str(error).startswith(self.source):
                    raise
                self.fail(number, str(error))

    def _read_line(self, number, line):
        header = re.fullmatch(r"([a-z]+)\s*:\s*(.+)", line)
        if header:
            key, value = header.groups()
            if key not in self.HEADER_KEYS:
                self.fail(number, f"unknown setting '{key}'")
            if key in self.header:
                self.fail(number, f"'{key}' given twice")
            if self.blocks:
                self.fail(number, f"'{key}' must come before the first measure")
            self.header[key] = value.strip()
            return
        block = re.fullmatch(r"measure\s+(\d+)(?:\s+like\s+(\d+))?", line)
        if block:
            self._start_measure(number, int(block.group(1)), block.group(2))
            return
        if self.current is None:
            self.fail(number, "an instrument line needs a 'measure N' line above it")
        parts = line.split(None, 1)
        if len(parts) < 2:
            self.fail(number, f"instrument '{parts[0]}' has no grid")
        instrument, grid = parts[0], GRID_SEPARATORS.sub("", parts[1])
        key = key_of(instrument)
        if key in self.current["set_here"]:
            self.fail(number, f"key {key} ({instrument}) given twice in this measure")
        for mark in grid:
            if mark not in REST_MARKS and velocity_of(mark) is None:
                self.fail(number, f"'{mark}' is not a stroke mark (X x o 1-9) or a rest (. -)")
        self.current["lines"][key] = (instrument, grid, number)
        self.current["set_here"].add(key)

    def _start_measure(self, number, measure, like):
        if measure in self.blocks:
            self.fail(number, f"measure {measure} is described twice")
        lines = {}
        if like is not None:
            model = int(like)
            if model not in self.blocks:
                self.fail(number, f"measure {measure} is like measure {model}, "
                                  "which is not described above it")
            lines = dict(self.blocks[model]["lines"])
        self.current = {"lines": lines, "set_here": set()}
        self.blocks[measure] = self.current


def _parse_meter(text):
    match = re.fullmatch(r"(\d+)\s*/\s*(\d+)", text)
    if not match:
        raise GrooveError(f"meter '{text}' is not like 4/4")
    numerator, denominator = int(match.group(1)), int(match.group(2))
    if not 1 <= numerator <= 32 or denominator not in (1, 2, 4, 8, 16, 32):
        raise GrooveError(f"meter {text} is not supported")
    return numerator, denominator


def _whole_number(header, key, low, high, default=None):
    if key not in header:
        if default is None:
            raise GrooveError(f"'{key}:' is missing")
        return default
    text = header[key]
    if not text.isdigit() or not low <= int(text) <= high:
        raise GrooveError(f"'{key}: {text}' must be a whole number from {low} to {high}")
    return int(text)


def _tempo(header):
    text = header.get("tempo")
    if text is None:
        raise GrooveError("'tempo:' is missing")
    try:
        bpm = float(text)
    except ValueError:
        raise GrooveError(f"'tempo: {text}' is not a number") from None
    if not 20 <= bpm <= 400:
        raise GrooveError(f"'tempo: {text}' must lie from 20 to 400 quarter notes a minute")
    return bpm


def _place_notes(reader, groove):
    """Turns the measure blocks into notes. Each note sounds for seven eighths
    of its grid step, so that every note-off lies before the next step and the
    last one stays inside the groove's last measure."""
    humanise = random.Random(groove.name)
    tpm = groove.ticks_per_measure
    for measure in range(1, groove.measures + 1):
        if measure not in reader.blocks:
            raise GrooveError(f"{reader.source}: measure {measure} is not described")
        for key, (instrument, grid, line) in sorted(reader.blocks[measure]["lines"].items()):
            if not grid or tpm % len(grid):
                reader.fail(line, f"{instrument}: a grid of {len(grid)} steps does not divide "
                                  f"a measure of {tpm} ticks evenly")
            step = tpm // len(grid)
            start = (measure - 1) * tpm
            for index, mark in enumerate(grid):
                velocity = velocity_of(mark)
                if velocity is None:
                    continue
                played = velocity + humanise.randint(-VELOCITY_SPREAD, VELOCITY_SPREAD)
                groove.notes.append(Note(start + index * step, step - step // 8, key,
                                         max(1, min(127, played))))
    extra = sorted(set(reader.blocks) - set(range(1, groove.measures + 1)))
    if extra:
        raise GrooveError(f"{reader.source}: measure {extra[0]} lies beyond "
                          f"'measures: {groove.measures}'")


def _check_length(source, groove):
    if not groove.notes:
        raise GrooveError(f"{source}: the pattern has no strokes")
    last_event = max(note.tick + note.length for note in groove.notes)
    counted = measure_count_by_plugin_rule(last_event, groove.ticks_per_measure)
    if counted != groove.measures:
        raise GrooveError(
            f"{source}: the plug-in would take this groove as {counted} measure(s), not "
            f"{groove.measures}: the last stroke of the last measure must end in its "
            f"final {100 - TRAILING_STROKE_PERCENT} percent")


def parse_groove(text, source="<description>"):
    reader = _Reader(source)
    reader.read(text)
    header = reader.header
    try:
        if "name" not in header:
            raise GrooveError("'name:' is missing")
        if re.search(r'[\\/:*?"<>|]', header["name"]):
            raise GrooveError(f"name '{header['name']}' cannot be a file name")
        numerator, denominator = _parse_meter(header.get("meter", ""))
        groove = Groove(
            name=header["name"],
            numerator=numerator,
            denominator=denominator,
            tempo_bpm=_tempo(header),
            division=_whole_number(header, "division", 24, 32767, DEFAULT_DIVISION),
            measures=_whole_number(header, "measures", 1, 64),
        )
    except GrooveError as error:
        raise GrooveError(f"{source}: {error}") from None
    if groove.division * 4 % denominator:
        raise GrooveError(f"{source}: a division of {groove.division} cannot "
                          f"express a 1/{denominator} beat")
    _place_notes(reader, groove)
    _check_length(source, groove)
    return groove


def read_groove_file(path):
    with open(path, encoding="utf-8") as handle:
        return parse_groove(handle.read(), str(path))
