#!/usr/bin/env bash
# Kills the real windows at random moments of their saves and checks the shop
# after each kill: never corrupt, never a document without all its lines or a
# line without its header, a counter always at its last document, prices all
# changed or none, and every save that finished still there.
#   kill_test.sh VELKILL KIND KILLS PRODUCTS
# KIND: note-new, note-modify, invoice, ticket or bulk. SEED repeats a run.
set -u
velkill="$1" kind="$2" kills="$3" products="$4"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$velkill" prepare "$work/shop" "$products" >/dev/null 2>&1 || { echo "prepare failed"; exit 1; }
seed="${SEED:-$RANDOM$RANDOM}"
echo "seed $seed, $products products"
"$velkill" kills "$work/shop" "$kind" "$kills" "$seed" 2>&1 | grep --line-buffered -v 'propagateSizeHints\|XDG_RUNTIME_DIR'
exit "${PIPESTATUS[0]}"
