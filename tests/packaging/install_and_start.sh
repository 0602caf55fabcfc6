#!/usr/bin/env bash
# Builds the Debian package from a configured and built tree, checks it with
# Debian's tools where installed (lintian, appstreamcli, desktop-file-validate:
# any error or warning fails), unpacks it into a scratch root as dpkg would install
# it, and starts the menu entry's command there headless, as a menu does: from the
# home folder, which the run log must not land in.
# Usage: install_and_start.sh CPACK CPACK_CONFIG
# Exits 0 on success, 1 on a failed check, 77 when dpkg's tools are missing.
set -euo pipefail

cpack_cmd=$1
cpack_config=$2
build_dir=$(dirname "$cpack_config")

for tool in dpkg dpkg-deb; do
  if ! command -v "$tool" >/dev/null; then
    echo "SKIP: $tool is not installed"
    exit 77
  fi
done

# CPack's install step rewrites the build tree's install_manifest.txt, which a real
# `cmake --install` may have left for uninstalling: put back what was there.
manifest=$build_dir/install_manifest.txt
manifest_saved=
pid=
scratch=$(mktemp -d "${TMPDIR:-/tmp}/kalkora-packaging.XXXXXX")
stop() {
  if [[ -n "$pid" ]] && kill -0 "$pid" 2>/dev/null; then
    kill -TERM "$pid" 2>/dev/null || true
    for _ in 1 2 3 4 5 6 7 8 9 10; do
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.2
    done
    kill -KILL "$pid" 2>/dev/null || true
  fi
  [[ -z "$pid" ]] || wait "$pid" 2>/dev/null || true
  pid=
}
cleanup() {
  stop
  if [[ -n "$manifest_saved" ]]; then
    cp -p "$scratch/install_manifest.txt" "$manifest"
  else
    rm -f "$manifest"
  fi
  rm -rf "$scratch"
}
trap cleanup EXIT
trap 'exit 1' INT TERM
if [[ -f "$manifest" ]]; then
  cp -p "$manifest" "$scratch/install_manifest.txt"
  manifest_saved=yes
fi

failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}
# A failure that leaves nothing further to check.
fatal() {
  echo "FAIL: $*" >&2
  exit 1
}
# The checkers come with scripts/install-deps.sh --dev; without them, say so.
have() {
  command -v "$1" >/dev/null && return
  echo "SKIP: $1 is not installed, its check is not run"
  return 1
}

# --- build and check the package ------------------------------------------------
if ! "$cpack_cmd" -G DEB --config "$cpack_config" -B "$scratch/out" >"$scratch/cpack.log" 2>&1; then
  cat "$scratch/cpack.log" >&2
  fatal "cpack -G DEB failed"
fi
shopt -s nullglob
debs=("$scratch"/out/*.deb)
shopt -u nullglob
((${#debs[@]} == 1)) || fatal "expected one .deb, found ${#debs[@]}: ${debs[*]:-none}"
deb=${debs[0]}
echo "package: $(basename "$deb"), $(stat -c %s "$deb") bytes"
if have lintian; then
  lintian --fail-on error,warning "$deb" || fail "lintian reports errors or warnings"
fi

depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
# Depends is a comma-separated list of "name [(version)]" or alternatives "a | b";
# compare whole package names so that e.g. libqt5widgets5-dev would not count.
# The Qt and Qwt names come from dpkg-shlibdeps, the font from the build files.
dep_names=$(tr ',|' '\n\n' <<<"$depends" | sed -e 's/(.*)//' -e 's/\[.*\]//' -e 's/[[:space:]]//g')
for needed in libqt5widgets5 libqwt-qt5-6 fonts-crosextra-carlito; do
  grep -qx "$needed" <<<"$dep_names" || fail "Depends does not name $needed"
done

# --- unpack as dpkg would install it ---------------------------------------------
root=$scratch/root
dpkg -x "$deb" "$root" || fatal "dpkg -x failed"

# A new version needs its changelog entry and its AppStream release.
version=$(dpkg-deb -f "$deb" Version)
zcat "$root/usr/share/doc/kalkora/changelog.Debian.gz" | head -n 1 | grep -qF "kalkora ($version)" \
  || fail "the newest changelog.Debian entry is not version $version"
grep -qF "<release version=\"${version%-*}\"" "$root"/usr/share/metainfo/*.metainfo.xml \
  || fail "the AppStream metadata lists no release ${version%-*}"
if have appstreamcli; then
  # Validates the metadata against the tree: its launchable desktop file must exist.
  appstreamcli validate-tree --no-net "$root" || fail "appstreamcli rejects the AppStream metadata"
fi

desktop=$root/usr/share/applications/org.kalkora.Kalkora.desktop
[[ -f "$desktop" ]] || fatal "usr/share/applications/org.kalkora.Kalkora.desktop is missing"
if have desktop-file-validate; then
  # Warnings do not change its exit status: any message fails.
  messages=$(desktop-file-validate "$desktop" 2>&1) && [[ -z "$messages" ]] \
    || fail "desktop-file-validate: $messages"
fi
icon_name=$(sed -n 's/^Icon=//p' "$desktop")
[[ -f "$root/usr/share/icons/hicolor/scalable/apps/$icon_name.svg" ]] \
  || fail "no icon '$icon_name' under usr/share/icons/hicolor/scalable/apps"

# The menu's command, with its field codes (%f, %U, ...) dropped and its program
# mapped into the scratch root.
exec_line=$(sed -n 's/^Exec=//p' "$desktop")
read -r -a command <<<"${exec_line//%[A-Za-z]/}"
[[ "${command[0]}" == /* ]] || command[0]=/usr/bin/${command[0]}
command[0]=$root${command[0]}
[[ -f "${command[0]}" && -x "${command[0]}" ]] || fatal "Exec=$exec_line is not a program in the package"

# --- start it from the menu ----------------------------------------------------
# menu_start CASE WHERE [VAR=VALUE...]: starts the command in $scratch/CASE/home,
# with that as HOME and the given environment, waits for its run log, checks that
# the program is still running a second later and stops it. The one run log under
# $scratch/CASE must be in $scratch/CASE/WHERE.
mkdir -m 700 "$scratch/runtime"
menu_start() {
  local name=$1 dir=$scratch/$1 expected=$scratch/$1/$2 logs=()
  shift 2
  mkdir -p "$dir/home"
  (
    cd "$dir/home"
    exec env -u XDG_STATE_HOME -u XDG_CONFIG_HOME -u XDG_CACHE_HOME HOME="$dir/home" \
      QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$scratch/runtime" "$@" "${command[@]}"
  ) >"$dir/kalkora.out" 2>&1 </dev/null &
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
  fi
  stop
  [[ ${#logs[@]} == 1 && "$(dirname "${logs[0]:-}")" == "$expected" ]] \
    || fail "$name: expected one run log in $expected, found: ${logs[*]:-none}"
}
menu_start default home/.local/state/kalkora
menu_start state-home state/kalkora XDG_STATE_HOME="$scratch/state-home/state"
mkdir -p "$scratch/blocked/home/.local" && touch "$scratch/blocked/home/.local/state"
menu_start blocked home

if ((failures > 0)); then
  echo "$failures check(s) failed" >&2
  exit 1
fi
echo "started from the menu, kalkora wrote its run log into the XDG state folder"
