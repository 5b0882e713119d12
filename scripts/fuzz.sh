#!/usr/bin/env bash
# Builds the fuzz targets with clang and libFuzzer (in build-fuzz/) and runs
# them, one after the other, each on a working copy of its seed corpus.
#   bash scripts/fuzz.sh                 every target for 60 seconds
#   bash scripts/fuzz.sh fuzz_numbers    one target
#   FUZZ_SECONDS=600 bash scripts/fuzz.sh   longer runs
# A crash leaves its input in build-fuzz/artifacts/ and stops the script.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --fuzz
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(fuzz_numbers fuzz_config_ini fuzz_membrete_ini fuzz_sql_dialect fuzz_dbase fuzz_note_exchange fuzz_xls fuzz_xlsx fuzz_ods)
cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++-14 -DVEL_FUZZ=ON >/dev/null
cmake --build build-fuzz -j"$(nproc)" $(printf -- '--target %s ' "${targets[@]}")
# The catalogue's seeds are made by a program (sound and damaged dBase files).
if [[ " ${targets[*]} " == *" fuzz_dbase "* ]]; then
  cmake --build build-fuzz -j"$(nproc)" --target dbase_seeds
  mkdir -p fuzz/corpus/fuzz_dbase
  build-fuzz/bin/dbase_seeds build-fuzz/corpus/fuzz_dbase
fi
# The workbooks' seeds are written as the tests write them.
if [[ " ${targets[*]} " == *" fuzz_xls"* || " ${targets[*]} " == *" fuzz_ods "* ]]; then
  cmake --build build-fuzz -j"$(nproc)" --target workbook_seeds
  build-fuzz/bin/workbook_seeds build-fuzz/corpus
  mkdir -p fuzz/corpus/fuzz_xls fuzz/corpus/fuzz_xlsx fuzz/corpus/fuzz_ods
fi
export QT_QPA_PLATFORM=offscreen
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
mkdir -p build-fuzz/artifacts
for t in "${targets[@]}"; do
  work="build-fuzz/corpus/$t"
  mkdir -p "$work"
  echo "== $t for ${FUZZ_SECONDS:-60} s"
  # The workbook readers run their library in a child process: the library's
  # own faults on a damaged file are reported there and end only the child.
  # They are reported without symbols, which would cost a second each; a
  # crash of the target itself still leaves its input in artifacts/.
  asan="${ASAN_OPTIONS:-}"
  case "$t" in fuzz_xls | fuzz_xlsx | fuzz_ods) asan="symbolize=0${asan:+:$asan}" ;; esac
  ASAN_OPTIONS="$asan" "build-fuzz/bin/$t" -max_len=65536 -max_total_time="${FUZZ_SECONDS:-60}" -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="build-fuzz/artifacts/$t-" -print_final_stats=1 "$work" "fuzz/corpus/$t"
done
