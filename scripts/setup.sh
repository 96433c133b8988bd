#!/usr/bin/env bash
# Installs every Debian package the build, the tests and the demo need; skips what is there.
set -euo pipefail
packages=(
  build-essential cmake pkg-config ccache
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite libqt6sql6-psql qt6-qpa-plugins
  libgl-dev
  googletest libgtest-dev libgmock-dev libsqlite3-dev libpq-dev
  xvfb xauth x11-apps x11-utils xdotool xclip imagemagick poppler-utils qpdf sqlite3 fonts-dejavu-core
  at-spi2-core dbus python3-pyatspi
  postgresql postgresql-client graphviz
  libmdb3 mdbtools-dev libglib2.0-dev
  dpkg-dev file lintian desktop-file-utils appstream
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi
