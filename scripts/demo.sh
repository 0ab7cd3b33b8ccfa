#!/usr/bin/env bash
# The main job: the plug-in run through the reference host on a demo lead
# sheet, as a Cantel user would run it. Prints what the user saw and the drum
# grid of the staff that received the groove; writes the result JSON beside it.
#
#   scripts/demo.sh [--groove NAME] [--style percussion|normal|slash]
#                   [--measures FIRST-LAST] [--staff N] [--score FILE]
#
# Defaults: "Rock 8ths" on a new staff with the percussion map over measures
# 1-16 of scripts/demo/lead_sheet.json. --staff N puts it into existing staff N.
set -euo pipefail
cd "$(dirname "$0")/.."

groove="Rock 8ths"
style=percussion
measures=1-16
staff=0
score=scripts/demo/lead_sheet.json
while [ $# -gt 0 ]; do
  case "$1" in
    --groove) groove=$2; shift 2 ;;
    --style) style=$2; shift 2 ;;
    --measures) measures=$2; shift 2 ;;
    --staff) staff=$2; shift 2 ;;
    --score) score=$2; shift 2 ;;
    *) echo "demo: unknown option $1" >&2; exit 2 ;;
  esac
done

bash scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default -j "$(nproc)" --target RhythmWeave cantel-host grooves

out=build/default/demo
mkdir -p "$out"
python3 scripts/demo/compose.py scenario "$score" "build/default/grooves/Rhythm Weave" "$out/demo.json" \
  --groove "$groove" --style "$style" --measures "$measures" --staff "$staff"
echo
echo "Rhythm Weave: \"$groove\" as $style notation, measures $measures of $(basename "$score")"
echo
build/default/bin/cantel-host run "$out/demo.json" --out "$out/demo.result.json" --view > "$out/view.txt"
python3 scripts/demo/compose.py report "$out/demo.result.json"
echo
cat "$out/view.txt"
echo
echo "The whole result: $out/demo.result.json"
