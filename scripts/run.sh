#!/usr/bin/env bash
# Builds Kalkora and starts it. Installs what is missing.
# The run log (log-<start time>.txt) is written to the current directory.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"

"$root/scripts/install-deps.sh"
cmake -S "$root" -B "$root/build" -G Ninja
cmake --build "$root/build" --target kalkora

if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
  echo "kalkora: no display found (DISPLAY is not set)." >&2
  echo "Hint: start it on a virtual display with" >&2
  echo "  xvfb-run -a -s '-screen 0 1024x768x24' $root/build/app/kalkora" >&2
  echo "or log in to a desktop session and run this command again." >&2
  exit 1
fi
exec "$root/build/app/kalkora" "$@"
