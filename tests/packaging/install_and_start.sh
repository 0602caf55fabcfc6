#!/usr/bin/env bash
# Builds the Debian package from a configured and built tree, checks it with Debian's tools where installed (lintian,
# appstreamcli, desktop-file-validate: any error or warning fails), unpacks it into a scratch root as dpkg would
# install it, and starts the menu entry's command there on a virtual display, as a menu does: from the home folder,
# which the run log must not land in. Usage: install_and_start.sh CPACK CPACK_CONFIG. Exits 0 on success, 1 on a failed
# check, 77 when dpkg's tools are missing.
set -euo pipefail
if [[ -z "${KALKORA_XVFB:-}" ]] && command -v xvfb-run >/dev/null; then
  KALKORA_XVFB=1 exec xvfb-run -a -s "-screen 0 1024x768x24" bash "$0" "$@"
fi
command -v dpkg-deb >/dev/null || { echo "SKIP: dpkg-deb is not installed"; exit 77; }

# CPack's install step rewrites the build tree's install_manifest.txt, which a real `cmake --install` may have left
# for uninstalling: put back what was there.
manifest=$(dirname "$2")/install_manifest.txt
scratch=$(mktemp -d "${TMPDIR:-/tmp}/kalkora-packaging.XXXXXX")
cp -p "$manifest" "$scratch/" 2>/dev/null || true
pid=
stop() { [[ -z "$pid" ]] || { kill -TERM "$pid" 2>/dev/null; wait "$pid" 2>/dev/null; pid=; } || true; }
trap 'stop; mv -f "$scratch/install_manifest.txt" "$manifest" 2>/dev/null || rm -f "$manifest"; rm -rf "$scratch"' EXIT
trap 'exit 1' INT TERM

failures=0
fail() { echo "FAIL: $*" >&2; failures=$((failures + 1)); }
fatal() { echo "FAIL: $*" >&2; exit 1; }
# The checkers come with scripts/install-deps.sh --dev; without them, say so.
have() { command -v "$1" >/dev/null || { echo "SKIP: $1 is not installed, its check is not run"; return 1; }; }

# --- build and check the package ------------------------------------------------
"$1" -G DEB --config "$2" -B "$scratch/out" >"$scratch/cpack.log" 2>&1 || { cat "$scratch/cpack.log" >&2; fatal "cpack -G DEB failed"; }
deb=$(echo "$scratch"/out/*.deb)
[[ -f "$deb" ]] || fatal "expected one .deb, found: $deb"
echo "package: $(basename "$deb"), $(stat -c %s "$deb") bytes"
if have lintian; then lintian --fail-on error,warning "$deb" || fail "lintian reports errors or warnings"; fi
# Whole package names of Depends (dpkg-shlibdeps names Qt and Qwt, the build files the font).
dep_names=$(dpkg-deb -f "$deb" Depends | tr ',|' '\n\n' | sed -e 's/(.*)//' -e 's/[[:space:]]//g')
for needed in libqt5widgets5 libqwt-qt5-6 fonts-crosextra-carlito; do
  grep -qx "$needed" <<<"$dep_names" || fail "Depends does not name $needed"
done

# --- unpack as dpkg would install it ---------------------------------------------
root=$scratch/root
dpkg-deb -x "$deb" "$root" || fatal "dpkg-deb -x failed"
# A new version needs its changelog entry and its AppStream release.
version=$(dpkg-deb -f "$deb" Version)
zcat "$root/usr/share/doc/kalkora/changelog.Debian.gz" | head -n 1 | grep -qF "kalkora ($version)" \
  || fail "the newest changelog.Debian entry is not version $version"
grep -qF "<release version=\"${version%-*}\"" "$root"/usr/share/metainfo/*.metainfo.xml \
  || fail "the AppStream metadata lists no release ${version%-*}"
if have appstreamcli; then  # validates the metadata against the tree: its desktop file must exist
  appstreamcli validate-tree --no-net "$root" || fail "appstreamcli rejects the AppStream metadata"
fi
desktop=$root/usr/share/applications/org.kalkora.Kalkora.desktop
[[ -f "$desktop" ]] || fatal "usr/share/applications/org.kalkora.Kalkora.desktop is missing"
if have desktop-file-validate; then  # warnings keep its exit status 0: any message fails
  messages=$(desktop-file-validate "$desktop" 2>&1) && [[ -z "$messages" ]] || fail "desktop-file-validate: $messages"
fi
icon=$(sed -n 's/^Icon=//p' "$desktop")
[[ -f "$root/usr/share/icons/hicolor/scalable/apps/$icon.svg" ]] || fail "no icon '$icon' in the hicolor theme"
# The menu's command, without field codes (%f, %U, ...), its program mapped into the scratch root.
exec_line=$(sed -n 's/^Exec=//p' "$desktop")
read -r -a command <<<"${exec_line//%[A-Za-z]/}"
[[ "${command[0]}" == /* ]] || command[0]=/usr/bin/${command[0]}
command[0]=$root${command[0]}
[[ -x "${command[0]}" ]] || fatal "Exec=$exec_line is not a program in the package"

# --- start it from the menu ----------------------------------------------------
# menu_start CASE WHERE [VAR=VALUE...]: starts the command from $scratch/CASE/home as HOME with the given environment
# and waits for its run log; a second later the program must still run and show its window. The one run log under
# $scratch/CASE must be in $scratch/CASE/WHERE.
mkdir -m 700 "$scratch/runtime"
platform=offscreen
[[ -z "${DISPLAY:-}" ]] || platform=xcb
menu_start() {
  local name=$1 dir=$scratch/$1 expected=$scratch/$1/$2 logs=()
  shift 2
  mkdir -p "$dir/home"
  (cd "$dir/home" && exec env -u XDG_STATE_HOME HOME="$dir/home" QT_QPA_PLATFORM=$platform \
    XDG_RUNTIME_DIR="$scratch/runtime" "$@" "${command[@]}") >"$dir/kalkora.out" 2>&1 </dev/null &
  pid=$!
  for _ in $(seq 50); do
    mapfile -t logs < <(find "$dir" -name 'log-*.txt')
    ((${#logs[@]} == 0)) && kill -0 "$pid" 2>/dev/null || break
    sleep 0.2
  done
  sleep 1
  if ! kill -0 "$pid" 2>/dev/null; then
    cat "$dir/kalkora.out" >&2
    fail "$name: the program exited early"
  elif [[ -n "${DISPLAY:-}" ]] && have xwininfo; then
    xwininfo -name Kalkora 2>/dev/null | grep -q 'Map State: IsViewable' || fail "$name: no window is shown"
  fi
  stop
  [[ ${#logs[@]} == 1 && "$(dirname "${logs[0]:-}")" == "$expected" ]] \
    || fail "$name: expected one run log in $expected, found: ${logs[*]:-none}"
}
menu_start default home/.local/state/kalkora
menu_start state-home state/kalkora XDG_STATE_HOME="$scratch/state-home/state"
mkdir -p "$scratch/blocked/home/.local" && touch "$scratch/blocked/home/.local/state"
menu_start blocked home

((failures == 0)) || fatal "$failures check(s) failed"
echo "started from the menu, kalkora showed its window and wrote its run log into the XDG state folder"
