#!/usr/bin/env bash
# The main job: builds the plug-in and shows what Cantel sees of it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
cmake --preset default >/dev/null
cmake --build --preset default -j "$(nproc)"
echo "Exports of build/default/bin/libRhythmWeave.so:"
nm -D --defined-only build/default/bin/libRhythmWeave.so | awk '$2 == "T" {print "  " $3}'
