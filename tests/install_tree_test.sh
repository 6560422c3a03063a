#!/usr/bin/env bash
# Installs the build into a temporary prefix and runs Kelmo from there: the
# installed binary must find its resources and its compiler and run a JSX artifact,
# whose console line must reach standard output. Needs a display (run under Xvfb).
set -euo pipefail
build_dir="$1"
work="$(mktemp -d)"
cleanup() {
  if [ -n "${kelmo_pid:-}" ]; then
    # Kelmo leads its own session; WebKit's helper processes stay in it after Kelmo
    # is gone and keep writing to its cache folder for a moment.
    pkill -s "$kelmo_pid" 2>/dev/null || true
    wait "$kelmo_pid" 2>/dev/null || true
    for helper in $(pgrep -s "$kelmo_pid"); do
      timeout 10 tail --pid="$helper" -f /dev/null || true
    done
  fi
  rm -rf "$work"
}
trap cleanup EXIT

prefix="$work/prefix"
cmake --install "$build_dir" --prefix "$prefix" >/dev/null

for file in bin/kelmo libexec/kelmo/esbuild share/kelmo/resources/runtime.html share/kelmo/resources/runtime.js \
    share/kelmo/resources/react.production.min.js share/kelmo/resources/babel.min.js \
    share/kelmo/resources/style.css share/kelmo/resources/kelmo-ui.js share/kelmo/resources/lib-recharts.js \
    share/kelmo/resources/lucide-icons.js share/applications/org.kelmo.Kelmo.desktop \
    share/metainfo/org.kelmo.Kelmo.metainfo.xml share/mime/packages/org.kelmo.Kelmo.xml \
    share/icons/hicolor/scalable/apps/org.kelmo.Kelmo.svg share/man/man1/kelmo.1.gz \
    share/doc/kelmo/copyright share/dbus-1/services/org.kelmo.Kelmo.service \
    share/mime/mime.cache share/icons/hicolor/icon-theme.cache share/applications/mimeinfo.cache; do
  [ -e "$prefix/$file" ] || { echo "missing after install: $file"; exit 1; }
done
# D-Bus starts the installed program.
grep -qx "Exec=$prefix/bin/kelmo --gapplication-service" "$prefix/share/dbus-1/services/org.kelmo.Kelmo.service"

# A React source is Kelmo's type where the MIME database also knows Tiled's XML
# tilesets by *.tsx (as newer shared-mime-info does); a tileset stays Tiled's.
mime="$work/mime-home/mime"
mkdir -p "$mime/packages"
sed 's|^</mime-info>|<mime-type type="application/x-tiled-tsx"><sub-class-of type="application/xml"/><glob pattern="*.tsx"/></mime-type>&|' \
  /usr/share/mime/packages/freedesktop.org.xml >"$mime/packages/freedesktop.org.xml"
cp "$prefix/share/mime/packages/org.kelmo.Kelmo.xml" "$mime/packages/"
update-mime-database "$mime" 2>/dev/null
printf 'import React from "react";\nexport default () => <p/>;\n' >"$work/App.tsx"
printf '<?xml version="1.0"?>\n<tileset name="tiles"/>\n' >"$work/tiles.tsx"
for expected in App.tsx=text/tsx tiles.tsx=application/x-tiled-tsx; do
  type="$(XDG_DATA_HOME="$work/mime-home" XDG_DATA_DIRS=/nonexistent gio info -a standard::content-type \
    "$work/${expected%%=*}" | sed -n 's/.*content-type: //p')"
  [ "$type" = "${expected#*=}" ] || { echo "${expected%%=*} is $type"; exit 1; }
done

export GSK_RENDERER="${GSK_RENDERER:-cairo}" HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data" \
  XDG_CACHE_HOME="$work/home/cache"
"$prefix/bin/kelmo" --version | grep -q '^Kelmo '
[ -x "$prefix/libexec/kelmo/esbuild" ] || { echo "the installed esbuild cannot run"; exit 1; }
leftovers="$(ls "$prefix/libexec/kelmo")"
[ "$leftovers" = esbuild ] || { echo "libexec/kelmo holds more than esbuild: $leftovers"; exit 1; }

# A first start watches Downloads and opens its newest artifact straight away.
mkdir -p "$HOME/Downloads"
cat > "$HOME/Downloads/installed.jsx" <<'JSX'
export default function Installed() {
  // Compiled by the installed esbuild, the page never loads Babel.
  React.useEffect(() => console.log("installed tree renders, Babel " + typeof Babel), []);
  return <h1>Installed</h1>;
}
JSX
mkfifo "$work/output"
setsid "$prefix/bin/kelmo" >"$work/output" 2>/dev/null &
kelmo_pid=$!
exec 3<"$work/output"
if timeout 60 grep -m1 -q "🔵 \[JS\] installed tree renders, Babel undefined" <&3; then
  echo "installed Kelmo ran the artifact"
else
  echo "installed Kelmo did not run the artifact"
  exit 1
fi

# A second launch hands its file to the running Kelmo, which shows it, and exits.
cat > "$work/forwarded.jsx" <<'JSX'
export default function Forwarded() {
  React.useEffect(() => console.log("forwarded file renders"), []);
  return <h1>Forwarded</h1>;
}
JSX
timeout 30 "$prefix/bin/kelmo" "$work/forwarded.jsx"
if timeout 60 grep -m1 -q "🔵 \[JS\] forwarded file renders" <&3; then
  echo "the running Kelmo showed the forwarded file"
else
  echo "the running Kelmo did not show the forwarded file"
  exit 1
fi

# A path that does not exist is reported and opens nothing.
if message="$("$prefix/bin/kelmo" "$work/missing.jsx" 2>&1)"; then
  echo "a missing file did not fail"
  exit 1
fi
case "$message" in
  *"cannot open"*missing.jsx*) echo "a missing file is reported" ;;
  *) echo "unexpected message for a missing file: $message"; exit 1 ;;
esac
