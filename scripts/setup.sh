#!/usr/bin/env bash
# Installs every Debian 12 package Velmarinda needs to build, run and test.
# libqt6svg6 draws the program's icon; x11-apps brings xcalc, the calculator
# of Utilidades > Calculadora. libfreexl-dev reads .xls workbooks and
# liborcus-dev .xlsx and .ods ones (the invoice's import); python3-xlwt writes
# the tests' sample .xls files. lintian checks the Debian package in its test.
# Idempotent: when everything is already there it returns at once.
# --fuzz adds what scripts/fuzz.sh needs.
set -euo pipefail
PACKAGES=(
  g++ cmake make pkg-config ccache
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins qt6-translations-l10n libqt6printsupport6 libgl-dev
  libqt6svg6
  libsqlite3-dev sqlite3 libicu-dev libshp-dev libzip-dev
  libfreexl-dev liborcus-dev libixion-dev
  python3 python3-xlwt zip
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev llvm
  fonts-liberation xvfb xauth locales
  x11-apps unzip
  fonts-dejavu-core fontconfig cups cups-client cups-bsd printer-driver-cups-pdf poppler-utils
  lintian
)
# The fuzz targets' tool chain, for scripts/fuzz.sh only: clang with libFuzzer
# and the sanitizers' runtime.
if [ "${1:-}" = "--fuzz" ]; then
  PACKAGES+=(clang-14 libclang-rt-14-dev)
fi
missing=()
for p in "${PACKAGES[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO apt-get update -q
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
fi
# The Spanish locale, so that the tests can prove the decimal point does not follow it.
if ! locale -a 2>/dev/null | grep -qi '^es_ES.utf8$'; then
  SUDO=""; [ "$(id -u)" -ne 0 ] && SUDO="sudo"
  $SUDO sed -i 's/^# *es_ES.UTF-8 UTF-8/es_ES.UTF-8 UTF-8/' /etc/locale.gen
  grep -q '^es_ES.UTF-8 UTF-8' /etc/locale.gen || echo 'es_ES.UTF-8 UTF-8' | $SUDO tee -a /etc/locale.gen >/dev/null
  $SUDO locale-gen >/dev/null
fi
