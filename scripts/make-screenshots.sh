#!/usr/bin/env bash
# Makes the AppStream screenshots, data/screenshots/player.png and library.png, from the
# built Kelmo under Xvfb, on a home of its own with the examples in Downloads: the
# player as Kelmo opens the newest of them, then the library after Back to Library.
#
#   scripts/make-screenshots.sh [BUILD_DIR]      (build/ by default)
#
# Needs xvfb-run, dbus-run-session, ImageMagick's import and the system Python with AT-SPI
# (scripts/setup.sh installs them).
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
build="$(cd "${1:-$here/build}" && pwd)"
# The screen is the main window's default size, which fills it without a window manager.
if [ -z "${KELMO_SCREENSHOT_DISPLAY:-}" ]; then
  exec env KELMO_SCREENSHOT_DISPLAY=1 dbus-run-session -- \
    xvfb-run -a -s "-screen 0 1100x700x24" bash "$0" "$build"
fi

work="$(mktemp -d)"
kelmo_pid=""
cleanup() {
  [ -n "$kelmo_pid" ] && kill "$kelmo_pid" 2>/dev/null && wait "$kelmo_pid" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
export HOME="$work" XDG_CONFIG_HOME="$work/.config" XDG_DATA_HOME="$work/.local/share" \
  XDG_CACHE_HOME="$work/.cache" GSETTINGS_BACKEND=memory GSK_RENDERER=cairo \
  WEBKIT_DISABLE_DMABUF_RENDERER=1 LIBGL_ALWAYS_SOFTWARE=1
mkdir -p "$HOME/Downloads" "$XDG_CONFIG_HOME/kelmo"
echo "{'hasSeenOnboarding': <true>}" >"$XDG_CONFIG_HOME/kelmo/settings"
cp -r "$here/examples/." "$HOME/Downloads/"
# The task board is the newest, so it is the one that opens; the others are hours old.
find "$HOME/Downloads" -type f -exec touch -d "-3 hours" {} +
touch -d "-2 minutes" "$HOME/Downloads/task-board.tsx"

"$build/bin/kelmo" >/dev/null 2>&1 &
kelmo_pid=$!
mkdir -p "$here/data/screenshots"
sleep 15
import -window root "$here/data/screenshots/player.png"

/usr/bin/python3 - "$kelmo_pid" <<'PY'
import sys, time
import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi

def find(node, wanted):
    if node.get_role() == Atspi.Role.PUSH_BUTTON and node.get_name() == wanted:
        return node
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        found = child and find(child, wanted)
        if found:
            return found
    return None

desktop = Atspi.get_desktop(0)
for attempt in range(100):
    apps = [desktop.get_child_at_index(i) for i in range(desktop.get_child_count())]
    app = next((a for a in apps if a and a.get_process_id() == int(sys.argv[1])), None)
    button = app and find(app, "Back to Library")
    if button:
        button.do_action(0)
        break
    time.sleep(0.2)
else:
    sys.exit("no Back to Library button")
PY
sleep 3
import -window root "$here/data/screenshots/library.png"
echo "wrote data/screenshots/player.png and library.png"
