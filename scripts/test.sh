#!/usr/bin/env bash
# The whole test suite: unit tests and scenarios natively, the same under the
# sanitizers, a short fuzzing run over the groove reader, and the Windows
# build with its scenarios under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh

jobs=$(nproc)

echo "== native build and tests"
cmake --preset default >/dev/null
cmake --build --preset default -j "$jobs"
ctest --preset default -j "$jobs"

echo "== sanitizers"
cmake --preset asan >/dev/null
cmake --build --preset asan -j "$jobs"
ctest --preset asan -j "$jobs"

for stage in scripts/test.d/*.sh; do
  [ -e "$stage" ] || continue
  echo "== $(basename "$stage" .sh)"
  bash "$stage"
done
