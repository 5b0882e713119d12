#!/usr/bin/env bash
# Each save on a full disk (a small tmpfs mounted for the test): one message,
# and the database as it was before. Skipped (77) where no filesystem can be
# mounted (no root, or no permission to mount in this container).
set -u
velkill="$1"
work="$(mktemp -d)"
mnt="$work/disk"
mkdir -p "$mnt"
cleanup() { umount "$mnt" 2>/dev/null; rm -rf "$work"; }
trap cleanup EXIT
if [ "$(id -u)" != 0 ] || ! mount -t tmpfs -o size=8m tmpfs "$mnt" 2>/dev/null; then
    echo "SKIPPED: a small filesystem can't be mounted here (needs root and permission to mount)"
    exit 77
fi
umount "$mnt"
"$velkill" prepare "$work/base" 2000 >/dev/null 2>&1 || exit 1
fail=0
for kind in note-new note-modify invoice ticket bulk; do
    size=$(( $(du -sb "$work/base" | cut -f1) + 4 * 1024 * 1024 ))
    mount -t tmpfs -o size=$size tmpfs "$mnt" || exit 1
    cp -r "$work/base/." "$mnt/"
    "$velkill" full-disk "$mnt" "$kind" 8192 >"$work/out" 2>&1
    boxes=$(grep -c '^BOX' "$work/out")
    echo "$kind: $boxes message(s): $(grep '^BOX' "$work/out" | cut -c1-160 | tr '\n' ' ')"
    if ! grep -q '^FULL' "$work/out"; then echo "  the disk was not filled"; cat "$work/out"; fail=1; fi
    if [ "$boxes" != 1 ]; then echo "  expected one message"; cat "$work/out"; fail=1; fi
    if ! grep '^BOX' "$work/out" | grep -q 'No hay suficiente espacio en disco'; then echo "  not the full disk's message"; fail=1; fi
    # Nothing changed: the shop is the one before, moved on by no save.
    if ! "$velkill" check "$mnt" "$kind" 0 "$work/base" --exact >"$work/check" 2>/dev/null; then
        echo "  changed:"; cat "$work/check"; fail=1
    fi
    umount "$mnt"
done
exit $fail
