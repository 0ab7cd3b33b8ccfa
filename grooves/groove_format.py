"""Reads a style description (.groove) into timed lists of drum notes.

A description is plain text, one style per file: its main groove and,
optionally, a variation, a count-in, a fill and an ending in sections of
their own, so that an author reads the whole style in one place;
grooves/README.md is the author's guide.
The reader is strict on purpose: a mistake in a pattern must stop the build
rather than ship a groove that the plug-in would place with the wrong meter
or length.
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


@dataclass(frozen=True)
class PartKind:
    """One kind of part a style may have. Its name is the section keyword of
    a description and the word of "measure N like NAME M"; its folder is the
    subfolder of the groove folder that holds its file, named like the style
    (the plug-in lists only the top folder, so only main grooves show as
    styles)."""

    name: str
    folder: str
    settings: tuple


# Every kind of part, in the order a style lists them. The main groove sets
# what the style shares (its name and division); the others may restate its
# meter, have their own tempo and length, and an ending may say how it stops.
SHARED_SETTINGS = ("meter", "tempo", "measures")
PART_KINDS = (
    PartKind("main", "", ("name", "meter", "tempo", "division", "measures")),
    PartKind("variation", "Variations", SHARED_SETTINGS),
    PartKind("count-in", "Count-ins", SHARED_SETTINGS),
    PartKind("fill", "Fills", SHARED_SETTINGS),
    PartKind("ending", "Endings", SHARED_SETTINGS + ("finish",)),
)
PARTS = {kind.name: kind for kind in PART_KINDS}
SECTION_KEYWORDS = tuple(kind.name for kind in PART_KINDS if kind.name != "main")
ALL_SETTINGS = tuple(dict.fromkeys(key for kind in PART_KINDS for key in kind.settings))

# How an ending stops: on a crash left to ring (the usual last hit), or dry,
# the cymbals silent, as a tango or a stop-time figure ends.
FINISHES = ("crash", "dry")


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
    part: str = "main"
    finish: str = None  # an ending's last hit, one of FINISHES

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
        """Path relative to the groove folder, with '/' between folders."""
        folder = PARTS[self.part].folder
        return (folder + "/" if folder else "") + self.name + ".mid"

    @property
    def title(self):
        return self.name if self.part == "main" else f"{self.name} ({self.part})"


@dataclass
class Style:
    """A main groove and the companions its description has, all of one
    meter, by the name of their kind."""

    grooves: dict

    @property
    def main(self):
        return self.grooves["main"]

    def part(self, kind):
        """The style's groove of that kind, or None when it has none."""
        if kind not in PARTS:
            raise KeyError(f"no part is called '{kind}'")
        return self.grooves.get(kind)

    @property
    def parts(self):
        return [self.grooves[kind.name] for kind in PART_KINDS if kind.name in self.grooves]


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


class _Section:
    """The settings and measure blocks of one part of a style."""

    def __init__(self, part):
        self.part = part
        self.header = {}
        self.blocks = {}  # measure number -> {"lines": {key: (instrument, grid, line)}}


class _Reader:
    """Line-by-line state of one description."""

    def __init__(self, source):
        self.source = source
        self.sections = {"main": _Section("main")}
        self.section = self.sections["main"]
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
        if line in SECTION_KEYWORDS:
            self._start_section(number, line)
            return
        header = re.fullmatch(r"([a-z]+)\s*:\s*(.+)", line)
        if header:
            self._read_setting(number, *header.groups())
            return
        block = re.fullmatch(r"measure\s+(\d+)(?:\s+like\s+(?:([a-z-]+)\s+)?(\d+))?", line)
        if block:
            self._start_measure(number, int(block.group(1)), block.group(2), block.group(3))
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

    def _start_section(self, number, part):
        if part in self.sections:
            self.fail(number, f"the {part} is described twice")
        if not self.sections["main"].blocks:
            self.fail(number, f"the {part} must follow the main groove's measures")
        self.section = self.sections[part] = _Section(part)
        self.current = None

    def _read_setting(self, number, key, value):
        section = self.section
        if key not in ALL_SETTINGS:
            self.fail(number, f"unknown setting '{key}'")
        if key not in PARTS[section.part].settings:
            if key in PARTS["main"].settings:
                self.fail(number, f"'{key}' belongs to the main groove; "
                                  f"the {section.part} shares it")
            owners = " or ".join(kind.name for kind in PART_KINDS if key in kind.settings)
            self.fail(number, f"'{key}' is a setting of the {owners}, not of the {section.part}")
        if key in section.header:
            self.fail(number, f"'{key}' given twice")
        if section.blocks:
            self.fail(number, f"'{key}' must come before the first measure")
        section.header[key] = value.strip()

    def _start_measure(self, number, measure, like_part, like):
        section = self.section
        if measure in section.blocks:
            self.fail(number, f"measure {measure} is described twice")
        lines = {}
        if like is not None:
            model_part = like_part or section.part
            if model_part not in PARTS:
                self.fail(number, f"'like {model_part} {like}': a measure can be like one of "
                                  + ", ".join(kind.name for kind in PART_KINDS))
            model_section = self.sections.get(model_part)
            if model_section is None:
                self.fail(number, f"measure {measure} is like the {model_part}, "
                                  "which is not described above it")
            model = int(like)
            if model not in model_section.blocks:
                where = "" if model_section is section else f"{model_part} "
                self.fail(number, f"measure {measure} is like {where}measure {model}, "
                                  "which is not described above it")
            lines = dict(model_section.blocks[model]["lines"])
        self.current = {"lines": lines, "set_here": set()}
        section.blocks[measure] = self.current


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


