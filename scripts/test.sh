#!/usr/bin/env bash
# Sets up, builds and runs every test headless.
#   bash scripts/test.sh             the normal build, in build/
#   bash scripts/test.sh --sanitize  the same tests built with AddressSanitizer
#                                    (and its leak checker) and
#                                    UndefinedBehaviorSanitizer, in build-asan/;
#                                    any report fails the test that made it
set -euo pipefail
cd "$(dirname "$0")/.."
# The compiler cache may reuse objects built with the precompiled header.
export CCACHE_SLOPPINESS="${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}"
bash scripts/setup.sh
# A real CUPS queue for the printing test; without one that test says so and is skipped.
bash scripts/cups_pdf_queue.sh || true
export QT_QPA_PLATFORM=offscreen
if [ "${1:-}" = "--sanitize" ]; then
  cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVEL_SANITIZE=ON >/dev/null
  cmake --build build-asan -j"$(nproc)"
  # A leak, a bad memory access or undefined behaviour ends the test program
  # with an error, and so fails its test. No report is suppressed.
  export ASAN_OPTIONS="detect_leaks=1:halt_on_error=1"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
  cd build-asan && ctest --output-on-failure -j"$(nproc)"
else
  bash scripts/build.sh
  cd build && ctest --output-on-failure -j"$(nproc)"
fi
