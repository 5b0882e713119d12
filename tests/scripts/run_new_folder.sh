#!/usr/bin/env bash
# The run command on a new shop's folder makes what the program needs to open
# every window: the database, the chain's catalogue and a config.ini with the
# default installation and store; a second run leaves a config.ini the shop
# has edited as it is.
# Usage: run_new_folder.sh SOURCE_DIR
set -euo pipefail
src=$(cd "$1" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FALLO: $*" >&2; exit 1; }

# A copy of the repository's run command, with stand-ins for setting up,
# building and the programs it starts.
mkdir -p "$tmp/repo/scripts" "$tmp/repo/build/bin"
cp "$src/scripts/run.sh" "$tmp/repo/scripts/"
printf '#!/bin/sh\n' >"$tmp/repo/scripts/setup.sh"
printf '#!/bin/sh\n' >"$tmp/repo/scripts/build.sh"
printf '#!/bin/sh\nfor a; do f=$a; done\n: >"$f"\n' >"$tmp/repo/build/bin/velmarinda-newdb"
printf '#!/bin/sh\necho arrancado\n' >"$tmp/repo/build/bin/velmarinda"
chmod +x "$tmp/repo/build/bin/"*

QT_QPA_PLATFORM=offscreen bash "$tmp/repo/scripts/run.sh" >"$tmp/out" 2>&1 || fail "run.sh falló: $(cat "$tmp/out")"
grep -q arrancado "$tmp/out" || fail "run.sh no arrancó el programa"
[ -f "$tmp/repo/build/bin/datos.mdb" ] || fail "no hay datos.mdb"
[ -f "$tmp/repo/build/bin/config.ini" ] || fail "no hay config.ini en una carpeta nueva"
[ "$(cat "$tmp/repo/build/bin/config.ini")" = "$(printf 'FERROBANDA,CENTRAL\r')" ] ||
  fail "config.ini dice: $(od -c "$tmp/repo/build/bin/config.ini")"

printf 'ORTA,NORTE\r\n' >"$tmp/repo/build/bin/config.ini"
QT_QPA_PLATFORM=offscreen bash "$tmp/repo/scripts/run.sh" >"$tmp/out" 2>&1 || fail "run.sh falló: $(cat "$tmp/out")"
[ "$(cat "$tmp/repo/build/bin/config.ini")" = "$(printf 'ORTA,NORTE\r')" ] || fail "run.sh reescribió config.ini"
echo "run.sh deja config.ini en una carpeta nueva y no toca el de la tienda"
