#!/usr/bin/env bash
# Cold start of the window: time from exec of the binary until its top-level
# window "Kalkora" is mapped on the X server, for RUNS runs; prints every run
# and the median in milliseconds. Uses the X server of DISPLAY when it is
# set, otherwise a private Xvfb. Needs Xvfb (package xvfb) and
# xwininfo (package x11-utils).
# Usage: bench/cold_start.sh [path/to/kalkora] [runs]   (default: 5 runs)
set -euo pipefail

binary=${1:-build/app/kalkora}
runs=${2:-5}
binary=$(readlink -f "$binary")
[[ -x $binary ]] || { echo "no executable at $binary" >&2; exit 1; }
command -v xwininfo >/dev/null || { echo "xwininfo missing (apt-get install x11-utils)" >&2; exit 1; }

work=$(mktemp -d)
xvfb_pid=
cleanup() {
  if [[ -n $xvfb_pid ]]; then kill "$xvfb_pid" 2>/dev/null || true; fi
  rm -rf "$work"
}
trap cleanup EXIT
cd "$work"  # the window writes its run log into the working directory

if [[ -z ${DISPLAY:-} ]]; then
  # A private server on a display number that the server itself picks, so
  # that parallel Xvfb users cannot collide with it; -noreset keeps it from
  # resetting (and refusing connections) each time the previous run exits.
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -noreset 3>"$work/display" 2>/dev/null &
  xvfb_pid=$!
  for ((wait = 0; wait < 100; ++wait)); do
    [[ -s $work/display ]] && break
    sleep 0.1
  done
  [[ -s $work/display ]] || { echo "Xvfb did not start" >&2; exit 1; }
  export DISPLAY=":$(head -n 1 "$work/display")"
fi

times=()
for ((run = 1; run <= runs; ++run)); do
  start=$(date +%s%N)
  "$binary" >/dev/null 2>>"$work/stderr.txt" &
  pid=$!
  mapped=0
  # Poll (each xwininfo takes a few ms) for at most about 20 s.
  for ((poll = 0; poll < 4000; ++poll)); do
    if xwininfo -name Kalkora 2>/dev/null | grep -q 'Map State: IsViewable'; then
      mapped=1
      break
    fi
    if ! kill -0 "$pid" 2>/dev/null; then
      break
    fi
  done
  end=$(date +%s%N)
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
  if ((mapped == 0)); then
    echo "run $run: the window was never mapped" >&2
    cat "$work/stderr.txt" >&2
    exit 1
  fi
  ms=$(((end - start) / 1000000))
  times+=("$ms")
  echo "run $run: ${ms} ms"
  sleep 0.5
done

median=$(printf '%s\n' "${times[@]}" | sort -n | awk '{a[NR] = $1} END {print a[int((NR + 1) / 2)]}')
echo "median of $runs: ${median} ms"
