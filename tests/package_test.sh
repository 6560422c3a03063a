#!/usr/bin/env bash
# Makes the Debian package from a built tree and reads it as Debian's tools do: lintian
# finds no error and no warning but those docs/packaging.md waives; the package holds
# its copyright file (naming every bundled package at its version), changelog, manual
# page and D-Bus service, and a stripped, hardened program.
set -euo pipefail
build_dir="$1"
source_dir="$2"
waived="initial-upload-closes-no-bugs"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

(cd "$build_dir" && cpack -G DEB -B "$work" >/dev/null)
deb="$(ls "$work"/kelmo_*.deb)"
report="$(lintian "$deb" 2>/dev/null | grep -E '^[EW]: ' | grep -vE ": ($waived)( |$)" || true)"
[ -z "$report" ] || { echo "lintian: $report"; exit 1; }

dpkg-deb -x "$deb" "$work/root"
for file in usr/share/doc/kelmo/copyright usr/share/doc/kelmo/changelog.Debian.gz \
    usr/share/man/man1/kelmo.1.gz usr/share/dbus-1/services/org.kelmo.Kelmo.service; do
  [ -e "$work/root/$file" ] || { echo "missing from the package: $file"; exit 1; }
done
grep -qx "Exec=/usr/bin/kelmo --gapplication-service" "$work/root/usr/share/dbus-1/services/org.kelmo.Kelmo.service"
program="$work/root/usr/bin/kelmo"
! readelf -S "$program" | grep -q '\.symtab' || { echo "the program is not stripped"; exit 1; }
readelf -d "$program" | grep -q 'Flags: NOW PIE' && readelf -lW "$program" | grep -q GNU_RELRO ||
  { echo "the program lacks full RELRO or PIE"; exit 1; }

node "$source_dir/scripts/list-bundled-packages.mjs" "$build_dir" | sed '$d' | while read -r name version _; do
  grep -qF " $name $version in " "$work/root/usr/share/doc/kelmo/copyright" ||
    { echo "the copyright file does not name $name $version"; exit 1; }
done
echo "the package passes lintian and holds what Debian asks for"
