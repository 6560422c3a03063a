#!/usr/bin/env bash
# Sets everything up, builds Kelmo and launches it. Arguments go to kelmo.
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
bash "$here/scripts/setup.sh"
cmake -S "$here" -B "$here/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$here/build" -j "$(nproc)"
exec "$here/build/bin/kelmo" "$@"
