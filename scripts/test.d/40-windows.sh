#!/usr/bin/env bash
# The Windows tier: cross-build the engine, the runner and the plug-in, run
# every scenario under Wine (with a virtual X server for the real dialog),
# and compare each result with the native run of the same scenario. Then a
# picture of the dialog in each language, a style chosen, goes to
# build/windows/screens/ with the measure of every label in it: none may be
# cut.
#
# RW_HOLD_MS=N holds each scripted action back N ms with the dialog on
# screen (for a person watching through the X server); off by default.
set -euo pipefail
cd "$(dirname "$0")/../.."

wine=/usr/lib/wine/wine64
if [ ! -x "$wine" ]; then
  echo "40-windows: wine is not installed (no $wine); skipping the Windows tier"
  exit 0
fi

jobs=2
cmake --preset windows >/dev/null
cmake --build --preset windows -j "$jobs" --target CantelEngine cantel-host RhythmWeave
if [ ! -x build/default/bin/cantel-host ] || [ ! -e build/default/bin/libRhythmWeave.so ]; then
  cmake --preset default >/dev/null
  cmake --build --preset default -j "$jobs" --target cantel-host RhythmWeave
fi

out=build/windows/scenario-results
mkdir -p "$out"
export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-$PWD/build/windows/wineprefix}"

screens=build/windows/screens
rm -rf "$screens" && mkdir -p "$screens"

# One X server and one Wine server for the whole run. A Wine server left
# from a run without a display would lend its desktop, where no window can be
# made: end it first.
/usr/lib/wine/wineserver -k 2>/dev/null || true
/usr/lib/wine/wineserver -w 2>/dev/null || true
xvfb-run -a bash -s "$wine" "$out" "$screens" "${RW_HOLD_MS:-0}" <<'RUN'
set -uo pipefail
wine=$1
out=$2
screens=$3
hold=(--hold-ms "$4")
passed=0
failed=0

# The fonts a Windows system has for the dialog: Wine's own Tahoma for "MS
# Shell Dlg" (Debian keeps it where Wine does not look), and a Japanese font
# for "MS UI Gothic". Without them Wine falls back to whatever font it finds
# first, and the pictures and the measures of their labels mean little.
"$wine" reg add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' \
  /v 'MS UI Gothic' /t REG_SZ /d IPAGothic /f >/dev/null 2>&1  # creates a new prefix too
if [ -f /usr/share/wine/fonts/tahoma.ttf ]; then
  cp /usr/share/wine/fonts/tahoma.ttf /usr/share/wine/fonts/tahomabd.ttf \
    "$WINEPREFIX/drive_c/windows/Fonts/"
else
  echo "40-windows: no Tahoma of Wine's own (fonts-wine): the pictures use a fall-back font"
fi

for scenario in tests/scenarios/*.json; do
  name=$(basename "$scenario" .json)
  build/default/bin/cantel-host run "$scenario" --out "$out/$name.native.json" >/dev/null
  if "$wine" build/windows/bin/cantel-host.exe run "$scenario" --check "${hold[@]}" \
        --out "$out/$name.windows.json" >"$out/$name.check.txt" 2>&1 &&
     build/default/bin/cantel-host compare "$out/$name.native.json" "$out/$name.windows.json" \
        >"$out/$name.diff.txt"; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "40-windows: $name differs under Wine:"
    cat "$out/$name.check.txt" "$out/$name.diff.txt" 2>/dev/null | grep -v ' passed, 0 failed' || true
  fi
done

# The dialog in each language with a style chosen: the picture before the
# second action, and the measure of its labels beside it.
shots=$(mktemp -d)
for pair in en:info_line_describes_a_fitting_groove_by_its_whole_name \
            ja:language_japanese_dialog_opens_in_japanese \
            pl:language_polish_phrase_places_the_groove_on_a_staff_named_perkusja \
            sv:language_swedish_info_line_says_the_waltz_does_not_fit; do
  language=${pair%%:*}
  name=${pair#*:}
  "$wine" build/windows/bin/cantel-host.exe run "tests/scenarios/$name.json" "${hold[@]}" \
    --screenshot "$shots" --out "$shots/result.json" >/dev/null 2>&1
  if mv "$shots/$name.1.1.png" "$screens/$language.png" 2>/dev/null &&
     mv "$shots/$name.1.1.labels.txt" "$screens/$language.labels.txt" 2>/dev/null; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "40-windows: no picture of the dialog in $language from $name"
    continue
  fi
  if grep -q '^CUT' "$screens/$language.labels.txt"; then
    failed=$((failed + 1))
    echo "40-windows: labels cut in the $language dialog:"
    grep '^CUT' "$screens/$language.labels.txt"
  else
    passed=$((passed + 1))
  fi
done

# The drum grid of a swing style and of a 6/8 style, in English and in
# Japanese: each dialog of the run before its second action.
for pair in en:drum_grid_shows_a_swing_style_in_triplets_and_a_six_eight_style_in_eighths \
            ja:language_japanese_drum_grid_shows_a_swing_style_and_a_six_eight_style; do
  language=${pair%%:*}
  name=${pair#*:}
  "$wine" build/windows/bin/cantel-host.exe run "tests/scenarios/$name.json" "${hold[@]}" \
    --screenshot "$shots" --out "$shots/result.json" >/dev/null 2>&1
  for dialog in 1:swing 2:six-eight; do
    picture="$screens/$language-grid-${dialog#*:}"
    if mv "$shots/$name.${dialog%%:*}.1.png" "$picture.png" 2>/dev/null &&
       mv "$shots/$name.${dialog%%:*}.1.labels.txt" "$picture.labels.txt" 2>/dev/null &&
       ! grep -q '^CUT' "$picture.labels.txt"; then
      passed=$((passed + 1))
    else
      failed=$((failed + 1))
      echo "40-windows: no picture of the $language drum grid from $name, or a label cut in it"
    fi
  done
done
rm -rf "$shots"

/usr/lib/wine/wineserver -k 2>/dev/null || true
echo "windows: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
RUN
