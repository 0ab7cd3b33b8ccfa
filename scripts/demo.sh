#!/usr/bin/env bash
# The main job: the plug-in run through the reference host on a demo lead
# sheet, as a Cantel user would run it. Prints what the user saw and the drum
# grid of the staff that received the groove, and writes that staff as a
# picture (SVG) beside the result JSON.
set -euo pipefail
cd "$(dirname "$0")/.."

groove="Rock 8ths"
style=percussion
measures=1-16
staff=0
plain=
score=scripts/demo/lead_sheet.json

# The starter grooves by the names the dialog shows.
groove_names() { sed -n 's/^name:[[:space:]]*//p' grooves/patterns/*.groove | sort; }

usage() {
  cat <<USAGE
usage: scripts/demo.sh [--groove NAME] [--style percussion|normal|slash]
                       [--measures FIRST-LAST] [--staff N] [--score FILE] [--plain]

Runs the Rhythm Weave command through the reference host on a score and
shows what the user saw, the drum grid of the staff that received the
groove, and the path of its picture. The style is arranged as a drummer
plays it: the count-in, a fill every 4 measures with a crash after it, the
second groove in turn with the first, and the ending.

options:
  --groove NAME          the style chosen in the dialog (default "Rock 8ths")
  --style STYLE          percussion (Notation with Percussion Map, the default),
                         normal (Normal Notation) or slash (Slash Notation)
  --measures FIRST-LAST  the selected measures (default 1-16)
  --staff N              put the groove into existing staff N (from 1);
                         without it the groove goes to a new staff at the bottom
  --score FILE           the score, a cantel-host scenario
                         (default scripts/demo/lead_sheet.json)
  --plain                the groove alone, repeated, without the other parts
  -h, --help             this text

grooves:
USAGE
  groove_names | sed 's/^/  /'
}

fail() {
  echo "demo: $1" >&2
  echo "Run 'scripts/demo.sh --help' for the options." >&2
  exit 2
}

while [ $# -gt 0 ]; do
  case "$1" in
    -h | --help) usage; exit 0 ;;
    --groove | --style | --measures | --staff | --score)
      [ $# -ge 2 ] || fail "$1 needs a value"
      case "$1" in
        --groove) groove=$2 ;;
        --style) style=$2 ;;
        --measures) measures=$2 ;;
        --staff) staff=$2 ;;
        --score) score=$2 ;;
      esac
      shift 2 ;;
    --plain) plain=--plain; shift ;;
    *) fail "unknown option $1" ;;
  esac
done

# Every option is checked before anything is installed or built.
case "$style" in
  percussion) style_label="Notation with Percussion Map" ;;
  normal) style_label="Normal Notation" ;;
  slash) style_label="Slash Notation" ;;
  *) fail "--style is percussion, normal or slash, not \"$style\"" ;;
esac
if ! groove_names | grep -qxF -- "$groove"; then
  { echo "demo: there is no groove \"$groove\"; the grooves are:"; groove_names | sed 's/^/  /'; } >&2
  exit 2
fi
[[ "$staff" =~ ^[0-9]+$ ]] || fail "--staff takes a staff number, not \"$staff\""
[ -f "$score" ] || fail "no score $score"

bash scripts/setup.sh
python3 scripts/demo/compose.py check "$score" --measures "$measures" --staff "$staff"

cmake --preset default >/dev/null
cmake --build --preset default -j "$(nproc)" --target RhythmWeave cantel-host grooves staff_picture

out=build/default/demo
mkdir -p "$out"
python3 scripts/demo/compose.py scenario "$score" "build/default/grooves/Rhythm Weave" "$out/demo.json" \
  --groove "$groove" --style "$style" --measures "$measures" --staff "$staff" $plain
where="a new staff"
[ "$staff" -eq 0 ] || where="staff $staff"
title="\"$groove\" as $style_label on $where, measures $measures of $(basename "$score")"
echo
echo "Rhythm Weave: $title"
echo
build/default/bin/cantel-host run "$out/demo.json" --out "$out/demo.result.json" --view > "$out/view.txt"
python3 scripts/demo/compose.py report "$out/demo.result.json"
echo
cat "$out/view.txt"
echo
rm -f "$out/staff.svg"
if build/default/bin/staff_picture "$out/demo.result.json" -o "$out/staff.svg" --title "$title"; then
  echo "The picture of the drum staff: $out/staff.svg"
fi
echo "The whole result: $out/demo.result.json"
