"""Writes a Groove as the Standard MIDI File the plug-in expects.

Format 1 with two tracks: track 1 carries the tempo and the meter, track 2
the drums on channel 10. The drum track repeats the time signature at time 0
because the plug-in counts each track's measures under that track's own
meter (starting from 4/4): without it a 3/4 or 6/8 groove would be measured
in 4/4 and placed with the wrong length.
"""

import struct

DRUM_NOTE_ON = 0x99
DRUM_NOTE_OFF = 0x89
NOTE_OFF_VELOCITY = 0x40
META = 0xFF
META_TRACK_NAME = 0x03
META_END_OF_TRACK = 0x2F
META_TEMPO = 0x51
META_TIME_SIGNATURE = 0x58
DRUM_TRACK_NAME = "Drums"


def variable_length(value):
    """A MIDI variable-length quantity: seven bits a byte, high bit = more."""
    if value < 0:
        raise ValueError("negative delta time")
    out = [value & 0x7F]
    value >>= 7
    while value:
        out.append(0x80 | (value & 0x7F))
        value >>= 7
    return bytes(reversed(out))


def meta_event(kind, data):
    return bytes([META, kind]) + variable_length(len(data)) + data


def time_signature_data(numerator, denominator):
    exponent = denominator.bit_length() - 1
    # MIDI clocks (24 a quarter) per metronome click: a dotted quarter in
    # compound meters such as 6/8 and 12/8, else one beat.
    if denominator == 8 and numerator % 3 == 0 and numerator > 3:
        clocks = 36
    else:
        clocks = 96 // denominator
    return bytes([numerator, exponent, clocks, 8])


def tempo_data(bpm):
    microseconds = round(60_000_000 / bpm)
    return microseconds.to_bytes(3, "big")


def track_chunk(timed_events):
    """timed_events: (absolute tick, event bytes) in playing order."""
    body = bytearray()
    now = 0
    for tick, event in timed_events:
        body += variable_length(tick - now) + event
        now = tick
    return b"MTrk" + struct.pack(">I", len(body)) + bytes(body)


def conductor_track(groove):
    meter = time_signature_data(groove.numerator, groove.denominator)
    return track_chunk([
        (0, meta_event(META_TRACK_NAME, groove.title.encode("latin-1", "replace"))),
        (0, meta_event(META_TEMPO, tempo_data(groove.tempo_bpm))),
        (0, meta_event(META_TIME_SIGNATURE, meter)),
        (groove.total_ticks, meta_event(META_END_OF_TRACK, b"")),
    ])


def drum_track(groove):
    meter = time_signature_data(groove.numerator, groove.denominator)
    # At one tick a note-off goes before a note-on, so that a key struck
    # again is released first.
    strokes = []
    for note in groove.notes:
        strokes.append((note.tick, 1, note.key, bytes([DRUM_NOTE_ON, note.key, note.velocity])))
        strokes.append((note.tick + note.length, 0, note.key,
                        bytes([DRUM_NOTE_OFF, note.key, NOTE_OFF_VELOCITY])))
    strokes.sort(key=lambda stroke: stroke[:3])
    events = [
        (0, meta_event(META_TRACK_NAME, DRUM_TRACK_NAME.encode("ascii"))),
        (0, meta_event(META_TIME_SIGNATURE, meter)),
    ]
    events += [(tick, event) for tick, _, _, event in strokes]
    events.append((groove.total_ticks, meta_event(META_END_OF_TRACK, b"")))
    return track_chunk(events)


def smf_bytes(groove):
    header = b"MThd" + struct.pack(">IHHH", 6, 1, 2, groove.division)
    return header + conductor_track(groove) + drum_track(groove)
