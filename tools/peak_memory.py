#!/usr/bin/env python3
"""Peak memory of `rwgroove inspect` on large grooves, against the target of
four times the file's size (the plug-in's own buffer is already twice it).

    tools/peak_memory.py [--rwgroove EXE] [--megabytes 100] [--work DIR]

Writes three files of about that size and runs `rwgroove inspect --json` on
each, reading its peak resident memory from the kernel:
  ordinary  a drum track in running status and a piano track that is silenced
  worst     program changes, each with its own status: every event grows by a byte
  tempo     a tempo event on every tick, each a time mark of its own
Prints one line per file; exits 1 when any run peaks at four times its file
or more. A measurement to run by hand, never a timed test.
"""
import argparse
import os
import pathlib
import struct
import subprocess
import sys

MB = 1 << 20


def write_smf(path, tracks_of, size):
    """A format 1 file of division 480 whose tracks are built by repeating
    event blocks until the file is about `size` bytes."""
    tracks = tracks_of(size)
    with open(path, "wb") as f:
        f.write(b"MThd" + struct.pack(">IHHH", 6, 1, len(tracks), 480))
        for head, block, count, tail in tracks:
            body = len(head) + len(block) * count + len(tail)
            f.write(b"MTrk" + struct.pack(">I", body) + head)
            chunk = block * max(1, min(count, MB // max(1, len(block))))
            written = 0
            while written < count:
                n = min(count - written, len(chunk) // len(block))
                f.write(chunk[: n * len(block)])
                written += n
            f.write(tail)


END = b"\x00\xff\x2f\x00"
KICK = b"\x00\x99\x24\x64"


def ordinary(size):
    drums = b"\x83\x60\x99\x24\x64" + b"\x00\x2a\x50" + b"\x78\x2a\x00"  # running status
    piano = b"\x00\x90\x3c\x64\x83\x60\x3c\x00"
    half = size // 2
    return [(b"\x00\xff\x51\x03\x07\xa1\x20", b"", 0, END),
            (b"", piano, half // len(piano), END),
            (KICK, drums, half // len(drums), END)]


def worst(size):
    return [(KICK, b"\x00\xc0\x05", size // 3, END)]


def tempo(size):
    return [(KICK, b"\x01\xff\x51\x03\x07\xa1\x20", size // 7, END)]


def peak_kb(command):
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    _, status, usage = os.wait4(process.pid, 0)
    return os.waitstatus_to_exitcode(status), usage.ru_maxrss  # KB on Linux


def main():
    root = pathlib.Path(__file__).resolve().parents[1]
    parser = argparse.ArgumentParser()
    parser.add_argument("--rwgroove", default=str(root / "build/release/bin/rwgroove"))
    parser.add_argument("--megabytes", type=int, default=100)
    parser.add_argument("--work", default=str(root / "build/inspect-memory"))
    args = parser.parse_args()
    if not os.access(args.rwgroove, os.X_OK):
        print("peak_memory: no rwgroove at %s; build it first:\n"
              "  cmake --preset release && cmake --build --preset release --target rwgroove"
              % args.rwgroove)
        return 2
    work = pathlib.Path(args.work)
    work.mkdir(parents=True, exist_ok=True)
    size = args.megabytes * 1000 * 1000
    over = False
    for name, tracks_of in (("ordinary", ordinary), ("worst", worst), ("tempo", tempo)):
        path = work / (name + ".mid")
        write_smf(path, tracks_of, size)
        file_kb = path.stat().st_size / 1024
        code, kb = peak_kb([args.rwgroove, "inspect", str(path), "--json"])
        ratio = kb / file_kb
        over |= ratio >= 4
        print("%-8s %7.1f MB file: exit %d, peak %9d KB = %.2f times the file%s"
              % (name, file_kb / 1024, code, kb, ratio, "  (over the target of 4)" if ratio >= 4 else ""))
        path.unlink()
    return 1 if over else 0


if __name__ == "__main__":
    sys.exit(main())
