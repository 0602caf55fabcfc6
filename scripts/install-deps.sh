#!/usr/bin/env bash
# Installs what Kalkora needs to build, run and test on Debian 12.
# Idempotent: asks apt only for the packages that are not installed yet.
# Usage: scripts/install-deps.sh [--dev]   (--dev adds the fuzzing, benchmark,
# sanitizer and packaging tools used by CI)
set -euo pipefail

packages=(
  g++ cmake make ninja-build pkg-config
  qtbase5-dev libqt5svg5-dev libqwt-qt5-dev qttools5-dev qttools5-dev-tools
  libgtest-dev libgmock-dev
  xvfb xauth fonts-dejavu-core fonts-crosextra-carlito poppler-utils locales
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
# The expression tests also run under a C locale whose decimal point is ",".
need_locale=0
if ! locale -a 2>/dev/null | grep -qx 'ru_RU.utf8'; then
  need_locale=1
fi

if ((${#missing[@]} == 0 && need_locale == 0)); then
  exit 0
fi

sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then
  if command -v sudo >/dev/null; then sudo_cmd=(sudo); else
    echo "Please run as root (or install sudo): apt-get install ${missing[*]};" \
      "localedef -i ru_RU -f UTF-8 ru_RU.UTF-8" >&2
    exit 1
  fi
fi
if ((${#missing[@]} > 0)); then
  echo "Installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
if ((need_locale)); then
  echo "Generating the locale ru_RU.UTF-8"
  "${sudo_cmd[@]}" localedef -i ru_RU -f UTF-8 ru_RU.UTF-8
fi
