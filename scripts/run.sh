#!/usr/bin/env bash
# Sets up, builds and starts Velmarinda. The program lives in build/bin/ with its
# datos.mdb beside it; an empty database is made there the first time, an
# empty chain catalogue in c/cadenart, and a config.ini naming the default
# installation and store 1 (the program itself only reads it).
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
# The chain's catalogue lives in c:\cadenart, which is build/bin/c/cadenart here
# (see README): a new installation gets an empty articulo.dbf there, under
# any case of its name, until the chain's own file replaces it.
mkdir -p build/bin/c/cadenart
if ! ls build/bin/c/cadenart | grep -qix 'articulo.dbf'; then
  build/bin/velmarinda-newdb --catalogo build/bin/c/cadenart/articulo.dbf
fi
# config.ini: the installation tag and the name of this store. A new folder gets
# the default installation and the store the empty database holds (store 1,
# CENTRAL); a config.ini already there is never touched.
if [ ! -f build/bin/config.ini ]; then
  printf 'FERROBANDA,CENTRAL\r\n' >build/bin/config.ini
fi
exec build/bin/velmarinda
