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
"$velkill" prepare "$work/base" 2000 >/dev/null || exit 1
fail=0
snapshot() {
    sqlite3 "$1" "SELECT (SELECT count(*) FROM cabecera_albaran_venta), (SELECT count(*) FROM detalle_albaran_venta),
      (SELECT count(*) FROM cabecera_factura_venta), (SELECT count(*) FROM detalle_factura_venta),
      (SELECT count(*) FROM cabecera_diaria_ticket), (SELECT count(*) FROM detalle_diaria_ticket),
      (SELECT group_concat(serie_series || contador_series) FROM series), (SELECT sum(pvp_neto_productos) FROM productos)"
}
for kind in note-new note-modify invoice ticket bulk; do
    size=$(( $(stat -c %s "$work/base/datos.mdb") + 4 * 1024 * 1024 ))
    mount -t tmpfs -o size=$size tmpfs "$mnt" || exit 1
    cp "$work/base/datos.mdb" "$work/base/config.ini" "$mnt/"
    before=$(snapshot "$mnt/datos.mdb")
    "$velkill" full-disk "$mnt" "$kind" 8192 >"$work/out" 2>&1
    boxes=$(grep -c '^BOX' "$work/out")
    after=$(snapshot "$mnt/datos.mdb")
    echo "$kind: $boxes message(s): $(grep '^BOX' "$work/out" | cut -c1-160 | tr '\n' ' ')"
    if ! grep -q '^FULL' "$work/out"; then echo "  the disk was not filled"; cat "$work/out"; fail=1; fi
    if [ "$boxes" != 1 ]; then echo "  expected one message"; cat "$work/out"; fail=1; fi
    if ! grep '^BOX' "$work/out" | grep -q 'No hay suficiente espacio en disco'; then echo "  not the full disk's message"; fail=1; fi
    if [ "$before" != "$after" ]; then echo "  changed: $before -> $after"; fail=1; fi
    "$velkill" check "$mnt" 0 >/dev/null || { echo "  check failed"; "$velkill" check "$mnt" 0; fail=1; }
    umount "$mnt"
done
exit $fail
