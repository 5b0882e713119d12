#!/usr/bin/env bash
# Sets up, builds and runs every test headless.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh
# A real CUPS queue for the printing test; without one that test says so and is skipped.
bash scripts/cups_pdf_queue.sh || true
export QT_QPA_PLATFORM=offscreen
cd build && ctest --output-on-failure -j"$(nproc)"
