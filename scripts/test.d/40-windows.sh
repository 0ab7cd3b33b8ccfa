#!/usr/bin/env bash
# The Windows tier: cross-build the engine, the runner and the plug-in, run
# every scenario under Wine (with a virtual X server for the real dialog),
# and compare each result with the native run of the same scenario. Then a
# picture of the opened dialog in each language goes to build/windows/screens/.
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

# One X server and one Wine server for the whole run.
xvfb-run -a bash -s "$wine" "$out" "$screens" "${RW_HOLD_MS:-0}" <<'RUN'
set -uo pipefail
wine=$1
out=$2
screens=$3
hold=(--hold-ms "$4")
passed=0
failed=0
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

# The opened dialog in each language: the picture before the first action.
shots=$(mktemp -d)
for pair in en:whole_measures_open_the_dialog ja:language_japanese_dialog_opens_in_japanese \
            pl:language_polish_ok_without_style sv:language_swedish_meter_refused; do
  language=${pair%%:*}
  scenario=tests/scenarios/${pair#*:}.json
  # The dialog's font has no Japanese glyphs. A Japanese system links it to
  # a Japanese font; so does the prefix here (fonts-ipafont-gothic), for the
  # Japanese picture only, since the link also changes how Latin text looks.
  link=('HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v 'MS Sans Serif')
  if [ "$language" = ja ]; then
    "$wine" reg add "${link[@]}" /t REG_MULTI_SZ /d 'ipag.ttf,IPAGothic' /f >/dev/null 2>&1
  fi
  "$wine" build/windows/bin/cantel-host.exe run "$scenario" "${hold[@]}" --screenshot "$shots" \
    --out "$shots/result.json" >/dev/null 2>&1
  if [ "$language" = ja ]; then "$wine" reg delete "${link[@]}" /f >/dev/null 2>&1; fi
  if mv "$shots/$(basename "$scenario" .json).1.0.png" "$screens/$language.png" 2>/dev/null; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "40-windows: no picture of the dialog in $language from $scenario"
  fi
done
rm -rf "$shots"

"$wine"server -k 2>/dev/null || wineserver -k 2>/dev/null || true
echo "windows: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
RUN
