#!/usr/bin/env bash
# Configures and builds into build/ (Release with debug info), with every core.
# Targets may be named (velmarinda velmarinda-newdb); with none, everything.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
if [ $# -gt 0 ]; then
  targets=()
  for t in "$@"; do targets+=(--target "$t"); done
  cmake --build build -j"$(nproc)" "${targets[@]}"
else
  cmake --build build -j"$(nproc)"
fi