def _place_notes(section, reader, groove, where):
    """Turns the measure blocks into notes. Each note sounds for seven eighths
    of its grid step, so that every note-off lies before the next step and the
    last one stays inside the groove's last measure."""
    # The main groove's seed is the name alone, so that its bytes do not
    # change when a companion is added to its description.
    humanise = random.Random(groove.name if groove.part == "main"
                             else f"{groove.name}/{groove.part}")
    tpm = groove.ticks_per_measure
    for measure in range(1, groove.measures + 1):
        if measure not in section.blocks:
            raise GrooveError(f"{where}: measure {measure} is not described")
        for key, (instrument, grid, line) in sorted(section.blocks[measure]["lines"].items()):
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
    extra = sorted(set(section.blocks) - set(range(1, groove.measures + 1)))
    if extra:
        raise GrooveError(f"{where}: measure {extra[0]} lies beyond "
                          f"'measures: {groove.measures}'")


def _check_length(where, groove):
    """The plug-in measures every companion by the same rule as a main
    groove, so each part is held to the length its description states."""
    if not groove.notes:
        raise GrooveError(f"{where}: the pattern has no strokes")
    last_event = max(note.tick + note.length for note in groove.notes)
    counted = measure_count_by_plugin_rule(last_event, groove.ticks_per_measure)
    if counted != groove.measures:
        raise GrooveError(
            f"{where}: the plug-in would take this groove as {counted} measure(s), not "
            f"{groove.measures}: the last stroke of the last measure must end in its "
            f"final {100 - TRAILING_STROKE_PERCENT} percent")


def _main_groove(header):
    if "name" not in header:
        raise GrooveError("'name:' is missing")
    if re.search(r'[\\/:*?"<>|]', header["name"]):
        raise GrooveError(f"name '{header['name']}' cannot be a file name")
    numerator, denominator = _parse_meter(header.get("meter", ""))
    return Groove(
        name=header["name"],
        numerator=numerator,
        denominator=denominator,
        tempo_bpm=_tempo(header),
        division=_whole_number(header, "division", 24, 32767, DEFAULT_DIVISION),
        measures=_whole_number(header, "measures", 1, 64),
    )


def _companion(header, part, main):
    # The plug-in places a companion only into measures that take its main
    # groove; one meter for the whole style keeps that always true.
    if "meter" in header:
        meter = _parse_meter(header["meter"])
        if meter != (main.numerator, main.denominator):
            raise GrooveError(f"the {part}'s meter {meter[0]}/{meter[1]} is not the main "
                              f"groove's {main.numerator}/{main.denominator}")
    return Groove(
        name=main.name,
        numerator=main.numerator,
        denominator=main.denominator,
        tempo_bpm=_tempo(header) if "tempo" in header else main.tempo_bpm,
        division=main.division,
        measures=_whole_number(header, "measures", 1, 64),
        part=part,
        finish=_finish(header) if part == "ending" else None,
    )


def _finish(header):
    finish = header.get("finish", FINISHES[0])
    if finish not in FINISHES:
        raise GrooveError(f"'finish: {finish}' must be one of " + ", ".join(FINISHES))
    return finish


def parse_style(text, source="<description>"):
    """The main groove and its companions, each checked as the plug-in will
    check its file."""
    reader = _Reader(source)
    reader.read(text)
    grooves = {}
    for part, section in reader.sections.items():
        where = source if part == "main" else f"{source} ({part})"
        try:
            if part == "main":
                grooves[part] = _main_groove(section.header)
            else:
                grooves[part] = _companion(section.header, part, grooves["main"])
        except GrooveError as error:
            raise GrooveError(f"{where}: {error}") from None
        groove = grooves[part]
        if groove.division * 4 % groove.denominator:
            raise GrooveError(f"{where}: a division of {groove.division} cannot "
                              f"express a 1/{groove.denominator} beat")
        _place_notes(section, reader, groove, where)
        _check_length(where, groove)
    return Style({kind.name: grooves[kind.name] for kind in PART_KINDS if kind.name in grooves})


def parse_groove(text, source="<description>"):
    """The main groove alone."""
    return parse_style(text, source).main


def read_style_file(path):
    with open(path, encoding="utf-8") as handle:
        return parse_style(handle.read(), str(path))
