#!/usr/bin/env bash
# Sets up, builds and runs every test headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
export QT_QPA_PLATFORM=offscreen
cd build && ctest --output-on-failure -j"$(nproc)"
