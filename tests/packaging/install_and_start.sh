#!/usr/bin/env bash
# Builds the Debian package from a configured and built tree, unpacks it into a
# scratch root as dpkg would install it, checks the files a desktop needs, and
# starts the unpacked binary headless to see that it comes up and writes its run log.
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
cleanup() {
  if [[ -n "$pid" ]] && kill -0 "$pid" 2>/dev/null; then
    kill -TERM "$pid" 2>/dev/null || true
    for _ in 1 2 3 4 5 6 7 8 9 10; do
      kill -0 "$pid" 2>/dev/null || break
      sleep 0.2
    done
    kill -KILL "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  fi
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

# --- build the package ---------------------------------------------------------
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

# --- control fields ------------------------------------------------------------
package=$(dpkg-deb -f "$deb" Package)
[[ "$package" == kalkora ]] || fail "Package is '$package', not 'kalkora'"
depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
# Depends is a comma-separated list of "name [(version)]" or alternatives "a | b";
# compare whole package names so that e.g. libqt5widgets5-dev would not count.
dep_names=$(tr ',|' '\n\n' <<<"$depends" | sed -e 's/(.*)//' -e 's/\[.*\]//' -e 's/[[:space:]]//g')
for needed in libqt5widgets5 libqwt-qt5-6; do
  grep -qx "$needed" <<<"$dep_names" || fail "Depends does not name $needed"
done

# --- unpack as dpkg would install it ---------------------------------------------
root=$scratch/root
dpkg -x "$deb" "$root" || fatal "dpkg -x failed"

binary=$root/usr/bin/kalkora
[[ -f "$binary" && -x "$binary" ]] || fatal "usr/bin/kalkora is missing or not executable"

desktop=$root/usr/share/applications/kalkora.desktop
if [[ ! -f "$desktop" ]]; then
  fail "usr/share/applications/kalkora.desktop is missing"
else
  if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$desktop" || fail "desktop-file-validate rejects kalkora.desktop"
  else
    echo "note: desktop-file-validate not installed, the desktop entry is not validated"
  fi
  # The launcher must start a program the package ships, and name an icon it ships.
  exec_line=$(sed -n 's/^Exec=//p' "$desktop")
  exec_prog=${exec_line%% *}
  [[ -n "$exec_prog" && -x "$root/usr/bin/$exec_prog" ]] \
    || fail "Exec=$exec_line does not start a program in usr/bin"
  icon_name=$(sed -n 's/^Icon=//p' "$desktop")
  shopt -s nullglob
  icons=("$root"/usr/share/icons/hicolor/*/apps/"$icon_name".{svg,png})
  shopt -u nullglob
  if ((${#icons[@]} == 0)); then
    fail "no icon '$icon_name' under usr/share/icons/hicolor/*/apps"
  elif command -v xmllint >/dev/null; then
    for icon in "${icons[@]}"; do
      if [[ "$icon" == *.svg ]]; then
        xmllint --noout "$icon" || fail "$(basename "$icon") is not well-formed XML"
      fi
    done
  fi
fi

# --- start the installed binary headless ---------------------------------------
# A fresh working directory (the run log goes there) and a private home, so the
# program neither finds old logs nor leaves settings behind.
work=$scratch/work
mkdir -p "$work" "$scratch/home" "$scratch/runtime"
chmod 700 "$scratch/runtime"
(
  cd "$work"
  export QT_QPA_PLATFORM=offscreen HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/runtime"
  export XDG_CONFIG_HOME="$scratch/home/.config" XDG_CACHE_HOME="$scratch/home/.cache"
  exec "$binary"
) >"$scratch/kalkora.out" 2>&1 </dev/null &
pid=$!
sleep 2

if ! kill -0 "$pid" 2>/dev/null; then
  status=0
  wait "$pid" || status=$?
  pid=
  cat "$scratch/kalkora.out" >&2
  fatal "the installed kalkora exited within 2 s (status $status)"
fi
shopt -s nullglob
logs=("$work"/log-*.txt)
shopt -u nullglob
((${#logs[@]} == 1)) || fail "expected one run log log-*.txt in the working directory, found ${#logs[@]}"

if ((failures > 0)); then
  cat "$scratch/kalkora.out" >&2
  echo "$failures check(s) failed" >&2
  exit 1
fi
echo "installed kalkora is running and wrote $(basename "${logs[0]}")"
