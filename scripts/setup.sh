#!/usr/bin/env bash
# Installs what building, running and testing Kelmo needs on Debian 12.
# Idempotent: packages already present are not reinstalled, and the
# runtime page's npm packages are only reinstalled when the lockfile changed.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

packages=(
  build-essential cmake pkg-config git
  libgtkmm-4.0-dev libwebkitgtk-6.0-dev libepoxy-dev libicu-dev
  libgtest-dev libgmock-dev libbenchmark-dev libxtst-dev
  xvfb xauth imagemagick dbus-x11 at-spi2-core python3-gi gir1.2-atspi-2.0 xdotool procps
  clang-format desktop-file-utils appstream shared-mime-info libglib2.0-bin help2man lintian
  fonts-dejavu-core adwaita-icon-theme libgtk-4-bin librsvg2-bin librsvg2-common
  nodejs
  # Emoji in artifacts; Chromium opens exported pages in the tests.
  fonts-noto-color-emoji chromium
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -gt 0 ]; then
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  echo "Installing: ${missing[*]}"
  "${sudo_cmd[@]}" apt-get update -q
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# npm ships with the nodesource nodejs package; Debian's own nodejs needs it separately.
if ! command -v npm >/dev/null 2>&1; then
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends npm
fi

# JavaScript that the runtime page ships, pinned by package-lock.json.
if [ -f "$here/package-lock.json" ]; then
  stamp="$here/node_modules/.kelmo-lock-stamp"
  if [ ! -f "$stamp" ] || ! cmp -s "$here/package-lock.json" "$stamp"; then
    (cd "$here" && npm ci --no-audit --no-fund)
    cp "$here/package-lock.json" "$stamp"
  fi
fi
