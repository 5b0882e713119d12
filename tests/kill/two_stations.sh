#!/usr/bin/env bash
# Two programs on one file save NOTES delivery notes each, at the same time:
# every note gets a number of its own and every line stays under its header.
set -u
velkill="$1"
notes="${NOTES:-500}"
lines=3
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
"$velkill" prepare "$work" 10 || exit 1
"$velkill" notes "$work" "$notes" "$lines" >"$work/a" 2>&1 &
a=$!
"$velkill" notes "$work" "$notes" "$lines" >"$work/b" 2>&1 &
b=$!
wait "$a"; ra=$?
wait "$b"; rb=$?
grep -v '^SAVED' "$work/a" "$work/b" | head -20
[ "$ra" -eq 0 ] && [ "$rb" -eq 0 ] || { echo "a program failed: $ra $rb"; exit 1; }
count=$(sqlite3 "$work/datos.mdb" "SELECT count(*), count(DISTINCT numero_cabecera_albaran_venta) FROM cabecera_albaran_venta WHERE numero_cabecera_albaran_venta > 1")
echo "notes saved, distinct numbers: $count"
[ "$count" = "$((2 * notes))|$((2 * notes))" ] || exit 1
# Every line under its own header: each new note has exactly its lines (the
# stored note 1 keeps its 200).
"$velkill" check "$work" 0 || exit 1
bad=$(sqlite3 "$work/datos.mdb" "SELECT count(*) FROM cabecera_albaran_venta c WHERE numero_cabecera_albaran_venta > 1 AND (SELECT count(*) FROM detalle_albaran_venta l WHERE l.ejercicio_detalle_albaran_venta = c.ejercicio_cabecera_albaran_venta AND l.numero_detalle_albaran_venta = c.numero_cabecera_albaran_venta) <> $lines")
echo "notes without exactly their $lines lines: $bad"
[ "$bad" = 0 ]
