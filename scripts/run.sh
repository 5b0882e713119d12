#!/usr/bin/env bash
# Sets up, builds and starts Velmarinda. The program lives in build/bin/ with its
# datos.mdb beside it; an empty database is made there the first time, and an
# empty chain catalogue in c/cadenart.
set -euo pipefail
cd "$(dirname "$0")/.."
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
exec build/bin/velmarinda
