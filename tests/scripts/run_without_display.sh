#!/usr/bin/env bash
# `bash scripts/run.sh` with no desktop to show the windows on says so in one
# line within five seconds and fails, before setting up or building anything.
# Usage: run_without_display.sh SOURCE_DIR
set -euo pipefail
src=$(cd "$1" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FALLO: $*" >&2; exit 1; }

# Stand-ins for the tools setting up and building would use: they only note
# that they were called.
mkdir "$tmp/bin"
for tool in cmake make apt-get dpkg-query sudo locale-gen; do
  printf '#!/bin/sh\necho %s >> "%s/llamadas"\n' "$tool" "$tmp" >"$tmp/bin/$tool"
  chmod +x "$tmp/bin/$tool"
done

check() {  # check DESCRIPTION ENV...
  local what=$1; shift
  local start end code
  start=$(date +%s%N)
  set +e
  env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM PATH="$tmp/bin:$PATH" "$@" \
    timeout 10 bash "$src/scripts/run.sh" >"$tmp/out" 2>"$tmp/err"
  code=$?
  set -e
  end=$(date +%s%N)
  [ "$code" -ne 0 ] || fail "$what: run.sh acabó bien sin escritorio"
  [ "$code" -ne 124 ] || fail "$what: run.sh no acabó en 10 segundos"
  [ $(( (end - start) / 1000000 )) -lt 5000 ] || fail "$what: run.sh tardó más de 5 segundos"
  [ ! -e "$tmp/llamadas" ] || fail "$what: run.sh preparó o compiló antes de avisar: $(tr '\n' ' ' <"$tmp/llamadas")"
  cat "$tmp/out" "$tmp/err" >"$tmp/all"
  [ "$(wc -l <"$tmp/all")" -eq 1 ] || fail "$what: se esperaba una línea y salió: $(cat "$tmp/all")"
  grep -q 'escritorio' "$tmp/all" || fail "$what: la línea no dice que hace falta un escritorio: $(cat "$tmp/all")"
  grep -q 'xvfb-run bash scripts/run.sh' "$tmp/all" || fail "$what: la línea no dice cómo probarlo sin pantalla"
}

check "sin DISPLAY"
check "con QT_QPA_PLATFORM=xcb" QT_QPA_PLATFORM=xcb
echo "run.sh avisa sin escritorio: $(cat "$tmp/all")"
