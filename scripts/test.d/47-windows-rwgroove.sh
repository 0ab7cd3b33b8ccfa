#!/usr/bin/env bash
# rwgroove for Windows: the cross-built rwgroove.exe needs only system DLLs,
# the package holds it beside the guide, and under Wine it gives the same
# verdict, exit status and JSON as the native tool on every starter groove
# and on a groove the plug-in refuses.
set -euo pipefail
cd "$(dirname "$0")/../.."

wine=/usr/lib/wine/wine64
if [ ! -x "$wine" ]; then
  echo "47-windows-rwgroove: wine is not installed; skipping"
  exit 0
fi

cmake --preset windows >/dev/null
cmake --build --preset windows -j 2 --target rwgroove package >/dev/null
cmake --preset default >/dev/null
cmake --build --preset default -j 2 --target rwgroove grooves >/dev/null

passed=0
failed=0
check() {  # description, command...
  local what=$1
  shift
  if "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); echo "47-windows-rwgroove: FAILED: $what"; fi
}

exe=build/windows/bin/rwgroove.exe
imports=$(x86_64-w64-mingw32-objdump -p "$exe" | awk '/DLL Name:/ {print tolower($3)}' | sort | tr '\n' ' ')
check "rwgroove.exe needs only system DLLs (found: $imports)" test "$imports" = "kernel32.dll msvcrt.dll "
package=$(ls build/windows/RhythmWeave-*-win64.zip)
listing=$(unzip -l "$package")
check "the package holds rwgroove.exe beside the guide" \
  grep -qE 'RhythmWeave-[^/]*-win64/rwgroove\.exe$' <<<"$listing"

out=build/windows/rwgroove-results
rm -rf "$out" && mkdir -p "$out"
# A groove the plug-in refuses: two measures of eighths with the drums on
# channel 1 (status 0x90) instead of 10.
python3 - "$out/Channel One.mid" <<'PY'
import struct, sys
events = b""
for step in range(16):
    key = 38 if step % 4 == 2 else 36 if step % 4 == 0 else 42
    events += (b"\x00" if step == 0 else b"\x81\x70") + bytes([0x90, key, 100])  # delta 0 / 240
events += b"\x81\x70\x80\x2a\x00" + b"\x00\xff\x2f\x00"  # a note off, end of track
header = b"MThd" + struct.pack(">IHHH", 6, 0, 1, 480)
open(sys.argv[1], "wb").write(header + b"MTrk" + struct.pack(">I", len(events)) + events)
PY

export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-$PWD/build/windows/wineprefix}"
same() {  # name of a file: the same exit status and the same JSON, natively and under Wine
  local file=$1 name
  name=$(basename "$file" .mid)
  local native=0 windows=0
  build/default/bin/rwgroove inspect "$file" --json >"$out/$name.native.json" || native=$?
  "$wine" "$exe" inspect "$file" --json 2>/dev/null | tr -d '\r' >"$out/$name.windows.json" || windows=$?
  echo "$windows" >"$out/$name.exit"
  [ "$native" = "$windows" ] || { echo "  $name: exit $native natively, $windows under Wine"; return 1; }
  python3 -c 'import json, sys; sys.exit(json.load(open(sys.argv[1])) != json.load(open(sys.argv[2])))' \
    "$out/$name.native.json" "$out/$name.windows.json" ||
    { diff "$out/$name.native.json" "$out/$name.windows.json" | head -20; return 1; }
}
grooves=0
for groove in "build/default/grooves/Rhythm Weave"/*.mid; do
  grooves=$((grooves + 1))
  check "$(basename "$groove"): the same under Wine" same "$groove"
done
check "the starter grooves were found ($grooves)" test "$grooves" -ge 16
check "the refused groove: the same under Wine" same "$out/Channel One.mid"
check "the refused groove exits 1 under Wine" test "$(cat "$out/Channel One.exit")" = 1
check "the refused groove names channel 1" \
  grep -q '"advice": "the drums are on channel 1 (16 notes' "$out/Channel One.windows.json"
help=$("$wine" "$exe" help fix 2>/dev/null | tr -d '\r' || true)
check "rwgroove.exe help fix describes its options" grep -q -- '--drums-channel N' <<<"$help"
/usr/lib/wine/wineserver -k 2>/dev/null || true

echo "windows rwgroove: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
