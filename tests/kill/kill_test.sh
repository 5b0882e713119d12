#!/usr/bin/env bash
# Kills the real windows at random moments of their saves and checks the
# database after each kill: never corrupt, never a document without all its
# lines or a line without its header, a counter always at its last document,
# prices all changed or none.
#   kill_test.sh VELKILL            KILLS kills of each kind (default 12)
#   KILLS=70 PRODUCTS=200000 kill_test.sh VELKILL     the long run by hand
set -u
velkill="$1"
kills="${KILLS:-12}"
products="${PRODUCTS:-20000}"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
corrupt=0
torn=0
total=0
midsave=0

# Kills `velkill KIND` after a random moment (in ms) up to MAX_MS, KILLS times,
# each on a fresh copy of the shop, then checks.
run_kind() {
    local kind="$1" max_ms="$2" lines="$3"
    kind_mid=0
    for ((i = 1; i <= kills; i++)); do
        rm -f "$work/shop/datos.mdb-wal" "$work/shop/datos.mdb-shm"
        cp "$work/base/datos.mdb" "$work/shop/datos.mdb"
        "$velkill" "$kind" "$work/shop" >"$work/out" 2>&1 &
        local pid=$!
        local ms=$(( (RANDOM * 32768 + RANDOM) % max_ms + 50 ))
        sleep "$(printf '%d.%03d' $((ms / 1000)) $((ms % 1000)))"
        kill -9 "$pid" 2>/dev/null
        wait "$pid" 2>/dev/null
        total=$((total + 1))
        local saved
        saved=$(grep -c '^SAVED' "$work/out")
        # Killed between SAVING and SAVED: in the middle of a save.
        if [ "$(grep '^SAV' "$work/out" | tail -1 | cut -d' ' -f1)" = SAVING ]; then
            midsave=$((midsave + 1)); kind_mid=$((kind_mid + 1))
        fi
        if ! "$velkill" check "$work/shop" "$lines" >"$work/check" 2>&1; then
            if grep -q '^CORRUPT' "$work/check"; then corrupt=$((corrupt + 1)); else torn=$((torn + 1)); fi
            echo "$kind after ${ms} ms (saves finished: $saved):"
            cat "$work/check"
            grep -v '^SAVED' "$work/out" | head -5
        fi
    done
    echo "$kind: $kills kills, $kind_mid of them in the middle of a save"
}

mkdir -p "$work/base" "$work/shop"
"$velkill" prepare "$work/base" "$products" || { echo "prepare failed"; exit 1; }
cp "$work/base/config.ini" "$work/shop/"

run_kind note-new 4000 200
run_kind note-modify 4000 200
run_kind invoice 4000 200
run_kind ticket 3000 200
run_kind bulk 6000 200

echo "kills: $total ($midsave in the middle of a save), corrupt: $corrupt, torn: $torn"
[ "$corrupt" -eq 0 ] && [ "$torn" -eq 0 ]
