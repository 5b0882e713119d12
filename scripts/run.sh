#!/usr/bin/env bash
# Sets up, builds and starts Velmarinda. The program lives in build/bin/ with its
# datos.mdb beside it; an empty database is made there the first time.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh velmarinda velmarinda-newdb
if [ ! -f build/bin/datos.mdb ]; then
  build/bin/velmarinda-newdb build/bin/datos.mdb
fi
exec build/bin/velmarinda
