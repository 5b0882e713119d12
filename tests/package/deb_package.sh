#!/usr/bin/env bash
# The Debian package made by `cpack -G DEB` in the build tree, unpacked into a
# temporary root: the program, the desktop entry and the icon are there, the
# package depends on the Debian package of every library the program links,
# it has its copyright and changelog and lintian finds no error in it,
# and the unpacked program starts on a shop's folder and, from anywhere else,
# on the user's own folder made on its first run.
# Usage: deb_package.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FALLO: $*" >&2; exit 1; }

cpack -G DEB --config "$build/CPackConfig.cmake" -B "$build/package" >"$tmp/cpack.log" 2>&1 ||
  { cat "$tmp/cpack.log" >&2; fail "cpack no ha hecho el paquete"; }
deb=$(ls "$build"/package/velmarinda_*_*.deb | head -n1)
[ -f "$deb" ] || fail "no hay paquete en $build/package"
root="$tmp/root"
dpkg-deb -x "$deb" "$root"

# What is installed.
bin="$root/usr/bin/velmarinda"
[ -x "$bin" ] || fail "falta /usr/bin/velmarinda"
[ -x "$root/usr/bin/velmarinda-newdb" ] || fail "falta /usr/bin/velmarinda-newdb"
head -c4 "$bin" | grep -q ELF || fail "/usr/bin/velmarinda no es un programa"
desktop="$root/usr/share/applications/velmarinda.desktop"
[ -f "$desktop" ] || fail "falta la entrada de escritorio"
grep -qx 'Type=Application' "$desktop" || fail "la entrada de escritorio no es de una aplicación"
grep -qx 'Exec=velmarinda' "$desktop" || fail "la entrada de escritorio no arranca velmarinda"
grep -qx 'Icon=velmarinda' "$desktop" || fail "la entrada de escritorio no nombra el icono"
icon="$root/usr/share/icons/hicolor/scalable/apps/velmarinda.svg"
[ -f "$icon" ] || fail "falta el icono"
grep -q '<svg' "$icon" || fail "el icono no es un SVG"

# The copyright and the changelog where Debian keeps them, and no error from
# lintian, Debian's checker of packages.
[ -f "$root/usr/share/doc/velmarinda/copyright" ] || fail "falta /usr/share/doc/velmarinda/copyright"
gzip -t "$root/usr/share/doc/velmarinda/changelog.Debian.gz" 2>/dev/null ||
  fail "falta /usr/share/doc/velmarinda/changelog.Debian.gz"
lintian --no-tag-display-limit "$deb" >"$tmp/lintian.log" 2>&1 || true
if grep -q '^E: ' "$tmp/lintian.log"; then
  cat "$tmp/lintian.log" >&2
  fail "lintian encuentra errores en el paquete"
fi

# Every library the program links comes from a package it depends on.
depends=$(dpkg-deb -f "$deb" Depends)
for lib in $(readelf -d "$bin" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'); do
  path=$(ldd "$bin" | awk -v l="$lib" '$1 == l { print $3 }')
  [ -n "$path" ] || continue   # the dynamic loader itself
  pkg=""
  for p in "$path" "/usr${path#/usr}" "${path#/usr}" "$(readlink -f "$path")"; do
    pkg=$(dpkg -S "$p" 2>/dev/null | head -n1 | cut -d: -f1) && [ -n "$pkg" ] && break
  done
  [ -n "$pkg" ] || fail "no se sabe de qué paquete es $path"
  echo "$depends" | tr ',' '\n' | sed 's/(.*)//; s/ //g' | grep -qx "$pkg" ||
    fail "$lib es de $pkg, que no está en Depends: $depends"
done

# Started from a shop's folder holding a datos.mdb, it works on that folder
# (it opens the database there and keeps running until stopped).
shop="$tmp/tienda"
mkdir -p "$shop" "$tmp/home"
"$root/usr/bin/velmarinda-newdb" "$shop/datos.mdb" >/dev/null
set +e
(cd "$shop" && HOME="$tmp/home" QT_QPA_PLATFORM=offscreen timeout 3 "$bin" >"$tmp/run.log" 2>&1)
code=$?
set -e
[ "$code" -eq 124 ] || { cat "$tmp/run.log" >&2; fail "el programa terminó ($code) en vez de seguir abierto"; }
[ -e "$shop/datos.mdb-wal" ] || fail "el programa no abrió la base de datos de la carpeta de la tienda"
[ ! -e "$tmp/home/Velmarinda" ] || fail "el programa hizo su carpeta en el directorio personal"

# Started from anywhere else the first time, it makes ~/Velmarinda with an
# empty database and the exchange folders, and works there.
mkdir -p "$tmp/otra"
set +e
(cd "$tmp/otra" && HOME="$tmp/home" QT_QPA_PLATFORM=offscreen timeout 3 "$bin" >"$tmp/run.log" 2>&1)
code=$?
set -e
[ "$code" -eq 124 ] || { cat "$tmp/run.log" >&2; fail "el programa terminó ($code) en su primera vez"; }
for f in datos.mdb config.ini enviar recibir importacion; do
  [ -e "$tmp/home/Velmarinda/$f" ] || fail "falta ~/Velmarinda/$f tras la primera vez"
done
[ -e "$tmp/home/Velmarinda/datos.mdb-wal" ] || fail "el programa no abrió ~/Velmarinda/datos.mdb"
echo "paquete $(basename "$deb") correcto"
