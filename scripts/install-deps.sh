#!/usr/bin/env bash
# Installs what Kalkora needs to build, run and test on Debian 12.
# Idempotent: asks apt only for the packages that are not installed yet.
# Usage: scripts/install-deps.sh [--dev]   (--dev adds the fuzzing, benchmark,
# sanitizer and packaging tools used by CI)
set -euo pipefail

packages=(
  g++ cmake make ninja-build pkg-config
  qtbase5-dev libqwt-qt5-dev
  libgtest-dev libgmock-dev
  xvfb xauth fonts-dejavu-core fonts-crosextra-carlito
)
if [[ "${1:-}" == "--dev" ]]; then
  packages+=(clang libclang-rt-14-dev libfuzzer-14-dev llvm
             libbenchmark-dev libmuparser-dev libfparser-dev x11-utils valgrind dpkg-dev file
             lintian appstream desktop-file-utils)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "Installing: ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then
  if command -v sudo >/dev/null; then sudo_cmd=(sudo); else
    echo "Please run as root (or install sudo): apt-get install ${missing[*]}" >&2
    exit 1
  fi
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
