#!/usr/bin/env python3
"""Writes the starter groove library: Standard MIDI Files from descriptions.

    python3 grooves/make_grooves.py OUT_DIR [DESCRIPTION ...]

Without descriptions it reads every grooves/patterns/*.groove. A style's main
groove is written as "<name>.mid" into OUT_DIR, and each companion under the
same name in its kind's subfolder (groove_format.PART_KINDS): its variation
in "Variations", its count-in in "Count-ins", its fill in "Fills" and its
ending in "Endings"; folders are created when missing. The plug-in lists a
style by its file name less ".mid".
A description that cannot give a correct groove stops the run with a message
and exit code 1, before any file is written.
"""

import argparse
import pathlib
import sys

# Run by hand from the source tree: leave no __pycache__ behind.
sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

from groove_format import GrooveError, read_style_file  # noqa: E402
from smf_writer import smf_bytes  # noqa: E402

PATTERN_DIR = pathlib.Path(__file__).resolve().parent / "patterns"


def description_paths(given):
    if given:
        return [pathlib.Path(path) for path in given]
    return sorted(PATTERN_DIR.glob("*.groove"))


def main(argv=None):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("out_dir", type=pathlib.Path, help="folder for the .mid files")
    parser.add_argument("descriptions", nargs="*", help=".groove files (default: all)")
    parser.add_argument("--quiet", action="store_true", help="print nothing on success")
    args = parser.parse_args(argv)

    paths = description_paths(args.descriptions)
    if not paths:
        print("make_grooves: no groove descriptions found", file=sys.stderr)
        return 1
    try:
        styles = [read_style_file(path) for path in paths]
    except (GrooveError, OSError) as error:
        print(f"make_grooves: {error}", file=sys.stderr)
        return 1
    names = [style.main.file_name.lower() for style in styles]
    clashes = sorted({name for name in names if names.count(name) > 1})
    if clashes:
        # Windows file names ignore case: two such grooves would overwrite
        # each other in the user's folder.
        print(f"make_grooves: two descriptions give the file {clashes[0]}", file=sys.stderr)
        return 1

    args.out_dir.mkdir(parents=True, exist_ok=True)
    for groove in (groove for style in styles for groove in style.parts):
        path = args.out_dir / groove.file_name
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(smf_bytes(groove))
        if not args.quiet:
            print(f"{groove.file_name}: {groove.numerator}/{groove.denominator}, "
                  f"{groove.measures} measure(s), {len(groove.notes)} strokes")
    return 0


if __name__ == "__main__":
    sys.exit(main())
