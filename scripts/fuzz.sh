#!/usr/bin/env bash
# Builds a fuzz target with clang, libFuzzer and AddressSanitizer into
# build-fuzz/, writes its seed corpus and runs it, niced, for a while:
#   bash scripts/fuzz.sh [dbase] [seconds]      (default: dbase, 600 seconds)
# A crash leaves its input in build-fuzz/ as crash-*; the run then fails.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
target=${1:-dbase}
seconds=${2:-600}
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DVEL_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build-fuzz -j"$(nproc)" --target "fuzz_$target" "${target}_seeds"
corpus=build-fuzz/corpus/$target
mkdir -p "$corpus"
"build-fuzz/bin/${target}_seeds" "$corpus"
cd build-fuzz
exec nice -n 10 "bin/fuzz_$target" -max_total_time="$seconds" -max_len=65536 -print_final_stats=1 \
  "corpus/$target"
