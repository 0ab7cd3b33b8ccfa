#!/usr/bin/env bash
# The Windows module itself: exactly the six exports, no runtime DLLs beside
# the system's, and under Wine it loads only into a process that holds a host
# module; the package holds it, the starter grooves with their fills and
# endings, and the guide. The platform's own calls answer under Wine as on
# Windows: the user's groove folder follows a moved Documents folder, and a
# dialog's fixed-width font matches the dialog's.
set -euo pipefail
cd "$(dirname "$0")/../.."

wine=/usr/lib/wine/wine64
if [ ! -x "$wine" ]; then
  echo "45-windows-module: wine is not installed; skipping"
  exit 0
fi

cmake --preset windows >/dev/null
cmake --build --preset windows -j 2 --target RhythmWeave CantelEngine load_check cantel-host platform_probe
cmake --build --preset windows -j 2 --target package
bin=build/windows/bin
passed=0
failed=0
check() {  # description, command...
  local what=$1
  shift
  if "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); echo "45-windows-module: FAILED: $what"; fi
}

exports=$(x86_64-w64-mingw32-objdump -p "$bin/RhythmWeave.dll" |
  sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' | awk '/\[/ && NR > 1 {print $NF}' | sort | tr '\n' ' ')
expected="CantelExtensionEnumerate_UTF16 CantelExtensionGetMenuStatus CantelExtensionInit CantelExtensionInvoke CantelExtensionTerminate CantelExtensionVersion "
check "the DLL exports exactly the six names (found: $exports)" test "$exports" = "$expected"

# The DLLs every Windows has that the plug-in may use; it may need fewer.
allowed="advapi32.dll gdi32.dll kernel32.dll msvcrt.dll shell32.dll user32.dll"
imports=$(x86_64-w64-mingw32-objdump -p "$bin/RhythmWeave.dll" | awk '/DLL Name:/ {print tolower($3)}' | sort -u)
others=$(comm -23 <(printf '%s\n' "$imports") <(printf '%s\n' $allowed))
check "the DLL needs only the system DLLs $allowed (found: $(echo $imports))" \
  test -n "$imports" -a -z "$others"

export WINEDEBUG=-all
export WINEPREFIX="${WINEPREFIX:-$PWD/build/windows/wineprefix}"
without=$(cd "$bin" && "$wine" load_check.exe RhythmWeave.dll 2>/dev/null | tr -d '\r' || true)
check "the DLL refuses to load without a host module (got: $without)" test "$without" = "refused"
with=$(cd "$bin" && "$wine" load_check.exe --engine CantelEngine.dll RhythmWeave.dll 2>/dev/null | tr -d '\r' || true)
check "the DLL loads beside the host engine with its six exports" \
  test "$(printf '%s\n' "$with" | grep -c -e '^loaded$' -e ' found$')" = 7

# The runner points the profile's Documents folder into the run's own folder,
# as a user who moved it has it; the platform's call must find the user's
# groove folder there, not in the profile's usual place. Then a dialog's
# fixed-width font, in Western and Japanese type. Both need an X server.
# The Wine server the checks above started has no display and would lend
# the probes its desktop, where no window can be made: end it first.
scenario=host_user_folder_holds_only_what_the_user_put_there
probes=$(mktemp -d)
/usr/lib/wine/wineserver -k 2>/dev/null || true
/usr/lib/wine/wineserver -w 2>/dev/null || true
xvfb-run -a bash -s "$wine" "$bin" "$scenario" "$probes" <<'PROBE'
wine=$1 bin=$2 scenario=$3 probes=$4
"$wine" "$bin/cantel-host.exe" run "tests/scenarios/$scenario.json" --check >"$probes/run.txt" 2>&1
echo $? >"$probes/run.code"
"$wine" "$bin/platform_probe.exe" user-folder 2>&1 | tr -d '\r' >"$probes/user-folder.txt"
"$wine" "$bin/platform_probe.exe" fixed-font 2>&1 | tr -d '\r' >"$probes/fixed-font.txt"
echo "${PIPESTATUS[0]}" >"$probes/fixed-font.code"
PROBE
user_folder=$(cat "$probes/user-folder.txt")
check "the runner plays $scenario under Wine ($(tail -1 "$probes/run.txt"))" \
  test "$(cat "$probes/run.code")" = 0
check "the user's groove folder is in the Documents folder the runner moved (got: $user_folder)" \
  test "${user_folder%\\cantel-host-$scenario\\Documents\\Rhythm Weave}" != "$user_folder"
check "the fixed-width font follows the dialog's: $(tr '\n' ';' <"$probes/fixed-font.txt")" \
  test "$(cat "$probes/fixed-font.code")" = 0
rm -rf "$probes"

package=$(ls build/windows/RhythmWeave-*-win64.zip)
unpacked=build/windows/package-check
rm -rf "$unpacked" && mkdir -p "$unpacked" && unzip -q "$package" -d "$unpacked"
top=$(ls -d "$unpacked"/RhythmWeave-*)
check "the package holds the plug-in" test -f "$top/Plug-Ins/RhythmWeave.dll"
grooves="$top/Component Files/Rhythm Weave"
mids() { (cd "$1" 2>/dev/null && ls -- *.mid 2>/dev/null) || true; }  # names, sorted
styles=$(mids "$grooves")
endings=$(mids "$grooves/Endings")
check "the package holds at least 32 starter styles" test "$(printf '%s' "$styles" | grep -c .)" -ge 32
check "the package holds a fill for every style, and no other" test "$(mids "$grooves/Fills")" = "$styles"
check "the package holds at least 24 endings" test "$(printf '%s' "$endings" | grep -c .)" -ge 24
check "every ending in the package belongs to a style it holds" \
  test -z "$(comm -23 <(printf '%s\n' "$endings") <(printf '%s\n' "$styles"))"
check "the package holds the user guide" test -f "$top/USER_GUIDE.md"
cp "$bin/CantelEngine.dll" "$bin/load_check.exe" "$top/Plug-Ins/"
packaged=$(cd "$top/Plug-Ins" && "$wine" load_check.exe --engine CantelEngine.dll RhythmWeave.dll 2>/dev/null | tr -d '\r' | head -1 || true)
check "the packaged DLL loads beside the host engine (got: $packaged)" test "$packaged" = "loaded"
/usr/lib/wine/wineserver -k 2>/dev/null || true

echo "windows module: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
