#!/usr/bin/env bash
# Two programs on one file save NOTES delivery notes each, at the same time:
# every note gets a number of its own and every line stays under its header.
set -u
velkill="$1"
notes="${NOTES:-500}"
lines=3
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$velkill" prepare "$work/base" 10 >/dev/null 2>&1 || exit 1
cp -r "$work/base" "$work/shop"
"$velkill" notes "$work/shop" "$notes" "$lines" >"$work/a" 2>&1 &
a=$!
"$velkill" notes "$work/shop" "$notes" "$lines" >"$work/b" 2>&1 &
b=$!
wait "$a"; ra=$?
wait "$b"; rb=$?
grep -hv '^SAV\|^COMMIT\|propagateSizeHints\|XDG_RUNTIME_DIR' "$work/a" "$work/b" | head -20
[ "$ra" -eq 0 ] && [ "$rb" -eq 0 ] || { echo "a program failed: $ra $rb"; exit 1; }
echo "saved: $(grep -c '^SAVED' "$work/a") + $(grep -c '^SAVED' "$work/b") notes"
# Exactly 2 x NOTES notes more than before, no number twice, each new note
# with exactly its lines under it, its counter at the last number.
"$velkill" check "$work/shop" note-new $((2 * notes)) "$work/base" --note-lines=$lines --exact 2>/dev/null
