#!/usr/bin/env bash
# Measures how long the viewer takes to show a large text file and the peak memory it needs,
# in a Release build of its own (build-bench). Arguments: [megabytes] [--one-line].
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DMORLEVANT_TESTS=OFF >/dev/null
cmake --build build-bench --target viewer_load_bench -j2
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} build-bench/bench/viewer_load_bench "${1:-50}" "${2:-}"
