#!/usr/bin/env bash
# Sets everything up, builds Kelmo and runs every test: the whole suite (GTK and
# WebKit tests under Xvfb), then the unit tests again under AddressSanitizer and
# UndefinedBehaviorSanitizer.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
jobs="$(nproc)"
bash "$here/scripts/setup.sh"

# Display-bound tests get a private X server and session bus; no GPU here. Without
# -noreset Xvfb resets whenever its last client leaves, and a test starting right then
# cannot open the display.
export WEBKIT_DISABLE_DMABUF_RENDERER=1
export LIBGL_ALWAYS_SOFTWARE=1
under_display() { dbus-run-session -- xvfb-run -a -s "-screen 0 1600x1000x24 -noreset" "$@"; }

cmake -S "$here" -B "$here/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$here/build" -j "$jobs"
under_display ctest --test-dir "$here/build" --output-on-failure -j "$jobs"

cmake -S "$here" -B "$here/build-sanitize" -DCMAKE_BUILD_TYPE=Debug -DKELMO_SANITIZE=ON \
  -DKELMO_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$here/build-sanitize" -j "$jobs"
ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=print_stacktrace=1 \
  under_display ctest --test-dir "$here/build-sanitize" --output-on-failure -L unit -j "$jobs"
