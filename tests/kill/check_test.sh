#!/usr/bin/env bash
# The check the kill tests rely on tells a whole shop from a damaged one: a
# shop as prepared is whole; each kind of damage a save without a transaction
# leaves is found, and said; and kills of such a save are found torn.
set -u
velkill="$1"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
fail=0
"$velkill" prepare "$work/base" 500 >/dev/null 2>&1 || { echo "prepare failed"; exit 1; }
out=$("$velkill" check "$work/base" 2>/dev/null) || { echo "a whole shop found wrong: $out"; fail=1; }

# expect_wrong WHAT PREFIX OUTPUT STATUS: the check failed, each line names
# what is wrong after the prefix.
expect_wrong() {
    local what="$1" prefix="$2" out="$3" status="$4"
    echo "$what: $out" | head -3 | cut -c1-200
    if [ "$status" = 0 ]; then echo "  not found"; fail=1; return; fi
    if ! echo "$out" | grep -q "^$prefix: ..."; then echo "  not said as $prefix with its reason"; fail=1; fi
}

for how in header lines counter prices; do
    rm -rf "$work/shop"; cp -r "$work/base" "$work/shop"
    "$velkill" tear "$work/shop" "$how" >/dev/null 2>&1
    out=$("$velkill" check "$work/shop" 2>/dev/null); status=$?
    expect_wrong "$how" TORN "$out" "$status"
done
rm -rf "$work/shop"; cp -r "$work/base" "$work/shop"
"$velkill" tear "$work/shop" file >/dev/null 2>&1
out=$("$velkill" check "$work/shop" 2>/dev/null); status=$?
expect_wrong file CORRUPT "$out" "$status"

# Three notes saved whole: the shop is the one before moved on by three, not
# by one, and no invoice moved.
rm -rf "$work/shop"; cp -r "$work/base" "$work/shop"
"$velkill" note-new "$work/shop" 3 >/dev/null 2>&1
out=$("$velkill" check "$work/shop" note-new 3 "$work/base" 2>/dev/null) || { echo "three notes saved found wrong: $out"; fail=1; }
out=$("$velkill" check "$work/shop" note-new 1 "$work/base" 2>/dev/null); status=$?
expect_wrong "notes saved that were not counted" TORN "$out" "$status"
out=$("$velkill" check "$work/shop" invoice 0 "$work/base" 2>/dev/null); status=$?
expect_wrong "notes where only invoices were saved" TORN "$out" "$status"

# Kills of a note written statement by statement, as before saves were whole.
rm -rf "$work/shop"; cp -r "$work/base" "$work/shop"
out=$("$velkill" kills "$work/shop" note-untransacted 6 1 2>/dev/null); status=$?
summary=$(echo "$out" | tail -1)
echo "$summary" | cut -c1-200
if [ "$status" = 0 ] || ! echo "$summary" | grep -q 'torn: [1-9]'; then echo "  kills of a save without a transaction not found torn"; fail=1; fi
exit $fail
