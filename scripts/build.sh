#!/usr/bin/env bash
# Configures and builds into build/ (Release with debug info), with every core.
# Targets may be named (velmarinda velmarinda-newdb); with none, everything.
set -euo pipefail
cd "$(dirname "$0")/.."
# The compiler cache may reuse objects built with the precompiled header.
export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
if [ $# -gt 0 ]; then
  targets=()
  for t in "$@"; do targets+=(--target "$t"); done
  cmake --build build -j"$(nproc)" "${targets[@]}"
else
  cmake --build build -j"$(nproc)"
fi
