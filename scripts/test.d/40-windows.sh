#!/usr/bin/env bash
# The Windows tier: cross-build the engine, the runner and the plug-in, run
# every scenario under Wine (with a virtual X server for the real dialog),
# and compare each result with the native run of the same scenario.
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

# One X server and one Wine server for the whole run.
xvfb-run -a bash -s "$wine" "$out" <<'RUN'
set -uo pipefail
wine=$1
out=$2
passed=0
failed=0
for scenario in tests/scenarios/*.json; do
  name=$(basename "$scenario" .json)
  build/default/bin/cantel-host run "$scenario" --out "$out/$name.native.json" >/dev/null
  if "$wine" build/windows/bin/cantel-host.exe run "$scenario" --check \
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
"$wine"server -k 2>/dev/null || wineserver -k 2>/dev/null || true
echo "windows: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
RUN
