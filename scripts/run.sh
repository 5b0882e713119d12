#!/usr/bin/env bash
# Sets up, builds and starts Velmarinda. The program lives in build/bin/ with its
# datos.mdb beside it; an empty database is made there the first time.
set -euo pipefail
cd "$(dirname "$0")/.."
# The program shows windows: with no desktop to show them on, say so now rather
# than after setting up and building.
case "${QT_QPA_PLATFORM:-}" in
  "" | xcb* | wayland*)
    if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
      echo "Velmarinda necesita un escritorio gráfico y no hay ninguno (ni DISPLAY ni WAYLAND_DISPLAY): ábralo desde una sesión de escritorio, o pruébelo sin pantalla con «xvfb-run bash scripts/run.sh»." >&2
      exit 1
    fi
    ;;
esac
bash scripts/setup.sh
bash scripts/build.sh velmarinda velmarinda-newdb
if [ ! -f build/bin/datos.mdb ]; then
  build/bin/velmarinda-newdb build/bin/datos.mdb
fi
exec build/bin/velmarinda
